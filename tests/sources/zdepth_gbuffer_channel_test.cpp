#include "sources/zdepth_gbuffer_channel.h"

#include <gmock/gmock.h>

#include "tests/sources/fake_gbuffer.h"
#include "tests/sources/row_copies.h"

namespace {

using sources::ZDepthGBufferToPSDChannel;
using testing::ElementsAre;

constexpr float noMin = 3.4028235e38F;
constexpr float noMax = -3.4028235e38F;
constexpr UWORD noNode = 65535;
constexpr DWORD weightsAndIdentities =
    BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP | BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID;

class ZDepthChannel : public testing::Test {
  protected:
    ZDepthChannel() {
        bitmap.gbuffer.zMin = 0.0F;
        bitmap.gbuffer.zMax = 10.0F;
    }
    std::vector<std::uint16_t> Samples(float min = noMin, float max = noMax,
                                       UWORD opaque = noNode) {
        ZDepthGBufferToPSDChannel source(&bitmap, 0, true, min, max, opaque);
        return Row16(source, bitmap.pixels.width);
    }
    // At the far end of the range.
    static FakeFragment Weighed(UWORD renderID, UBYTE transparency, UBYTE weight) {
        return {.z = 10.0F,
                .renderID = renderID,
                .transparency = Color24{transparency, transparency, transparency},
                .weight = Color24{weight, weight, weight}};
    }

    FakeGBufferBitmap bitmap;
};

TEST_F(ZDepthChannel, ShowsNearObjectsLightAndTheBackgroundWhite) {
    bitmap.SetRows({{{{.z = 0.0F}}, {{.z = 5.0F}}, {{.z = 10.0F}}, {}}});
    // 0.5 * 255 * 257 is 32767.5.
    EXPECT_THAT(Samples(), ElementsAre(65535, 65535 - 32767, 0, 65535));
}

TEST_F(ZDepthChannel, TakesTheRangeThatTheUserGave) {
    bitmap.SetRows({{{{.z = 0.0F}}, {{.z = 4.0F}}, {{.z = 6.0F}}, {{.z = 10.0F}}}});
    EXPECT_THAT(Samples(4.0F, 8.0F), ElementsAre(65535, 65535, 65535 - 32767, 0));
    // 6 of 8 is 0.75 * 65535 = 49151.25; 4 of 8 is a half.
    EXPECT_THAT(Samples(noMin, 8.0F), ElementsAre(65535, 65535 - 32767, 65535 - 49151, 0));
    // (6 - 2) / 8 is a half; (4 - 2) / 8 is 0.25 * 65535 = 16383.75.
    EXPECT_THAT(Samples(2.0F, noMax), ElementsAre(65535, 65535 - 16383, 65535 - 32767, 0));
}

TEST_F(ZDepthChannel, EachFragmentIsClampedToTheRange) {
    bitmap.SetRows({{{{.z = 3.0F}, {.z = 5.0F}}, {{.z = 4.0F}, {.z = 5.5F}}}});
    // 0 and 1, and neither -1 and 1 nor 0 and 1.5: their mean is a half.
    EXPECT_THAT(Samples(4.0F, 5.0F), ElementsAre(65535 - 32767, 65535 - 32767));
}

TEST_F(ZDepthChannel, TwoFullFragmentsGiveTheirMean) {
    bitmap.SetRows({{{{.z = 5.0F}, {.z = 10.0F}}, {{.z = 10.0F}, {.z = 10.0F}}}});
    EXPECT_THAT(Samples(), ElementsAre(65535 - 49151, 0));
}

TEST_F(ZDepthChannel, FragmentsThatFillLessThanThePixelAreSummed) {
    bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
    bitmap.SetRows({{{{.z = 10.0F, .coverage = UBYTE{51}}},
                     {{.z = 10.0F, .coverage = UBYTE{100}}, {.z = 10.0F, .coverage = UBYTE{155}}},
                     {{.z = 5.0F, .coverage = UBYTE{200}}, {.z = 10.0F, .coverage = UBYTE{200}}}}});
    // 51 levels; 255 levels; the mean of a half and 1.
    EXPECT_THAT(Samples(), ElementsAre(65535 - 51 * 257, 0, 65535 - 49151));
}

TEST_F(ZDepthChannel, LeavesOutFragmentsWithoutDepth) {
    bitmap.SetRows({{{{}, {.z = 10.0F}}, {{}}}});
    EXPECT_THAT(Samples(), ElementsAre(0, 65535));
}

TEST_F(ZDepthChannel, WeighsByWeightAndOpacityBesideTheIdentities) {
    bitmap.gbuffer.channels = weightsAndIdentities;
    bitmap.SetRows({{{Weighed(1, 0, 255)}, {Weighed(1, 255, 255)}, {Weighed(1, 204, 255)}}});
    EXPECT_THAT(Samples(), ElementsAre(0, 65535, 65535 - 51 * 257));
}

TEST_F(ZDepthChannel, WithoutAllIdentitiesCoverageCountsOrNothingDoes) {
    bitmap.SetRows({{{{.z = 10.0F,
                       .coverage = UBYTE{51},
                       .renderID = UWORD{1},
                       .transparency = Color24{255, 255, 255},
                       .weight = Color24{255, 255, 255}}}}});
    for (const DWORD missing :
         {BMM_CHAN_WEIGHT, BMM_CHAN_TRANSP, BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_NODE_ID}) {
        bitmap.gbuffer.channels = (weightsAndIdentities & ~missing) | BMM_CHAN_COVERAGE;
        EXPECT_THAT(Samples(), ElementsAre(65535 - 51 * 257)) << missing;
        bitmap.gbuffer.channels = weightsAndIdentities & ~missing;
        EXPECT_THAT(Samples(), ElementsAre(0)) << missing;
    }
}

TEST_F(ZDepthChannel, TheTransparencyOfOneObjectCanBeLeftOut) {
    bitmap.gbuffer.channels = weightsAndIdentities;
    bitmap.SetRows({{{Weighed(7, 255, 255)}, {Weighed(8, 255, 255)}, {Weighed(noNode, 255, 255)}}});
    EXPECT_THAT(Samples(noMin, noMax, 7), ElementsAre(0, 65535, 65535));
    EXPECT_THAT(Samples(noMin, noMax, noNode), ElementsAre(65535, 65535, 65535));
}

TEST_F(ZDepthChannel, EightBitsAreTheSixteenOver257) {
    bitmap.SetRows({{{{.z = 0.0F}}, {{.z = 5.0F}}, {{.z = 10.0F}}, {}}});
    ZDepthGBufferToPSDChannel source(&bitmap, 0, true, noMin, noMax, noNode);
    // 32768 / 257 is 127.5.
    EXPECT_THAT(Row8(source, 4), ElementsAre(255, 127, 0, 255));
    EXPECT_EQ(source.GetRow32(0), nullptr) << "the writer makes floats of the 16 bits";
}

TEST_F(ZDepthChannel, AllInARangeWithoutExtentIsNearAtItsOwnDepthAndBelow) {
    bitmap.SetRows({{{{.z = 5.0F}}, {{.z = 4.0F}}, {{.z = 6.0F}}}});
    EXPECT_THAT(Samples(5.0F, 5.0F), ElementsAre(65535, 65535, 0));
}

TEST_F(ZDepthChannel, ARangeTheOtherWayRoundShowsFarObjectsLight) {
    bitmap.SetRows({{{{.z = 2.0F}}, {{.z = 4.0F}}, {{.z = 6.0F}}, {{.z = 9.0F}}}});
    EXPECT_THAT(Samples(8.0F, 4.0F), ElementsAre(0, 0, 65535 - 32767, 65535));
}

TEST_F(ZDepthChannel, GivesTheRowThatIsAskedFor) {
    bitmap.SetRows({{{{.z = 10.0F}}}, {{{.z = 2.0F}}}});
    ZDepthGBufferToPSDChannel source(&bitmap, 0, true, noMin, noMax, noNode);
    EXPECT_THAT(Row16(source, 1, 1), ElementsAre(65535 - 51 * 257));
    EXPECT_THAT(Row8(source, 1, 1), ElementsAre(204));
    EXPECT_THAT(Row16(source, 1, 0), ElementsAre(0));
    bitmap.gbuffer.reader.unreadableLine = 1;
    EXPECT_THAT(Row16(source, 1, 1), ElementsAre(65535)) << "and not the row before";
}

TEST_F(ZDepthChannel, IsWhiteWhereNothingCanBeRead) {
    bitmap.SetRows({{{{.z = 10.0F}}}});
    EXPECT_THAT(Samples(), ElementsAre(0));
    bitmap.pixels.hasGBuffer = false;
    EXPECT_THAT(Samples(), ElementsAre(65535));
    bitmap.pixels.hasGBuffer = true;
    bitmap.gbuffer.outOfMemory = true;
    EXPECT_THAT(Samples(), ElementsAre(65535));
    bitmap.gbuffer.outOfMemory = false;
    bitmap.gbuffer.reader.unreadableLine = 0;
    EXPECT_THAT(Samples(), ElementsAre(65535));
    bitmap.hasStorage = false;
    ZDepthGBufferToPSDChannel source(&bitmap, 0, true, noMin, noMax, noNode);
    EXPECT_NE(source.GetRow16(0), nullptr);
    EXPECT_NE(source.GetRow8(0), nullptr);
}

}  // namespace
