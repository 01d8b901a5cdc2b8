#include "sources/srgb_curve.h"

#include <gtest/gtest.h>

namespace {

TEST(SRGBCurve, IsALineBelowItsKneeAndAPowerAbove) {
    EXPECT_DOUBLE_EQ(sources::SRGB(0.0), 0.0);
    EXPECT_DOUBLE_EQ(sources::SRGB(0.0031308), 0.0031308 * 12.92);
    EXPECT_NEAR(sources::SRGB(0.5), 0.735356983, 1e-9);
    EXPECT_NEAR(sources::SRGB(1.0), 1.0, 1e-12);
}

TEST(SRGBCurve, TheTableIsScaledBy65536AndTruncated) {
    const auto& table = sources::SRGBTable();
    EXPECT_EQ(table[0], 0);
    // 1 / 8191 * 12.92 * 65536 is 103.37...
    EXPECT_EQ(table[1], 103);
    // sRGB(4096 / 8191) * 65536 is 48194.98...
    EXPECT_EQ(table[4096], 48194);
    EXPECT_EQ(table[8191], 65535);
}

}  // namespace
