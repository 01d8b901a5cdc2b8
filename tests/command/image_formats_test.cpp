#include "command/image_formats.h"

#include <gtest/gtest.h>

namespace command {
namespace {

std::string Found(const std::string& path, const std::string& bytes) {
    const ImageFormat* format = FindImageFormat(path, bytes.data(), bytes.size());
    return std::string(format ? format->name : "none");
}

TEST(ImageFormats, AreToldByTheirFirstBytesWhateverTheName) {
    EXPECT_EQ(Found("a.jpg", "\x89PNG\r\n\x1a\n...."), "png");
    EXPECT_EQ(Found("a", std::string("II*\0", 4)), "tiff");
    EXPECT_EQ(Found("a", std::string("MM\0*", 4)), "tiff");
    EXPECT_EQ(Found("a", std::string("II+\0", 4)), "tiff");
    EXPECT_EQ(Found("a", "\xff\xd8\xff\xe0"), "jpeg");
    EXPECT_EQ(Found("a", "#?RADIANCE\n"), "hdr");
    EXPECT_EQ(Found("a", "#?RGBE\n"), "hdr");
}

TEST(ImageFormats, TgaHasNoSignatureAndGoesByItsSuffix) {
    EXPECT_EQ(Found("a.tga", "anything"), "targa");
    EXPECT_EQ(Found("A.TGA", "anything"), "targa");
    EXPECT_EQ(Found("a.tga", "\x89PNG\r\n\x1a\n"), "png");
}

TEST(ImageFormats, AnythingElseIsNone) {
    EXPECT_EQ(Found("a.png", "8BPS"), "none");
    EXPECT_EQ(Found("a.png", ""), "none");
    EXPECT_EQ(Found("a.png", "\x89PNG"), "none");
}

TEST(ImageFormats, TheListNamesThoseThatTheSystemReads) {
#ifdef _WIN32
    EXPECT_EQ(ImageFormatList(), "PNG, TIFF or JPEG");
#else
    EXPECT_EQ(ImageFormatList(), "PNG, TIFF, JPEG, Radiance HDR or TGA");
#endif
}

}  // namespace
}  // namespace command
