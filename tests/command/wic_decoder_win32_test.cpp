// What Windows reads in ways of its own: palettes, small integers, and what it doesn't read at all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>

#include "command/failure.h"
#include "command/transfer_curve.h"
#include "tests/command/fault_text.h"
#include "tests/command/image_samples.h"
#include "tests/command/pixels.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

using image_samples::ExtraSample;

using testing::ElementsAre;

// What an sRGB value of so many bits is in linear light.
float Linear(unsigned value, unsigned largest = 255) {
    return static_cast<float>(
        Decode({TransferCurve::Kind::SRGB}, value / static_cast<double>(largest)));
}

Description Describe(const std::string& name, const std::string& bytes) {
    return OpenRenderFile(name, bytes.data(), bytes.size())->GetDescription();
}

std::string WicDecoderWin32Complaint(const std::string& name, const std::string& bytes) {
    return FaultText<InputError>([&] { ReadBytes(name, bytes); });
}

// The names of the channels, in their order.
std::string ChannelsOf(const Description& file) {
    std::string names;
    for (const Channel& channel : file.layers.at(0).channels)
        names += channel.name;
    return names;
}

// A PNG of one row. The pixels are packed already.
std::string PngRow(int width, int bits, char colorType, const std::string& pixels,
                   const std::string& chunks = {}) {
    return image_samples::PngOfRows(width, 1, bits, colorType, std::string(1, '\0') + pixels,
                                    chunks);
}

constexpr char grey = 0;
constexpr char indexed = 3;

TEST(WicDecoder, ColorsOfAPaletteAreLookedUp) {
    const std::string palette =
        image_samples::PngChunk("PLTE", std::string("\x0a\x80\xff\x01\x02\x03\xc8\xc8\0", 9));
    const std::string png = PngRow(3, 2, indexed, std::string("\x18", 1), palette);
    EXPECT_EQ(ChannelsOf(Describe("a.png", png)), "RGB");
    const Picture picture = ReadBytes("a.png", png);
    EXPECT_FALSE(picture.hasAlpha);
    // 0, 1, 2 from the highest bits down.
    EXPECT_THAT(PixelAt(picture, 0, 0), ElementsAre(Linear(10), Linear(128), 1.0F, 1.0F));
    EXPECT_THAT(PixelAt(picture, 1, 0), ElementsAre(Linear(1), Linear(2), Linear(3), 1.0F));
    EXPECT_THAT(PixelAt(picture, 2, 0), ElementsAre(Linear(200), Linear(200), 0.0F, 1.0F));
}

TEST(WicDecoder, APaletteMayHaveAlpha) {
    const std::string chunks =
        image_samples::PngChunk("PLTE", std::string("\xff\xff\xff\0\0\0", 6)) +
        image_samples::PngChunk("tRNS", "\x33");
    const std::string png = PngRow(2, 8, indexed, std::string("\0\1", 2), chunks);
    EXPECT_EQ(ChannelsOf(Describe("a.png", png)), "RGBA");
    const Picture picture = ReadBytes("a.png", png);
    EXPECT_THAT(PixelAt(picture, 0, 0), ElementsAre(0.2F, 0.2F, 0.2F, 0.2F));
    EXPECT_THAT(PixelAt(picture, 1, 0), ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
}

TEST(WicDecoder, GreyOfFewBitsIsSpreadOverEight) {
    struct Sample {
        int bits;
        std::string pixels;
        unsigned first, second, third;
    };
    const Sample samples[] = {
        {1, "\xa0", 255, 0, 255},
        {2, "\x6c", 85, 170, 255},
        {4, "\x1f\x70", 17, 255, 119},
    };
    for (const Sample& sample : samples) {
        const std::string png = PngRow(3, sample.bits, grey, sample.pixels);
        const Picture picture = ReadBytes("a.png", png);
        EXPECT_EQ(PixelAt(picture, 0, 0)[0], Linear(sample.first)) << sample.bits;
        EXPECT_EQ(PixelAt(picture, 1, 0)[1], Linear(sample.second)) << sample.bits;
        EXPECT_EQ(PixelAt(picture, 2, 0)[2], Linear(sample.third)) << sample.bits;
    }
}

TEST(WicDecoder, GreyIsOneChannelUnlessItHasAlpha) {
    const Description eight =
        Describe("a.png", image_samples::Png({.channels = 1, .samples = {7}}));
    EXPECT_EQ(ChannelsOf(eight), "Y");
    EXPECT_EQ(eight.layers[0].channels[0].type, SampleType::Unsigned8);
    const std::string sixteen =
        image_samples::Tiff({.channels = 1, .bits = 16, .samples = {0x1234}});
    EXPECT_EQ(Describe("a.tif", sixteen).layers.at(0).channels.at(0).type, SampleType::Unsigned16);
    EXPECT_EQ(PixelAt(ReadBytes("a.tif", sixteen), 0, 0)[2], Linear(0x1234, 65535));
    const std::string floats = image_samples::Tiff(
        {.channels = 1, .bits = 32, .samples = {std::bit_cast<std::uint32_t>(2.5F)}});
    EXPECT_EQ(Describe("a.tif", floats).layers.at(0).channels.at(0).type, SampleType::Float);
    EXPECT_THAT(PixelAt(ReadBytes("a.tif", floats), 0, 0), ElementsAre(2.5F, 2.5F, 2.5F, 1.0F));
    EXPECT_EQ(ChannelsOf(Describe("a.png", image_samples::Png({.channels = 2, .samples = {7, 8}}))),
              "RGBA");
}

TEST(WicDecoder, AlphaOfATiffIsStraightOrPremultipliedAsTheFileSays) {
    for (const int bits : {8, 16, 32}) {
        const image_samples::Image sample{.channels = 4, .bits = bits, .samples = {0, 0, 0, 0}};
        const auto told = [&](ExtraSample extra) {
            const Description file = Describe("a.tif", image_samples::Tiff(sample, extra));
            return std::get<std::string>(file.parts.at(0).attributes.at(1).value);
        };
        EXPECT_EQ(told(ExtraSample::Straight), "straight") << bits;
        EXPECT_EQ(told(ExtraSample::Premultiplied), "premultiplied") << bits;
    }
}

TEST(WicDecoder, TheCompressionOfATiffIsTold) {
    const Description file = Describe("a.tif", image_samples::Tiff({.samples = {1, 2, 3}}));
    EXPECT_EQ(file.parts.at(0).compression, "none");
    EXPECT_EQ(file.parts.at(0).storage, "scanline");
    EXPECT_TRUE(file.warnings.empty());
}

TEST(WicDecoder, WhatWindowsDoesNotReadIsToldSo) {
    EXPECT_EQ(WicDecoderWin32Complaint("a.tga", image_samples::Tga({.samples = {1, 2, 3}})),
              "a.tga: Windows reads no TGA files; convert it to OpenEXR, PNG or TIFF");
    EXPECT_EQ(WicDecoderWin32Complaint(
                  "a.hdr", image_samples::Hdr({.channels = 4, .samples = {1, 2, 3, 4}})),
              "a.hdr: Windows reads no Radiance HDR files; convert it to OpenEXR, PNG or TIFF");
    for (const std::string& start :
         {std::string("II+\0........", 12), std::string("MM\0+........", 12)}) {
        EXPECT_EQ(WicDecoderWin32Complaint("a.tif", start),
                  "a.tif: Windows doesn't read this kind of TIFF file; convert it to OpenEXR");
    }
}

class WicFile : public FolderTest {};

TEST_F(WicFile, FromDiskIsThatFromMemory) {
    const image_samples::Image sample{
        .width = 2, .channels = 4, .samples = {1, 2, 3, 255, 200, 100, 50, 128}};
    const std::string png = image_samples::Png(sample);
    const std::string path = Write(
        "Gr\xc3\xb6\xc3\x9f"
        "e \xe6\x97\xa5.png",
        png);
    const auto file = OpenRenderFile(path);
    const Picture picture = file->Read(ChooseBeauty(file->GetDescription(), {}));
    EXPECT_EQ(PixelAt(picture, 0, 0), PixelAt(ReadBytes("a.png", png), 0, 0));
    EXPECT_EQ(PixelAt(picture, 1, 0), PixelAt(ReadBytes("a.png", png), 1, 0));
    // Nobody is kept from writing the file anew meanwhile.
    EXPECT_EQ(Write("Gr\xc3\xb6\xc3\x9f"
                    "e \xe6\x97\xa5.png",
                    "x"),
              path);
    EXPECT_EQ(std::filesystem::file_size(folder / Native("Gr\xc3\xb6\xc3\x9f"
                                                         "e \xe6\x97\xa5.png")),
              1U);
}

TEST_F(WicFile, ThatIsCutIsRefusedFromDiskToo) {
    const std::string png = image_samples::Png(
        {.width = 8, .height = 8, .samples = std::vector<std::uint32_t>(192, 77)});
    const std::string path = Write("a.png", png.substr(0, png.size() - 30));
    EXPECT_THAT(FaultText<InputError>([&] {
                    const auto file = OpenRenderFile(path);
                    file->Read(ChooseBeauty(file->GetDescription(), {}));
                }),
                testing::StartsWith(path + ": damaged or cut short ("));
}

}  // namespace
}  // namespace command
