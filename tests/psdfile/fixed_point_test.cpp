// Numbers that fit, and those that don't.

#include "psdfile/fixed_point.h"

#include <gtest/gtest.h>

#include <limits>

namespace psdfile {
namespace {

TEST(FixedPoint, HasItsPointBehind16Bits) {
    EXPECT_EQ(FixedPoint16(0.0), 0U);
    EXPECT_EQ(FixedPoint16(1.0), 0x00010000U);
    EXPECT_EQ(FixedPoint16(72.5), 0x00488000U);
    EXPECT_EQ(FixedPoint16(1.0 / 65536), 1U);
    EXPECT_EQ(FixedPoint16(65535.0), 0xFFFF0000U);
}

TEST(FixedPoint, IsTruncatedTowardsZero) {
    EXPECT_EQ(FixedPoint16(0.0031308), 205U);      // 205.18
    EXPECT_EQ(FixedPoint16(1.8), 0x0001CCCCU);     // 117964.8
    EXPECT_EQ(FixedPoint16(-0.055), 0xFFFFF1ECU);  // -3604.48
    EXPECT_EQ(FixedPoint16(-0.9 / 65536), 0U);     // -0.9
    EXPECT_EQ(FixedPoint16(-32768.0), 0x80000000U);
}

TEST(FixedPoint, KeepsTheLow32BitsOfWhatIsTooLarge) {
    EXPECT_EQ(FixedPoint16(65536.0 + 1.0), 0x00010000U);
    EXPECT_EQ(FixedPoint16(-65536.0 - 1.0), 0xFFFF0000U);
    EXPECT_EQ(FixedPoint16(0x1p46 + 1.0), 0x00010000U);
}

TEST(FixedPoint, IsZeroForWhatHasNo64Bits) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double number :
         {1e300, -1e300, 1.5e14, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(FixedPoint16(number), 0U) << number;
    }
}

}  // namespace
}  // namespace psdfile
