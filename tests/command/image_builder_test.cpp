#include "command/image_builder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace command {
namespace {

using testing::ElementsAre;

constexpr std::uint16_t halfOne = 0x3c00;
constexpr std::uint16_t halfQuarter = 0x3400;
constexpr std::uint16_t halfNan = 0x7e00;

template <class Sample, std::size_t count>
ChannelRow RowOf(SampleType type, const std::array<Sample, count>& samples) {
    return {type, samples.data(), 0, static_cast<int>(count)};
}

std::vector<float> Pixels(host::ImageBitmap& image) {
    host::ImageStorage& storage = *image.Storage();
    std::vector<BMM_Color_fl> row(static_cast<std::size_t>(storage.Width()));
    std::vector<float> values;
    for (int y = 0; y < storage.Height(); ++y) {
        EXPECT_EQ(storage.GetLinearPixels(0, y, storage.Width(), row.data()), 1);
        for (const BMM_Color_fl& pixel : row)
            values.insert(values.end(), {pixel.r, pixel.g, pixel.b, pixel.a});
    }
    return values;
}

TEST(ImageBuilder, ThreeColoursAndAnAlphaAreAPicture) {
    const std::vector<SampleType> types(4, SampleType::Float);
    ImageBuilder builder(1, 2, types, true);
    EXPECT_TRUE(builder.HasAlpha());
    const std::array<float, 4> values{0.25F, 0.5F, 0.75F, 1.0F};
    std::vector<ChannelRow> rows;
    for (const float& value : values)
        rows.push_back({SampleType::Float, &value, 0, 1});
    builder.AddRow(rows);
    std::swap(rows[0], rows[2]);
    builder.AddRow(rows);
    const auto image = builder.Finish(2.0F);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Storage()->Components(), 4);
    EXPECT_TRUE(image->Storage()->HasAlpha());
    EXPECT_EQ(image->Storage()->Aspect(), 2.0F);
    EXPECT_THAT(Pixels(*image), ElementsAre(0.25F, 0.5F, 0.75F, 1.0F, 0.75F, 0.5F, 0.25F, 1.0F));
}

TEST(ImageBuilder, OneChannelIsGrey) {
    const SampleType type = SampleType::Half;
    ImageBuilder builder(2, 1, {&type, 1}, false);
    const std::array halfs{halfOne, halfQuarter};
    const ChannelRow row = RowOf(type, halfs);
    builder.AddRow({&row, 1});
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Storage()->Components(), 1);
    EXPECT_FALSE(image->Storage()->HasAlpha());
    EXPECT_THAT(Pixels(*image), ElementsAre(1, 1, 1, 1, 0.25F, 0.25F, 0.25F, 1));
}

TEST(ImageBuilder, GreyWithAlphaStandsInAllColours) {
    const std::array types{SampleType::Half, SampleType::Half};
    ImageBuilder builder(1, 1, types, true);
    const std::array<std::uint16_t, 1> grey{halfQuarter};
    const std::array<std::uint16_t, 1> alpha{halfOne};
    builder.AddRow(std::array{RowOf(types[0], grey), RowOf(types[1], alpha)});
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    EXPECT_THAT(Pixels(*image), ElementsAre(0.25F, 0.25F, 0.25F, 1));
}

TEST(ImageBuilder, OfTwoColoursTheThirdIsBlack) {
    const std::array types{SampleType::Float, SampleType::Float};
    const std::array<float, 1> red{0.5F};
    const std::array<float, 1> green{2.0F};
    const std::array rows{RowOf(types[0], red), RowOf(types[1], green)};
    ImageBuilder builder(1, 1, types, false);
    builder.AddRow(rows);
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Storage()->Components(), 3);
    EXPECT_THAT(Pixels(*image), ElementsAre(0.5F, 2.0F, 0, 1));
}

TEST(ImageBuilder, OneChannelOfFloatsMakesAllFloats) {
    const std::array types{SampleType::Half, SampleType::Float, SampleType::Unsigned32};
    ImageBuilder builder(1, 1, types, false);
    const std::array<std::uint16_t, 1> red{halfQuarter};
    // What no half can hold.
    const std::array<float, 1> green{1e6F};
    const std::array<std::uint32_t, 1> blue{100000};
    builder.AddRow(std::array{RowOf(types[0], red), RowOf(types[1], green), RowOf(types[2], blue)});
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    EXPECT_THAT(Pixels(*image), ElementsAre(0.25F, 1e6F, 100000.0F, 1));
}

TEST(ImageBuilder, SmallIntegersBecomeFloatsOfTheSameNumber) {
    const std::array types{SampleType::Unsigned16, SampleType::Unsigned8, SampleType::Unsigned8};
    ImageBuilder builder(1, 1, types, false);
    const std::array<std::uint16_t, 1> red{65535};
    const std::array<std::uint8_t, 1> green{255};
    const std::array<std::uint8_t, 1> blue{1};
    builder.AddRow(std::array{RowOf(types[0], red), RowOf(types[1], green), RowOf(types[2], blue)});
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    EXPECT_THAT(Pixels(*image), ElementsAre(65535.0F, 255.0F, 1.0F, 1));
}

TEST(ImageBuilder, RowsWiderThanABlockOfHalfsAreConvertedWhole) {
    constexpr int width = 600;
    std::array<std::uint16_t, width> halfs{};
    halfs[255] = halfOne;
    halfs[256] = halfQuarter;
    halfs[599] = halfOne;
    const std::array<float, width> floats{};
    const std::array types{SampleType::Half, SampleType::Float};
    ImageBuilder builder(width, 1, types, false);
    builder.AddRow(std::array{RowOf(types[0], halfs), RowOf(types[1], floats)});
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    const std::vector<float> pixels = Pixels(*image);
    for (std::size_t x = 0; x < width; ++x) {
        const float wanted = x == 255 || x == 599 ? 1.0F : x == 256 ? 0.25F : 0.0F;
        EXPECT_EQ(pixels[x * 4], wanted) << x;
    }
}

TEST(ImageBuilder, WhatIsNotFiniteIsCountedAndMadeSo) {
    const SampleType type = SampleType::Half;
    ImageBuilder builder(2, 1, {&type, 1}, false);
    const std::array<std::uint16_t, 2> halfs{halfNan, 0x7c00};
    const ChannelRow row = RowOf(type, halfs);
    builder.AddRow({&row, 1});
    EXPECT_EQ(builder.NotFinite(), 2U);
    const auto image = builder.Finish(1.0F);
    ASSERT_TRUE(image);
    EXPECT_THAT(Pixels(*image), ElementsAre(0, 0, 0, 1, 65504.0F, 65504.0F, 65504.0F, 1));
}

}  // namespace
}  // namespace command
