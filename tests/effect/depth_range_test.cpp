#include "effect/depth_range.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/sources/fake_gbuffer.h"

namespace {

constexpr UWORD noObject = 65535;
constexpr DWORD rangeChannels =
    BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP | BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID;
constexpr float infinity = std::numeric_limits<float>::infinity();

class DepthRange : public testing::Test {
  protected:
    effect::DepthRange Scan(float threshold = 0.05F, UWORD opaque = noObject) {
        return effect::ScanDepthRange(&bitmap, threshold, opaque);
    }
    static void ExpectAt(const effect::DepthPlace& place, float z, int x, int y) {
        EXPECT_EQ(place.z, z);
        EXPECT_EQ(place.x, x);
        EXPECT_EQ(place.y, y);
    }
    static FakeFragment Covering(float z, UBYTE coverage) { return {.z = z, .coverage = coverage}; }
    static FakeFragment Glass(float z, UWORD renderID) {
        return {.z = z,
                .renderID = renderID,
                .transparency = Color24{255, 255, 255},
                .weight = Color24{255, 255, 255}};
    }

    FakeGBufferBitmap bitmap;
};

TEST_F(DepthRange, RunsFromTheNearestFragmentToTheFarthest) {
    bitmap.SetRows({{{{.z = 5.0F}}, {{.z = 7.0F}, {.z = 9.0F}}, {}},
                    {{{.z = 6.0F}}, {{.z = -2.0F}}, {{.z = 8.0F}}}});
    const effect::DepthRange range = Scan();
    EXPECT_TRUE(range.isThere);
    ExpectAt(range.min, -2.0F, 1, 1);
    ExpectAt(range.max, 9.0F, 1, 0);
}

TEST_F(DepthRange, NamesThePixelThatADepthWasSeenInFirst) {
    bitmap.SetRows({{{}, {{.z = 5.0F}}, {{.z = 1.0F}}, {{.z = 5.0F}}},
                    {{{.z = 1.0F}}, {{.z = 5.0F}}, {}, {}}});
    const effect::DepthRange range = Scan();
    ExpectAt(range.min, 1.0F, 2, 0);
    ExpectAt(range.max, 5.0F, 1, 0);
}

TEST_F(DepthRange, OfOneFragmentHasNoExtent) {
    bitmap.SetRows({{{}, {{.z = 3.0F}}}});
    const effect::DepthRange range = Scan();
    EXPECT_TRUE(range.isThere);
    ExpectAt(range.min, 3.0F, 1, 0);
    ExpectAt(range.max, 3.0F, 1, 0);
}

TEST_F(DepthRange, LeavesOutFragmentsThatShowLessThanTheThreshold) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{Covering(1.0F, 50)},
                     {Covering(2.0F, 51)},
                     {Covering(3.0F, 255)},
                     {Covering(4.0F, 51)},
                     {Covering(5.0F, 50)}}});
    effect::DepthRange range = Scan(0.2F);
    ExpectAt(range.min, 2.0F, 1, 0);
    ExpectAt(range.max, 4.0F, 3, 0);
    range = Scan(1.0F);
    ExpectAt(range.min, 3.0F, 2, 0);
    ExpectAt(range.max, 3.0F, 2, 0);
    EXPECT_FALSE(Scan(1.001F).isThere);
}

TEST_F(DepthRange, EveryLevelOfCoverageShowsItsOwnFraction) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    for (int level = 0; level <= 255; ++level) {
        bitmap.SetRows({{{Covering(1.0F, static_cast<UBYTE>(level))}}});
        EXPECT_TRUE(Scan(static_cast<float>(level) / 255.0F).isThere) << level;
        EXPECT_FALSE(Scan((static_cast<float>(level) + 0.01F) / 255.0F).isThere) << level;
    }
}

TEST_F(DepthRange, OfAThresholdOf0CountsWhatShowsNothing) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{Covering(1.0F, 0)}, {Covering(2.0F, 255)}}});
    ExpectAt(Scan(0.0F).min, 1.0F, 0, 0);
}

TEST_F(DepthRange, WithoutWeightsAndCoverageCountsAllFragments) {
    bitmap.SetRows({{{{.z = 1.0F}}, {{.z = 2.0F}}}});
    const effect::DepthRange range = Scan(1.0F);
    ExpectAt(range.min, 1.0F, 0, 0);
    ExpectAt(range.max, 2.0F, 1, 0);
}

TEST_F(DepthRange, GlassShowsNothingUnlessItIsTheOpaqueObject) {
    bitmap.gbuffer.channels = rangeChannels;
    bitmap.SetRows({{{Glass(1.0F, 7)}, {Glass(2.0F, 8)}, {Glass(9.0F, noObject)}}});
    EXPECT_FALSE(Scan().isThere);
    EXPECT_FALSE(Scan(0.05F, 6).isThere);
    const effect::DepthRange range = Scan(0.05F, 8);
    ExpectAt(range.min, 2.0F, 1, 0);
    ExpectAt(range.max, 2.0F, 1, 0);
}

TEST_F(DepthRange, LeavesOutDepthsThatAreNone) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float none : {nan, infinity, -infinity, 1e29F, -1e29F, 1e30F, -1e30F}) {
        bitmap.SetRows({{{{.z = none}}, {{.z = 3.0F}}, {{.z = none}}, {{}}, {{.z = 2.0F}}}});
        const effect::DepthRange range = Scan();
        ExpectAt(range.min, 2.0F, 4, 0);
        ExpectAt(range.max, 3.0F, 1, 0);
    }
    bitmap.SetRows({{{{.z = 9.9e28F}}, {{.z = -9.9e28F}}}});
    const effect::DepthRange range = Scan();
    ExpectAt(range.min, -9.9e28F, 1, 0);
    ExpectAt(range.max, 9.9e28F, 0, 0);
}

TEST_F(DepthRange, IsNotThereWhenNothingCounts) {
    EXPECT_FALSE(effect::ScanDepthRange(nullptr, 0.05F, noObject).isThere);
    bitmap.SetRows({{{}, {{}}, {{.z = infinity}}}});
    EXPECT_FALSE(Scan().isThere);
    bitmap.SetRows({{{{.z = 1.0F}}}});
    EXPECT_TRUE(Scan().isThere);
    bitmap.pixels.hasGBuffer = false;
    EXPECT_FALSE(Scan().isThere);
    bitmap.pixels.hasGBuffer = true;
    bitmap.gbuffer.outOfMemory = true;
    EXPECT_FALSE(Scan().isThere);
    bitmap.gbuffer.outOfMemory = false;
    bitmap.gbuffer.reader.unreadableLine = 0;
    EXPECT_FALSE(Scan().isThere);
    bitmap.hasStorage = false;
    EXPECT_FALSE(Scan().isThere);
}

TEST_F(DepthRange, IsExtendedToTheBackAlone) {
    effect::DepthRange range{{2.0F, 4, 5}, {10.0F, 6, 7}, true};
    effect::ExtendToBack(range, 0.0F);
    ExpectAt(range.max, 10.0F, 6, 7);
    effect::ExtendToBack(range, 0.25F);
    ExpectAt(range.min, 2.0F, 4, 5);
    ExpectAt(range.max, 12.0F, 6, 7);
    effect::ExtendToBack(range, 1.0F);
    ExpectAt(range.max, 22.0F, 6, 7);
}

TEST_F(DepthRange, WithoutExtentHasNothingToExtend) {
    effect::DepthRange range{{3.0F, 0, 0}, {3.0F, 0, 0}, true};
    effect::ExtendToBack(range, 1.0F);
    EXPECT_EQ(range.max.z, 3.0F);
}

}  // namespace
