// Colours with an exponent, compressed normals and the names of the G-Buffer's channels.
#include <gbuf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <strclass.h>

#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace {

using testing::Each;
using testing::ElementsAre;

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

std::array<float, 3> ThereAndBack(float r, float g, float b) {
    std::array<float, 3> back{};
    ExpandRealPixel(MakeRealPixel(r, g, b), back[0], back[1], back[2]);
    return back;
}

std::array<int, 4> Bytes(const RealPixel& pixel) {
    return {pixel.r, pixel.g, pixel.b, pixel.e};
}

TEST(RealPixels, TheLargestComponentGivesTheExponent) {
    EXPECT_THAT(Bytes(MakeRealPixel(1.0F, 0.5F, 0.25F)), ElementsAre(128, 64, 32, 129));
    EXPECT_THAT(Bytes(MakeRealPixel(3.0F, 0.0F, 0.125F)), ElementsAre(192, 0, 8, 130));
}

TEST(RealPixels, PowersOfTwoAndSmallNumbersComeBackExactly) {
    EXPECT_THAT(ThereAndBack(1.0F, 0.5F, 0.25F), ElementsAre(1.0F, 0.5F, 0.25F));
    EXPECT_THAT(ThereAndBack(100.0F, 3.0F, 64.0F), ElementsAre(100.0F, 3.0F, 64.0F));
    EXPECT_THAT(ThereAndBack(0.0F, 0.0F, 0.0F), Each(0.0F));
    EXPECT_THAT(ThereAndBack(0x1p-100F, 0.0F, 0x1p100F), ElementsAre(0.0F, 0.0F, 0x1p100F));
}

TEST(RealPixels, AnyColourComesBackWithinHalfAStepOfItsLargestComponent) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> exponent(-30.0F, 30.0F);
    std::uniform_real_distribution<float> unit(0.0F, 1.0F);
    for (int i = 0; i < 10000; ++i) {
        const float top = std::exp2(exponent(random));
        const float g = top * unit(random);
        const float b = top * unit(random);
        const auto back = ThereAndBack(top, g, b);
        ASSERT_LE(std::abs(back[0] - top), top / 255.0F);
        ASSERT_LE(std::abs(back[1] - g), top / 255.0F);
        ASSERT_LE(std::abs(back[2] - b), top / 255.0F);
    }
}

TEST(RealPixels, AMantissaThatRoundsUpTakesTheNextExponent) {
    EXPECT_THAT(Bytes(MakeRealPixel(255.4F / 256, 0, 0)), ElementsAre(255, 0, 0, 128));
    EXPECT_THAT(Bytes(MakeRealPixel(255.6F / 256, 0, 0)), ElementsAre(128, 0, 0, 129));
}

TEST(RealPixels, WhatIsNoColourCountsAsBlack) {
    EXPECT_THAT(ThereAndBack(-1.0F, NOT_A_NUMBER, 0.5F), ElementsAre(0.0F, 0.0F, 0.5F));
    EXPECT_THAT(ThereAndBack(-infinite, NOT_A_NUMBER, -0.0F), Each(0.0F));
}

TEST(RealPixels, TheEndsOfTheRangeHold) {
    const auto largest = ThereAndBack(infinite, std::numeric_limits<float>::max(), 1.0F);
    EXPECT_GT(largest[0], 1.6e38F);
    EXPECT_EQ(largest[1], largest[0]);
    EXPECT_EQ(largest[2], 0.0F);
    EXPECT_THAT(ThereAndBack(std::numeric_limits<float>::denorm_min(), 0.0F, 0.0F), Each(0.0F));
    EXPECT_THAT(ThereAndBack(std::numeric_limits<float>::min(), 0.0F, 0.0F), Each(0.0F));
    // Made by others: below the exponents that MakeRealPixel gives.
    std::array<float, 3> back{};
    ExpandRealPixel({128, 255, 1, 1}, back[0], back[1], back[2]);
    EXPECT_THAT(back, ElementsAre(0x1p-128F, 255 * 0x1p-135F, 0x1p-135F));
    ExpandRealPixel({255, 255, 255, 0}, back[0], back[1], back[2]);
    EXPECT_THAT(back, Each(0.0F));
}

TEST(Normals, TheAxesComeBackExactly) {
    for (const Point3& axis : {Point3(1, 0, 0), Point3(-1, 0, 0), Point3(0, 1, 0), Point3(0, -1, 0),
                               Point3(0, 0, 1), Point3(0, 0, -1)}) {
        EXPECT_EQ(DeCompressNormal(CompressNormal(axis)), axis);
    }
}

TEST(Normals, AnyDirectionComesBackAsAUnitVectorCloseToIt) {
    std::mt19937 random(7);
    std::normal_distribution<float> gauss;
    for (int i = 0; i < 100000; ++i) {
        const Point3 v(gauss(random), gauss(random), gauss(random));
        const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
        const DWORD packed = CompressNormal(v);
        ASSERT_NE(packed, 0U);
        const Point3 back = DeCompressNormal(packed);
        ASSERT_NEAR(back.x, v.x / length, 1e-4F);
        ASSERT_NEAR(back.y, v.y / length, 1e-4F);
        ASSERT_NEAR(back.z, v.z / length, 1e-4F);
        ASSERT_NEAR(back.x * back.x + back.y * back.y + back.z * back.z, 1.0F, 1e-5F);
    }
}

TEST(Normals, AVectorWithoutDirectionPointsToTheCamera) {
    const Point3 towards(0, 0, 1);
    EXPECT_EQ(DeCompressNormal(CompressNormal(Point3(0, 0, 0))), towards);
    EXPECT_EQ(DeCompressNormal(CompressNormal(Point3(NOT_A_NUMBER, 0, 0))), towards);
    EXPECT_EQ(DeCompressNormal(CompressNormal(Point3(infinite, 0, 0))), towards);
}

TEST(Normals, EveryNumberIsSomeUnitVector) {
    std::mt19937 random(9);
    for (int i = 0; i < 100000; ++i) {
        const Point3 v = DeCompressNormal(static_cast<DWORD>(random()));
        ASSERT_NEAR(v.x * v.x + v.y * v.y + v.z * v.z, 1.0F, 1e-5F);
    }
}

TEST(ChannelNames, AreThoseThatTheUserSees) {
    EXPECT_EQ(MSTR(GBChannelName(GB_Z)), MSTR(_M("Z")));
    EXPECT_EQ(MSTR(GBChannelName(GB_MTL_ID)), MSTR(_M("Material ID")));
    EXPECT_EQ(MSTR(GBChannelName(GB_NODE_ID)), MSTR(_M("Object ID")));
    EXPECT_EQ(MSTR(GBChannelName(GB_NORMAL)), MSTR(_M("Normal")));
    EXPECT_EQ(MSTR(GBChannelName(GB_REALPIX)), MSTR(_M("Non-Clamped Color")));
    EXPECT_EQ(MSTR(GBChannelName(GB_COVERAGE)), MSTR(_M("Coverage")));
    EXPECT_EQ(MSTR(GBChannelName(GB_NODE_RENDER_ID)), MSTR(_M("Node Render ID")));
    EXPECT_EQ(MSTR(GBChannelName(GB_COLOR)), MSTR(_M("Color")));
    EXPECT_EQ(MSTR(GBChannelName(GB_TRANSP)), MSTR(_M("Transparency")));
    EXPECT_EQ(MSTR(GBChannelName(GB_WEIGHT)), MSTR(_M("Sub-Pixel Weight")));
    EXPECT_EQ(MSTR(GBChannelName(13)), MSTR(_M("Sub-Pixel Mask")));
    EXPECT_EQ(MSTR(GBChannelName(14)), MSTR());
    EXPECT_EQ(MSTR(GBChannelName(-1)), MSTR());
}

}  // namespace
