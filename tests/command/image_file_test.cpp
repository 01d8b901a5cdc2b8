#include "command/image_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>

#include "command/failure.h"
#include "command/transfer_curve.h"
#include "tests/command/fault_text.h"
#include "tests/command/image_samples.h"
#include "tests/command/pixels.h"
#include "tests/command/rows.h"
#include "tests/command/wine.h"

namespace command {
namespace {

using image_samples::ExtraSample;
using image_samples::Image;
using testing::ElementsAre;
using testing::FloatEq;
using testing::StartsWith;

constexpr TransferCurve srgb{TransferCurve::Kind::SRGB};

// What an sRGB value of so many bits is in linear light.
float Linear(unsigned value, unsigned largest = 255) {
    return static_cast<float>(Decode(srgb, value / static_cast<double>(largest)));
}

std::uint32_t Bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

Description Describe(const std::string& name, const std::string& bytes) {
    return OpenRenderFile(name, bytes.data(), bytes.size())->GetDescription();
}

std::string ImageFileComplaint(const std::string& name, const std::string& bytes) {
    return FaultText<InputError>([&] { ReadBytes(name, bytes); });
}

std::string SampleFile(const std::string& name) {
    std::ifstream file(std::string(VELTRANE_SOURCE_DIR) + "/tests/command/files/" + name,
                       std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(ImageFile, APngOfEightBitsIsDecodedExactly) {
    const Image image{.width = 2, .samples = {0, 128, 255, 1, 11, 200}};
    const Picture picture = ReadBytes("a.png", image_samples::Png(image));
    EXPECT_FALSE(IsOfHalfs(picture));
    EXPECT_FALSE(picture.hasAlpha);
    EXPECT_THAT(PixelAt(picture, 0, 0), ElementsAre(0.0F, Linear(128), 1.0F, 1.0F));
    EXPECT_THAT(PixelAt(picture, 1, 0), ElementsAre(Linear(1), Linear(11), Linear(200), 1.0F));
}

TEST(ImageFile, APngOfSixteenBitsIsDecodedExactly) {
    const Image image{.bits = 16, .samples = {1, 32768, 65535}};
    EXPECT_THAT(PixelAt(ReadBytes("a.png", image_samples::Png(image)), 0, 0),
                ElementsAre(Linear(1, 65535), Linear(32768, 65535), 1.0F, 1.0F));
}

TEST(ImageFile, StraightAlphaIsMultipliedInAfterDecoding) {
    const Image image{.channels = 4, .samples = {128, 255, 0, 51}};
    const Picture picture = ReadBytes("a.png", image_samples::Png(image));
    EXPECT_TRUE(picture.hasAlpha);
    EXPECT_THAT(PixelAt(picture, 0, 0), ElementsAre(Linear(128) * 0.2F, 0.2F, 0.0F, 0.2F));
}

TEST(ImageFile, GreyAndGreyWithAlphaAreRead) {
    EXPECT_THAT(
        PixelAt(ReadBytes("a.png", image_samples::Png({.channels = 1, .samples = {128}})), 0, 0),
        ElementsAre(Linear(128), Linear(128), Linear(128), 1.0F));
    EXPECT_THAT(
        PixelAt(ReadBytes("a.png", image_samples::Png({.channels = 2, .samples = {255, 51}})), 0,
                0),
        ElementsAre(0.2F, 0.2F, 0.2F, 0.2F));
}

TEST(ImageFile, APngsGammaReplacesTheCurve) {
    const Image image{.samples = {0, 51, 255}};
    const auto expected = static_cast<float>(std::pow(0.2, 2.0));
    EXPECT_THAT(PixelAt(ReadBytes("a.png", image_samples::Png(image, 50000)), 0, 0),
                ElementsAre(0.0F, FloatEq(expected), 1.0F, 1.0F));
    EXPECT_THAT(PixelAt(ReadBytes("a.png", image_samples::Png(image, 100000)), 0, 0),
                ElementsAre(0.0F, 0.2F, 1.0F, 1.0F));
}

TEST(ImageFile, IntegersOfATiffAreEncodedAndFloatsLinear) {
    const Image eight{.samples = {10, 128, 255}};
    EXPECT_THAT(PixelAt(ReadBytes("a.tif", image_samples::Tiff(eight)), 0, 0),
                ElementsAre(Linear(10), Linear(128), 1.0F, 1.0F));
    const Image sixteen{.bits = 16, .samples = {10, 32768, 65535}};
    EXPECT_THAT(PixelAt(ReadBytes("a.tif", image_samples::Tiff(sixteen)), 0, 0),
                ElementsAre(Linear(10, 65535), Linear(32768, 65535), 1.0F, 1.0F));
    const Image floats{.bits = 32, .samples = {Bits(0.5F), Bits(-1.25F), Bits(100.0F)}};
    EXPECT_THAT(PixelAt(ReadBytes("a.tif", image_samples::Tiff(floats)), 0, 0),
                ElementsAre(0.5F, -1.25F, 100.0F, 1.0F));
}

TEST(ImageFile, APremultipliedTiffIsDividedBeforeDecoding) {
    // A colour of 200 at an alpha of 0.5 stands as 100 in the file.
    const Image image{.channels = 4, .samples = {100, 50, 0, 128}};
    constexpr float alpha = 128 / 255.0F;
    const auto expected = [&](double value) {
        return static_cast<float>(Decode(srgb, value / 128.0)) * alpha;
    };
    EXPECT_THAT(
        PixelAt(ReadBytes("a.tif", image_samples::Tiff(image, ExtraSample::Premultiplied)), 0, 0),
        ElementsAre(FloatEq(expected(100)), FloatEq(expected(50)), 0.0F, alpha));
}

TEST(ImageFile, PremultipliedFloatsAreLeftAsTheyAre) {
    const Image image{
        .channels = 4, .bits = 32, .samples = {Bits(0.25F), Bits(3.0F), Bits(0.0F), Bits(0.0F)}};
    EXPECT_THAT(
        PixelAt(ReadBytes("a.tif", image_samples::Tiff(image, ExtraSample::Premultiplied)), 0, 0),
        ElementsAre(0.25F, 3.0F, 0.0F, 0.0F));
}

TEST(ImageFile, PremultipliedColourWhereAlphaIsZeroIsKept) {
    const Image image{.channels = 4, .samples = {128, 0, 0, 0}};
    EXPECT_THAT(
        PixelAt(ReadBytes("a.tif", image_samples::Tiff(image, ExtraSample::Premultiplied)), 0, 0),
        ElementsAre(Linear(128), 0.0F, 0.0F, 0.0F));
}

TEST(ImageFile, ValuesThatAreNotFiniteAreCounted) {
    const Image image{.bits = 32, .samples = {0x7fc00000, 0x7f800000, Bits(1.0F)}};
    const Picture picture = ReadBytes("a.tif", image_samples::Tiff(image));
    EXPECT_EQ(picture.notFinite, 2U);
    EXPECT_THAT(PixelAt(picture, 0, 0),
                ElementsAre(0.0F, std::numeric_limits<float>::max(), 1.0F, 1.0F));
}

TEST(ImageFile, TheOrientationOfATiffIsApplied) {
    const Image image{.width = 2, .channels = 1, .samples = {0, 255}};
    const Picture picture =
        ReadBytes("a.tif", image_samples::Tiff(image, ExtraSample::Straight, 6));
    ASSERT_EQ(picture.width, 1);
    ASSERT_EQ(picture.height, 2);
    EXPECT_EQ(PixelAt(picture, 0, 0)[0], 0.0F);
    EXPECT_EQ(PixelAt(picture, 0, 1)[0], 1.0F);
    const Picture mirrored =
        ReadBytes("a.tif", image_samples::Tiff(image, ExtraSample::Straight, 2));
    EXPECT_EQ(PixelAt(mirrored, 0, 0)[0], 1.0F);
}

TEST(ImageFile, AJpegIsEncoded) {
    // Eight by four pixels of about 188 in every channel.
    const Picture picture = ReadBytes("grey.jpg", SampleFile("grey.jpg"));
    ASSERT_EQ(picture.width, 8);
    ASSERT_EQ(picture.height, 4);
    EXPECT_NEAR(PixelAt(picture, 4, 2)[0], Linear(188), 0.01F);
    EXPECT_FALSE(picture.hasAlpha);
}

TEST(ImageFile, TheOrientationOfAJpegIsApplied) {
    if (IsWine()) GTEST_SKIP() << "Wine's decoder tells nothing of Exif";
    std::string bytes = SampleFile("grey.jpg");
    // An Exif segment with the one tag, right behind the start.
    const std::string exif = std::string("\xff\xe1\x00\x22", 4) + std::string("Exif\0\0", 6) +
                             std::string("MM\0*\0\0\0\x08", 8) + std::string("\0\x01", 2) +
                             std::string("\x01\x12\0\x03\0\0\0\x01\0\x08\0\0", 12) +
                             std::string(4, '\0');
    bytes.insert(2, exif);
    const Picture picture = ReadBytes("a.jpg", bytes);
    EXPECT_EQ(picture.width, 4);
    EXPECT_EQ(picture.height, 8);
}

TEST(ImageFile, LargePicturesAreReadInBlocks) {
    Image image{.width = 1200, .height = 400};
    for (int i = 0; i < image.width * image.height; ++i) {
        for (const int value : {i % 256, i / 256 % 256, i / 65536}) {
            image.samples.push_back(static_cast<std::uint32_t>(value));
        }
    }
    const Picture picture = ReadBytes("a.png", image_samples::Png(image));
    for (const int y : {0, 290, 291, 399}) {
        const auto i = static_cast<unsigned>(y * image.width + 7);
        EXPECT_THAT(PixelAt(picture, 7, y),
                    ElementsAre(Linear(i % 256), Linear(i / 256 % 256), Linear(i / 65536), 1.0F));
    }
}

// The channels of a file by name, in the order asked for.
KeptRows Rows(const std::string& name, const std::string& bytes,
              const std::vector<std::string>& channels) {
    const auto file = OpenRenderFile(name, bytes.data(), bytes.size());
    std::vector<ChannelRef> refs;
    for (const std::string& channel : channels)
        refs.push_back(FindChannel(file->GetDescription(), channel));
    return KeepRows(*file, 0, refs);
}

TEST(ImageFile, RowsOfChannelsAreLinearAndPremultiplied) {
    const Image image{.height = 2, .channels = 4, .samples = {100, 50, 20, 128, 1, 2, 3, 255}};
    const std::string png = image_samples::Png(image);
    const KeptRows rows = Rows("a.png", png, {"A", "B", "R", "G", "R"});
    const Picture picture = ReadBytes("a.png", png);
    ASSERT_EQ(rows.size(), 2U);
    for (int y = 0; y < 2; ++y) {
        const auto& row = rows[static_cast<std::size_t>(y)];
        const auto pixel = PixelAt(picture, 0, y);
        ASSERT_EQ(row.size(), 5U);
        EXPECT_EQ(row[0].values[0], double{pixel[3]});
        EXPECT_EQ(row[1].values[0], double{pixel[2]});
        EXPECT_EQ(row[2].values[0], double{pixel[0]});
        EXPECT_EQ(row[3].values[0], double{pixel[1]});
        EXPECT_EQ(row[4].values[0], double{pixel[0]});
        EXPECT_EQ(row[0].type, SampleType::Float);
        EXPECT_EQ(row[0].first, 0);
        EXPECT_EQ(row[0].count, 1);
    }
}

TEST(ImageFile, RowsOfChannelsStandUpright) {
    // A quarter turn: the file's first row becomes the last column.
    const Image image{.width = 2, .samples = {1, 2, 3, 4, 5, 6}};
    const std::string tiff = image_samples::Tiff(image, ExtraSample::Straight, 6);
    const KeptRows rows = Rows("a.tif", tiff, {"R"});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_THAT(rows[0][0].values, ElementsAre(double{Linear(1)}));
    EXPECT_THAT(rows[1][0].values, ElementsAre(double{Linear(4)}));
}

TEST(ImageFile, RowsOfChannelsKeepWhatIsNotFinite) {
    const Image image{.bits = 32, .samples = {0x7fc00000, 0xff800000, 0x3f000000}};
    const KeptRows rows = Rows("a.tif", image_samples::Tiff(image), {"R", "G", "B"});
    EXPECT_TRUE(std::isnan(rows[0][0].values[0]));
    EXPECT_EQ(rows[0][1].values[0], -std::numeric_limits<double>::infinity());
    EXPECT_EQ(rows[0][2].values[0], 0.5);
}

TEST(ImageFile, ThereAreNoDeepPixels) {
    const std::string png = image_samples::Png({.samples = {1, 2, 3}});
    const auto file = OpenRenderFile("a.png", png.data(), png.size());
    EXPECT_EQ(FaultText<InputError>([&] { file->ReadDeepRows(0, {}, {}); }),
              "a.png: the file has no deep pixels; give a deep OpenEXR file");
}

TEST(ImageFile, TheDescriptionTellsCurveAndAlpha) {
    const Description file =
        Describe("a.png", image_samples::Png({.channels = 4, .samples = {1, 2, 3, 4}}));
    EXPECT_EQ(file.format, "PNG");
    ASSERT_EQ(file.layers.size(), 1U);
    EXPECT_EQ(file.layers[0].name, "RGBA");
    EXPECT_EQ(file.layers[0].channels[0].type, SampleType::Unsigned8);
    const auto& attributes = file.parts.at(0).attributes;
    ASSERT_EQ(attributes.size(), 2U);
    EXPECT_EQ(std::get<std::string>(attributes[0].value), "sRGB");
    EXPECT_EQ(std::get<std::string>(attributes[1].value), "straight");
}

TEST(ImageFile, CutAnywhereItIsRefused) {
    Image image{.width = 5, .height = 4, .channels = 4};
    for (unsigned i = 0; i < 80; ++i)
        image.samples.push_back(i * 3);
    struct ImageSample {
        const char* name;
        std::string bytes;
        // Bytes at the end that hold no pixels.
        std::size_t tail;
    };
    const ImageSample samples[] = {
        {"a.png", image_samples::Png(image), 12},
        {"a.tif", image_samples::Tiff(image), 4},
    };
    for (const ImageSample& sample : samples) {
        EXPECT_EQ(ImageFileComplaint(sample.name, sample.bytes), "");
        for (std::size_t size = 12; size + sample.tail < sample.bytes.size(); size += 7) {
            EXPECT_THAT(ImageFileComplaint(sample.name, sample.bytes.substr(0, size)),
                        StartsWith(std::string(sample.name) + ": damaged or cut short ("))
                << size << " of " << sample.bytes.size();
        }
    }
}

TEST(ImageFile, ATruncatedJpegIsRefused) {
    const std::string bytes = SampleFile("grey.jpg");
    ASSERT_GT(bytes.size(), 100U);
    for (const std::size_t size : {bytes.size() - 8, bytes.size() / 2, std::size_t{20}}) {
        EXPECT_THAT(ImageFileComplaint("a.jpg", bytes.substr(0, size)),
                    StartsWith("a.jpg: damaged or cut short ("))
            << size << " of " << bytes.size();
    }
}

TEST(ImageFile, ASideAbove65535IsRefused) {
    std::string bytes = image_samples::Tiff({.samples = {1, 2, 3}});
    const std::string widthTag = std::string("\x00\x01\x04\x00\x01\x00\x00\x00", 8);
    const std::size_t at = bytes.find(widthTag);
    ASSERT_NE(at, std::string::npos);
    bytes.replace(at + widthTag.size(), 4, std::string("\x00\x00\x01\x00", 4));
    EXPECT_EQ(ImageFileComplaint("a.tif", bytes),
              "a.tif: the picture is 65536x1 pixels, and a document holds at most 65535 a side; "
              "render it smaller");
}

TEST(ImageFile, LibrariesPrintNothing) {
    const std::string png = image_samples::Png({.samples = {1, 2, 3}});
    testing::internal::CaptureStderr();
    EXPECT_NE(ImageFileComplaint("a.png", png.substr(0, png.size() - 30)), "");
    EXPECT_NE(
        ImageFileComplaint("a.tif", image_samples::Tiff({.samples = {1, 2, 3}}).substr(0, 30)), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace command
