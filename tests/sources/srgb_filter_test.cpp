#include "sources/srgb_filter.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <cmath>

#include "sources/solid_color_channel.h"
#include "sources/srgb_curve.h"
#include "tests/psdbuilder/listed_source.h"

namespace {

TEST(SRGBFilter, KeepsBlackAndWhiteAtBothDepths) {
    auto inner = boost::make_shared<ListedSource>();
    inner->row8 = {0, 255};
    inner->row16 = {0, 65535};
    sources::SRGBFilterIDS filter(inner, 2);
    EXPECT_EQ(filter.GetRow8(0)[0], 0);
    EXPECT_EQ(filter.GetRow8(0)[1], 255);
    EXPECT_EQ(filter.GetRow16(0)[0], 0);
    EXPECT_EQ(filter.GetRow16(0)[1], 65535);
}

TEST(SRGBFilter, RoundsTheCurveOfEverySample) {
    auto inner = boost::make_shared<ListedSource>();
    for (int i = 0; i < 256; ++i)
        inner->row8.push_back(static_cast<std::uint8_t>(i));
    for (int i = 0; i < 65536; i += 257)
        inner->row16.push_back(static_cast<std::uint16_t>(i));
    sources::SRGBFilterIDS filter(inner, 256);
    const std::uint8_t* row8 = filter.GetRow8(0);
    const std::uint16_t* row16 = filter.GetRow16(0);
    for (std::size_t i = 0; i < 256; ++i) {
        const double curve = sources::SRGB(inner->row8[i] / 255.0);
        EXPECT_EQ(row8[i], std::floor(std::min(255.0, curve * 255.0 + 0.5))) << i;
        EXPECT_EQ(row16[i], std::floor(std::min(65535.0, curve * 65535.0 + 0.5))) << i;
    }
}

TEST(SRGBFilter, LeavesFloatRowsAlone) {
    auto inner = boost::make_shared<ListedSource>();
    inner->row32 = {0.25F, 7.0F};
    sources::SRGBFilterIDS filter(inner, 2);
    EXPECT_EQ(filter.GetRow32(0), inner->row32.data());
}

TEST(SRGBFilter, GivesNoRowWhereItsSourceGivesNone) {
    auto inner = boost::make_shared<ListedSource>();
    inner->row8 = {1};
    sources::SRGBFilterIDS filter(inner, 1);
    EXPECT_EQ(filter.GetRow16(0), nullptr);
    EXPECT_EQ(filter.GetRow32(0), nullptr);
    sources::SRGBFilterIDS empty(nullptr, 1);
    EXPECT_EQ(empty.GetRow8(0), nullptr);
    EXPECT_FALSE(empty.IsSolid());
}

TEST(SRGBFilter, OverASolidSourceIsSolidWithValue0) {
    sources::SRGBFilterIDS filter(
        boost::make_shared<sources::SolidColorChannelImageSource>(std::uint8_t{200}, 1), 1);
    EXPECT_TRUE(filter.IsSolid());
    EXPECT_EQ(filter.GetSolidValue8(), 0);
    EXPECT_EQ(filter.GetSolidValue16(), 0);
}

}  // namespace
