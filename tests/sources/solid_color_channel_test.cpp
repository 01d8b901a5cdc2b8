#include "sources/solid_color_channel.h"

#include <gtest/gtest.h>

namespace {

using sources::SolidColorChannelImageSource;

TEST(SolidColorChannel, WhiteIsFullAtEveryDepth) {
    SolidColorChannelImageSource white(255, 3);
    for (std::uint32_t row : {0U, 1000U}) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(white.GetRow8(row)[i], 255);
            EXPECT_EQ(white.GetRow16(row)[i], 65535);
            EXPECT_EQ(white.GetRow32(row)[i], 1.0F);
        }
    }
}

TEST(SolidColorChannel, AGreyIs0InFloats) {
    SolidColorChannelImageSource grey(128, 1);
    EXPECT_EQ(grey.GetRow8(0)[0], 128);
    EXPECT_EQ(grey.GetRow16(0)[0], 32896);
    EXPECT_EQ(grey.GetRow32(0)[0], 0.0F);
}

TEST(SolidColorChannel, SaysThatItIsSolid) {
    SolidColorChannelImageSource grey(2, 1);
    EXPECT_TRUE(grey.IsSolid());
    EXPECT_EQ(grey.GetSolidValue8(), 2);
    EXPECT_EQ(grey.GetSolidValue16(), 514);
}

}  // namespace
