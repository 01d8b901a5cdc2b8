#include "command/render_file.h"

#include <gtest/gtest.h>

#include "command/failure.h"
#include "command/image_formats.h"
#include "tests/command/exr_samples.h"
#include "tests/command/fault_text.h"
#include "tests/command/image_samples.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

// What no file may be called on Windows is left out there.
#ifdef _WIN32
constexpr const char* oddName =
    "Gr\xc3\xb6\xc3\x9f"
    "e &x.png";
#else
constexpr const char* oddName =
    "Gr\xc3\xb6\xc3\x9f"
    "e?x.png";
#endif

class RenderFileTest : public FolderTest {
  protected:
    static std::string RenderFileComplaint(const std::string& path) {
        return FaultText<InputError>([&] { OpenRenderFile(path); });
    }
};

TEST_F(RenderFileTest, TheContentDecidesNotTheName) {
    const std::string exr = Write("a.png", exr_samples::Write(exr_samples::Part()));
    EXPECT_EQ(OpenRenderFile(exr)->GetDescription().format, "OpenEXR");
    const std::string png = Write("a.exr", image_samples::Png({.samples = {1, 2, 3}}));
    EXPECT_EQ(OpenRenderFile(png)->GetDescription().format, "PNG");
}

TEST_F(RenderFileTest, NamesMayHoldAnyLetters) {
    const std::string path = Write("Größe 日本.exr", exr_samples::Write(exr_samples::Part()));
    EXPECT_EQ(OpenRenderFile(path)->GetDescription().path, path);
    const std::string png = Write(oddName, image_samples::Png({.samples = {1, 2, 3}}));
    EXPECT_EQ(OpenRenderFile(png)->GetDescription().format, "PNG");
}

TEST_F(RenderFileTest, AMissingFileIsToldSo) {
    const std::string path = PathOf("nope.exr");
    EXPECT_EQ(RenderFileComplaint(path), path + ": no such file; check the path");
}

TEST_F(RenderFileTest, AFolderIsToldSo) {
    EXPECT_EQ(RenderFileComplaint(Utf8(folder)),
              Utf8(folder) + ": a folder, not an image; give a file in it");
}

TEST_F(RenderFileTest, AnEmptyFileIsToldSo) {
    const std::string path = Write("a.exr", "");
    EXPECT_EQ(RenderFileComplaint(path), path + ": the file is empty; render or copy it again");
}

TEST_F(RenderFileTest, AForeignFileIsToldSo) {
    for (const char* bytes : {"8BPS", "x", "GIF89a......", "#!/bin/sh\nexit 1\n"}) {
        const std::string path = Write("a.exr", bytes);
        EXPECT_EQ(RenderFileComplaint(path),
                  path + ": not an image that can be read; give an OpenEXR, " + ImageFormatList() +
                      " file");
    }
}

}  // namespace
}  // namespace command
