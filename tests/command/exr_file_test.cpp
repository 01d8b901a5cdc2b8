#include "command/exr_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "command/beauty.h"
#include "command/failure.h"
#include "tests/command/exr_samples.h"
#include "tests/command/fault_text.h"
#include "tests/command/pixels.h"

namespace command {
namespace {

using exr_samples::Distinct;
using exr_samples::Part;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

Picture Read(const std::string& bytes, const std::string& beauty = {}) {
    return ReadBytes("a.exr", bytes, beauty);
}

Picture Read(const Part& part) {
    return Read(exr_samples::Write(part));
}

std::string ExrFileComplaint(const std::string& bytes, const std::string& beauty = {}) {
    return FaultText<InputError>([&] { Read(bytes, beauty); });
}

Description Describe(const std::string& bytes) {
    return OpenExrFile("a.exr", bytes.data(), bytes.size())->GetDescription();
}

std::array<float, 4> DistinctPixel(int x, int y) {
    return {static_cast<float>(Distinct("R", x, y)), static_cast<float>(Distinct("G", x, y)),
            static_cast<float>(Distinct("B", x, y)), static_cast<float>(Distinct("A", x, y))};
}

constexpr std::array<float, 4> empty{};

// Every pixel of the frame: the part's own values where its data window is, empty elsewhere.
void ExpectDistinctPixels(const Part& part, const Picture& picture) {
    ASSERT_EQ(picture.width, part.display.Width());
    ASSERT_EQ(picture.height, part.display.Height());
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const int column = x + part.display.left;
            const int row = y + part.display.top;
            const bool inside = column >= part.data.left && column <= part.data.right &&
                                row >= part.data.top && row <= part.data.bottom;
            EXPECT_EQ(PixelAt(picture, x, y), inside ? DistinctPixel(column, row) : empty)
                << x << ", " << y;
        }
    }
}

TEST(ExrFile, IsToldByItsFirstFourBytes) {
    EXPECT_TRUE(IsExr("\x76\x2f\x31\x01", 4));
    EXPECT_FALSE(IsExr("\x76\x2f\x31", 3));
    EXPECT_FALSE(IsExr("\x76\x2f\x31\x02", 4));
}

TEST(ExrFile, HalfsStayHalfs) {
    const Part part;
    const Picture picture = Read(part);
    EXPECT_TRUE(IsOfHalfs(picture));
    EXPECT_TRUE(picture.hasAlpha);
    EXPECT_EQ(picture.notFinite, 0U);
    ExpectDistinctPixels(part, picture);
}

TEST(ExrFile, FloatsStayFloats) {
    Part part{
        .channels = {{"R", Imf::FLOAT}, {"G", Imf::FLOAT}, {"B", Imf::FLOAT}, {"A", Imf::FLOAT}}};
    const Picture picture = Read(part);
    EXPECT_FALSE(IsOfHalfs(picture));
    ExpectDistinctPixels(part, picture);
}

TEST(ExrFile, OneFloatAmongHalfsMakesFloatsOfAll) {
    Part part{.channels = {{"R"}, {"G"}, {"B"}, {"A", Imf::FLOAT}}};
    const Picture picture = Read(part);
    EXPECT_FALSE(IsOfHalfs(picture));
    ExpectDistinctPixels(part, picture);
}

TEST(ExrFile, OtherLayersDontDecideTheType) {
    Part part{.channels = {{"R"}, {"G"}, {"B"}, {"A"}, {"Z", Imf::FLOAT}}};
    EXPECT_TRUE(IsOfHalfs(Read(part)));
}

TEST(ExrFile, UnsignedChannelsAreFractionsOfTheLargest) {
    Part part{.channels = {{"R", Imf::UINT}, {"G", Imf::UINT}, {"B", Imf::UINT}},
              .values = [](const std::string& channel, int x, int) {
                  if (channel == "G") return 2147483648.0;
                  return x == 0 ? 0.0 : 4294967295.0;
              }};
    const Picture picture = Read(part);
    const auto half = static_cast<float>(2147483648.0 / 4294967295.0);
    EXPECT_THAT(PixelAt(picture, 0, 0), ElementsAre(0.0F, half, 0.0F, 1.0F));
    EXPECT_THAT(PixelAt(picture, 1, 0), ElementsAre(1.0F, half, 1.0F, 1.0F));
}

TEST(ExrFile, EveryCompressionIsRead) {
    for (const Imf::Compression compression :
         {Imf::NO_COMPRESSION, Imf::RLE_COMPRESSION, Imf::ZIPS_COMPRESSION, Imf::ZIP_COMPRESSION,
          Imf::PIZ_COMPRESSION, Imf::PXR24_COMPRESSION}) {
        const Part part{.compression = compression};
        ExpectDistinctPixels(part, Read(part));
    }
}

TEST(ExrFile, TilesAreReadAtFullSize) {
    Part part{.display = {0, 0, 20, 10}, .data = {0, 0, 20, 10}, .tileSide = 8};
    ExpectDistinctPixels(part, Read(part));
    part.mipmaps = true;
    ExpectDistinctPixels(part, Read(part));
}

TEST(ExrFile, ADataWindowInsideTheFrameLeavesTheRestEmpty) {
    const Part part{.display = {0, 0, 9, 7}, .data = {2, 3, 5, 6}};
    ExpectDistinctPixels(part, Read(part));
}

TEST(ExrFile, ADataWindowAroundTheFrameIsCut) {
    for (const int tileSide : {0, 4}) {
        const Part part{.display = {0, 0, 3, 2}, .data = {-3, -5, 7, 9}, .tileSide = tileSide};
        ExpectDistinctPixels(part, Read(part));
    }
}

TEST(ExrFile, ADataWindowThatOverlapsACornerIsCutThere) {
    for (const Window data :
         {Window{-2, -2, 1, 1}, Window{2, -2, 9, 1}, Window{-2, 1, 1, 9}, Window{2, 1, 9, 9}}) {
        const Part part{.display = {0, 0, 3, 2}, .data = data};
        ExpectDistinctPixels(part, Read(part));
    }
}

TEST(ExrFile, ADataWindowBesideTheFrameLeavesItEmpty) {
    for (const Window data : {Window{10, 0, 12, 2}, Window{-12, 0, -10, 2}, Window{0, 10, 3, 12},
                              Window{0, -12, 3, -10}, Window{-20, -20, -18, -18}}) {
        const Part part{.display = {0, 0, 3, 2}, .data = data};
        ExpectDistinctPixels(part, Read(part));
    }
}

TEST(ExrFile, WindowsMayBeginAtNegativeCoordinates) {
    const Part part{.display = {-100, -50, -90, -45}, .data = {-98, -52, -80, -47}};
    ExpectDistinctPixels(part, Read(part));
}

TEST(ExrFile, AFrameOfManyBlocksOfRowsIsReadWhole) {
    // More than a megabyte of converted rows.
    const Part part{.display = {0, 0, 1999, 99}, .data = {0, 1, 1999, 98}};
    ExpectDistinctPixels(part, Read(part));
}

TEST(ExrFile, WithoutAlphaTheDataWindowIsOpaque) {
    const std::vector<exr_samples::Channel> colors{{"R"}, {"G"}, {"B"}};
    const Picture whole = Read(Part{.channels = colors});
    EXPECT_FALSE(whole.hasAlpha);
    EXPECT_EQ(PixelAt(whole, 1, 1)[3], 1.0F);

    const Picture inner = Read(Part{.channels = colors, .data = {1, 1, 2, 1}});
    EXPECT_TRUE(inner.hasAlpha);
    EXPECT_EQ(PixelAt(inner, 1, 1)[3], 1.0F);
    EXPECT_EQ(PixelAt(inner, 0, 0), empty);
}

TEST(ExrFile, ColourWhereAlphaIsZeroIsKept) {
    const Picture picture = Read(Part{
        .values = [](const std::string& channel, int, int) { return channel == "A" ? 0.0 : 2.5; }});
    EXPECT_THAT(PixelAt(picture, 0, 0), ElementsAre(2.5F, 2.5F, 2.5F, 0.0F));
}

TEST(ExrFile, OneChannelIsGrey) {
    for (const Imf::PixelType type : {Imf::HALF, Imf::FLOAT}) {
        const Picture picture = Read(Part{.channels = {{"Y", type}}});
        const auto value = static_cast<float>(Distinct("Y", 2, 1));
        EXPECT_THAT(PixelAt(picture, 2, 1), ElementsAre(value, value, value, 1.0F));
    }
}

TEST(ExrFile, GreyWithAlphaKeepsIt) {
    for (const Imf::PixelType type : {Imf::HALF, Imf::FLOAT}) {
        const Picture picture = Read(Part{.channels = {{"Y", type}, {"A", type}}});
        const auto value = static_cast<float>(Distinct("Y", 2, 1));
        EXPECT_THAT(PixelAt(picture, 2, 1),
                    ElementsAre(value, value, value, static_cast<float>(Distinct("A", 2, 1))));
    }
}

TEST(ExrFile, TwoColoursHaveNoBlue) {
    const Picture picture = Read(Part{.channels = {{"R"}, {"G"}}});
    EXPECT_THAT(PixelAt(picture, 0, 0),
                ElementsAre(static_cast<float>(Distinct("R", 0, 0)),
                            static_cast<float>(Distinct("G", 0, 0)), 0.0F, 1.0F));
}

TEST(ExrFile, LuminanceAndChromaBecomeColours) {
    const Picture picture = Read(exr_samples::WriteLumaChroma(16, 8, 0.5F, 0.25F, 0.125F));
    EXPECT_TRUE(IsOfHalfs(picture));
    const auto pixel = PixelAt(picture, 7, 5);
    EXPECT_NEAR(pixel[0], 0.5F, 0.01F);
    EXPECT_NEAR(pixel[1], 0.25F, 0.01F);
    EXPECT_NEAR(pixel[2], 0.125F, 0.01F);
    EXPECT_EQ(pixel[3], 1.0F);
}

TEST(ExrFile, ChannelsWithFewerSamplesAreRefused) {
    const Part part{.channels = {{"R", Imf::HALF, 2}, {"G"}, {"B"}},
                    .display = {0, 0, 3, 3},
                    .data = {0, 0, 3, 3}};
    EXPECT_EQ(ExrFileComplaint(exr_samples::Write(part)),
              "a.exr: layer \"RGB\" has channels with fewer samples than pixels, which can't be "
              "read; convert them to full size");
}

TEST(ExrFile, TheBeautyMayStandInAnyPart) {
    const Part depth{.channels = {{"Z", Imf::FLOAT}}, .display = {0, 0, 5, 4}, .name = "depth"};
    const Part beauty{.display = {0, 0, 5, 4}, .data = {1, 1, 3, 3}, .name = "beauty"};
    const std::string bytes = exr_samples::Write({depth, beauty});
    ExpectDistinctPixels(beauty, Read(bytes));
    EXPECT_EQ(PixelAt(Read(bytes, "Z"), 1, 1)[0], static_cast<float>(Distinct("Z", 1, 1)));
}

TEST(ExrFile, ALayerIsReadByName) {
    const Part part{.channels = {{"V.Combined.R"},
                                 {"V.Combined.G"},
                                 {"V.Combined.B"},
                                 {"V.Combined.A"},
                                 {"V.Depth.Z", Imf::FLOAT}}};
    const std::string bytes = exr_samples::Write(part);
    ExpectDistinctPixels(part, Read(bytes));
    EXPECT_FALSE(IsOfHalfs(Read(bytes, "Depth")));
}

TEST(ExrFile, ValuesThatAreNotFiniteAreCountedOnce) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Part part{.display = {0, 0, 2, 0},
              .data = {-1, 0, 2, 0},
              .values = [](const std::string& channel, int x, int) {
                  if (channel != "R") return 0.5;
                  if (x == 0) return infinity;
                  if (x == 1) return -infinity;
                  // One inside the frame and one outside.
                  return std::nan("");
              }};
    const Picture halfs = Read(part);
    EXPECT_EQ(halfs.notFinite, 3U);
    EXPECT_EQ(PixelAt(halfs, 0, 0)[0], 65504.0F);
    EXPECT_EQ(PixelAt(halfs, 1, 0)[0], -65504.0F);
    EXPECT_EQ(PixelAt(halfs, 2, 0)[0], 0.0F);

    part.channels[0].type = Imf::FLOAT;
    const Picture floats = Read(part);
    EXPECT_EQ(floats.notFinite, 3U);
    EXPECT_EQ(PixelAt(floats, 0, 0)[0], std::numeric_limits<float>::max());
    EXPECT_EQ(PixelAt(floats, 1, 0)[0], -std::numeric_limits<float>::max());
}

TEST(ExrFile, AGreyValueCountsForEachColourItBecomes) {
    const Picture picture =
        Read(Part{.channels = {{"Y"}},
                  .display = {0, 0, 0, 0},
                  .data = {0, 0, 0, 0},
                  .values = [](const std::string&, int, int) { return std::nan(""); }});
    EXPECT_EQ(picture.notFinite, 3U);
}

TEST(ExrFile, ThePixelAspectIsKept) {
    EXPECT_EQ(Read(Part{.pixelAspect = 2.0F}).pixelAspect, 2.0F);
}

const std::vector<exr_samples::Channel> deepChannels{
    {"R", Imf::FLOAT}, {"G", Imf::FLOAT}, {"B", Imf::FLOAT}, {"A", Imf::FLOAT}, {"Z", Imf::FLOAT}};

TEST(ExrFile, DeepSamplesAreLaidOverOneAnother) {
    // The red half in front of the opaque one stands behind it in the file.
    const Part part{.channels = deepChannels,
                    .deep = true,
                    .sampleCount = [](int x, int) { return x; },
                    .deepValues =
                        [](const std::string& channel, int, int, int sample) {
                            if (channel == "Z") return 10.0 - sample;
                            if (channel == "A") return sample == 0 ? 1.0 : 0.5;
                            return channel == "R" ? 0.5 : 0.25;
                        }};
    const std::string bytes = exr_samples::Write(part);
    const Picture picture = Read(bytes);
    EXPECT_FALSE(IsOfHalfs(picture));
    EXPECT_TRUE(picture.hasAlpha);
    EXPECT_EQ(PixelAt(picture, 0, 1), empty);
    EXPECT_THAT(PixelAt(picture, 1, 1), ElementsAre(0.5F, 0.25F, 0.25F, 1.0F));
    EXPECT_THAT(PixelAt(picture, 2, 1), ElementsAre(0.75F, 0.375F, 0.375F, 1.0F));
    EXPECT_THAT(PixelAt(picture, 3, 1), ElementsAre(0.875F, 0.4375F, 0.4375F, 1.0F));
    EXPECT_THAT(Describe(bytes).warnings, IsEmpty());
}

TEST(ExrFile, ADeepPictureLiesWhereItsDataWindowSays) {
    for (const int tileSide : {0, 4}) {
        for (const Window data : {Window{-3, -5, 7, 9}, Window{1, 1, 2, 1}, Window{-2, 1, 1, 9},
                                  Window{10, 0, 12, 2}, Window{0, 10, 3, 12}}) {
            Part part{.channels = deepChannels, .data = data, .tileSide = tileSide, .deep = true};
            // Clamped to 1 otherwise.
            part.values = [](const std::string& channel, int x, int y) {
                return Distinct(channel, x, y) / 8;
            };
            const Picture picture = Read(part);
            for (int y = 0; y < picture.height; ++y) {
                for (int x = 0; x < picture.width; ++x) {
                    auto expected = data.Contains({x, y, x, y}) ? DistinctPixel(x, y) : empty;
                    for (float& value : expected)
                        value /= 8;
                    EXPECT_EQ(PixelAt(picture, x, y), expected) << x << ", " << y;
                }
            }
        }
    }
}

TEST(ExrFile, DeepSamplesWithoutAlphaAreOpaque) {
    Part part{.channels = deepChannels, .deep = true};
    part.channels.erase(part.channels.begin() + 3);
    EXPECT_THAT(PixelAt(Read(part), 1, 1),
                ElementsAre(1.0F + 9.0F / 128, 2.0F + 9.0F / 128, 3.0F + 9.0F / 128, 1.0F));
}

TEST(ExrFile, DeepPixelsThatAreNotFiniteAreCounted) {
    const Part part{.channels = deepChannels,
                    .deep = true,
                    .values = [](const std::string& channel, int x, int) {
                        return channel == "R" && x == 2 ? std::nan("") : 1.0;
                    }};
    const Picture picture = Read(part);
    EXPECT_EQ(picture.notFinite, 3U);
    EXPECT_THAT(PixelAt(picture, 2, 1), ElementsAre(0.0F, 1.0F, 1.0F, 1.0F));
}

TEST(ExrFile, DeepPixelsWithoutADepthAreRefused) {
    const Part part{.channels = {{"R", Imf::FLOAT}, {"G", Imf::FLOAT}, {"B", Imf::FLOAT}},
                    .deep = true};
    EXPECT_EQ(ExrFileComplaint(exr_samples::Write(part)),
              "a.exr: layer \"RGB\" is deep and has no depth channel Z; render it with one or "
              "flat");
}

TEST(ExrFile, DeepLuminanceAndChromaAreRefused) {
    const Part part{.channels = {{"Y"}, {"RY"}, {"BY"}, {"Z", Imf::FLOAT}}, .deep = true};
    EXPECT_EQ(ExrFileComplaint(exr_samples::Write(part)),
              "a.exr: layer \"Y RY BY\" holds luminance and chroma in a deep part, which can't be "
              "read; convert it to RGB");
}

TEST(ExrFile, TheDescriptionTellsWhatIsThere) {
    const Part part{.channels = {{"R"}, {"G"}, {"B"}, {"N.X", Imf::FLOAT}, {"id", Imf::UINT}},
                    .display = {0, 0, 9, 4},
                    .data = {1, -1, 8, 3},
                    .tileSide = 16};
    const Description file = Describe(exr_samples::Write(part));
    EXPECT_EQ(file.format, "OpenEXR");
    ASSERT_EQ(file.parts.size(), 1U);
    EXPECT_EQ(file.parts[0].storage, "tiled 16x16");
    EXPECT_EQ(file.parts[0].compression, "zip");
    EXPECT_EQ(file.parts[0].dataWindow, (Window{1, -1, 8, 3}));
    EXPECT_EQ(file.parts[0].displayWindow, (Window{0, 0, 9, 4}));
    ASSERT_EQ(file.layers.size(), 3U);
    EXPECT_EQ(file.layers[0].name, "RGB");
    EXPECT_EQ(file.layers[1].channels[0].type, SampleType::Float);
    EXPECT_EQ(file.layers[2].channels[0].type, SampleType::Unsigned32);
}

TEST(ExrFile, PartsOfDifferentFramesAreRefused) {
    Part left{.name = "left"};
    Part right{.name = "right"};
    const std::string bytes = exr_samples::Write({left, right});
    ASSERT_EQ(ExrFileComplaint(bytes), "");
    EXPECT_THAT(ExrFileComplaint(exr_samples::WithLastDisplayWindow(bytes, {0, 0, 3, 3})),
                HasSubstr("non-conforming shared attributes"));
}

TEST(ExrFile, ASideAbove65535IsRefusedBeforeAnythingIsAllocated) {
    const std::string bytes = exr_samples::Write(Part());
    const std::string rest =
        " is 100000x100000 pixels, and a document holds at most 65535 a side; render it smaller";
    EXPECT_EQ(ExrFileComplaint(exr_samples::WithWindows(bytes, {0, 0, 99999, 99999})),
              "a.exr: the display window" + rest);
    EXPECT_THAT(ExrFileComplaint(exr_samples::WithWindows(bytes, {0, 0, 65535, 0})),
                HasSubstr("is 65536x1 pixels"));
}

TEST(ExrFile, AFileThatLiesAboutItsSizeIsRefused) {
    const std::string bytes = exr_samples::Write(Part());
    for (const Window lie : {Window{0, 0, 65534, 65534}, Window{5, 0, 0, 0}, Window{0, 0, 3, -1},
                             Window{-2147483647, -2147483647, 0, 0}}) {
        EXPECT_THAT(ExrFileComplaint(exr_samples::WithWindows(bytes, lie)), StartsWith("a.exr: "));
    }
    // Long enough for the table of its blocks, which then point nowhere.
    EXPECT_THAT(ExrFileComplaint(exr_samples::WithWindows(bytes, {0, 0, 65534, 65534}) +
                                 std::string(100000, '\0')),
                StartsWith("a.exr: "));
}

TEST(ExrFile, CutAnywhereItIsRefused) {
    for (const Part& part : {Part(), Part{.channels = deepChannels, .deep = true}}) {
        const std::string bytes = exr_samples::Write(part);
        for (std::size_t size = 4; size < bytes.size(); ++size) {
            EXPECT_THAT(ExrFileComplaint(bytes.substr(0, size)), StartsWith("a.exr: "))
                << size << " of " << bytes.size();
        }
    }
}

TEST(ExrFile, DamagedBlocksAreRefused) {
    std::string bytes = exr_samples::Write(Part());
    bytes.replace(bytes.size() - 20, 20, std::string(20, '\xff'));
    EXPECT_THAT(ExrFileComplaint(bytes), StartsWith("a.exr: damaged or cut short ("));
}

}  // namespace
}  // namespace command
