#include "command/row_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace command {
namespace {

using testing::ElementsAre;

template <class Sample, std::size_t count>
ChannelRow RowOf(SampleType type, const std::array<Sample, count>& samples) {
    return {type, samples.data(), 0, static_cast<int>(count)};
}

TEST(WholeNumber, IsNoneForWhatAFilterMixed) {
    EXPECT_EQ(WholeNumber(0.0F), 0U);
    EXPECT_EQ(WholeNumber(0.5F), 0U);
    EXPECT_EQ(WholeNumber(1.0F), 1U);
    EXPECT_EQ(WholeNumber(6.9F), 0U);
    EXPECT_EQ(WholeNumber(7.0F), 7U);
}

TEST(WholeNumber, KeepsLargeNumbers) {
    // Odd ones of 24 bits, where a half more can't be told from one more.
    EXPECT_EQ(WholeNumber(8388609.0F), 8388609U);
    EXPECT_EQ(WholeNumber(16777215.0F), 16777215U);
    EXPECT_EQ(WholeNumber(4294967040.0F), 4294967040U);
}

TEST(WholeNumber, IsNoneForWhatIsNoNumberOf32Bits) {
    EXPECT_EQ(WholeNumber(-3.0F), 0U);
    EXPECT_EQ(WholeNumber(4294967296.0F), 0U);
    EXPECT_EQ(WholeNumber(std::numeric_limits<float>::infinity()), 0U);
    EXPECT_EQ(WholeNumber(std::numeric_limits<float>::quiet_NaN()), 0U);
}

TEST(RowValues, EveryTypeCanBeReadAsFloats) {
    RowValues values;
    const std::array<std::uint16_t, 2> halfs{0x3c00, 0xc000};
    EXPECT_THAT(values.AsFloats(RowOf(SampleType::Half, halfs), 2), ElementsAre(1.0F, -2.0F));
    const std::array<std::uint32_t, 3> wide{0, 7, 0xffffffff};
    EXPECT_THAT(values.AsFloats(RowOf(SampleType::Unsigned32, wide), 3),
                ElementsAre(0.0F, 7.0F, 4294967296.0F));
    const std::array<std::uint16_t, 2> words{0, 65535};
    EXPECT_THAT(values.AsFloats(RowOf(SampleType::Unsigned16, words), 2),
                ElementsAre(0.0F, 65535.0F));
    const std::array<std::uint8_t, 2> bytes{0, 255};
    EXPECT_THAT(values.AsFloats(RowOf(SampleType::Unsigned8, bytes), 2), ElementsAre(0.0F, 255.0F));
}

TEST(RowValues, FloatsAreHandedOn) {
    RowValues values;
    const std::array<float, 2> floats{0.5F, -1.0F};
    EXPECT_EQ(values.AsFloats(RowOf(SampleType::Float, floats), 2).data(), floats.data());
}

TEST(RowValues, BitsAreThoseOfTheFile) {
    const std::array<float, 2> floats{1.0F, -0.0F};
    EXPECT_THAT(RowValues::AsBits(RowOf(SampleType::Float, floats), 2),
                ElementsAre(0x3f800000U, 0x80000000U));
}

TEST(RowValues, NumbersComeFromIntegersAsFromFloats) {
    RowValues values;
    const std::array<std::uint32_t, 2> wide{7, 0xffffffff};
    EXPECT_EQ(values.AsNumbers(RowOf(SampleType::Unsigned32, wide), 2).data(), wide.data());
    const std::array<float, 4> floats{2.0F, -1.0F, 2.6F, 65536.0F};
    EXPECT_THAT(values.AsNumbers(RowOf(SampleType::Float, floats), 4),
                ElementsAre(2U, 0U, 0U, 65536U));
    const std::array<std::uint16_t, 2> halfs{0x4900, 0x0000};
    EXPECT_THAT(values.AsNumbers(RowOf(SampleType::Half, halfs), 2), ElementsAre(10U, 0U));
}

TEST(RowValues, AWideRowLeavesNothingBehindForANarrowOne) {
    RowValues values;
    const std::array<std::uint8_t, 3> bytes{1, 2, 3};
    EXPECT_EQ(values.AsFloats(RowOf(SampleType::Unsigned8, bytes), 3).size(), 3U);
    EXPECT_THAT(values.AsFloats(RowOf(SampleType::Unsigned8, bytes), 2), ElementsAre(1.0F, 2.0F));
    EXPECT_THAT(values.AsNumbers(RowOf(SampleType::Unsigned8, bytes), 1), ElementsAre(1U));
}

}  // namespace
}  // namespace command
