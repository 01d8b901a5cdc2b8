#include "effect/renderer_kinds.h"
#include "tests/effect/effect_fixture.h"

namespace {

class GBufferChannels : public EffectTest {
  protected:
    DWORD Required() { return effect->GBufferChannelsRequired(0); }
};

TEST_F(GBufferChannels, NoneAreNeededByDefault) {
    EXPECT_EQ(Required(), 0U);
}

TEST_F(GBufferChannels, EachLayerNeedsItsOwn) {
    const struct {
        ParamID id;
        DWORD channels;
    } rows[] = {
        {16, 0x0002}, {15, 0x0004}, {17, 0x0100}, {34, 0x1450}, {82, 0x1545}, {116, 0x1545},
    };
    for (const auto& row : rows) {
        Set(row.id, TRUE);
        EXPECT_EQ(Required(), row.channels) << "parameter " << row.id;
        Set(row.id, FALSE);
    }
}

TEST_F(GBufferChannels, NonClampedColourIsNeededAt32BitsOnly) {
    Set("createNonClampedColorLayer"_param, TRUE);
    for (const auto& [bitDepth, channels] : {std::pair{8, 0U}, {16, 0U}, {32, 0x1560U}}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(Required(), channels) << bitDepth;
    }
}

TEST_F(GBufferChannels, EachKindOfMatteNeedsItsOwnAndTheColouredStylesMore) {
    const struct {
        ParamID enabled;
        ParamID outputAs;
        DWORD channels;
    } rows[] = {
        {48, 50, 0x1540}, {71, 73, 0x1540}, {18, 23, 0x1544}, {20, 24, 0x1542}, {28, 29, 0x1540},
    };
    for (const auto& row : rows) {
        Set(row.enabled, TRUE);
        for (const int bitDepth : {8, 16, 32}) {
            Set("bitDepth"_param, bitDepth);
            const DWORD coloured = row.channels | (bitDepth == 32 ? 0x0220U : 0x0200U);
            const DWORD expected[] = {row.channels, row.channels, coloured,
                                      coloured,     row.channels, row.channels};
            for (int outputAs = 0; outputAs <= 5; ++outputAs) {
                Set(row.outputAs, outputAs);
                EXPECT_EQ(Required(), expected[outputAs])
                    << "parameter " << row.enabled << " as " << outputAs << " at " << bitDepth;
            }
        }
        Set(row.enabled, FALSE);
        EXPECT_EQ(Required(), 0U) << "a coloured style alone needs nothing";
    }
}

TEST_F(GBufferChannels, NeedsAddUp) {
    Set("createMtlIDLayer"_param, TRUE);
    Set("createNodeIDLayer"_param, TRUE);
    Set("createNodeRenderIDLayer"_param, TRUE);
    EXPECT_EQ(Required(), 0x0106U);
    Set("outputObjects"_param, TRUE);
    EXPECT_EQ(Required(), 0x1546U);
}

TEST_F(GBufferChannels, RenderersOfClassAAndBGetCoverageInPlaceOfWeightAndTransparency) {
    for (const Class_ID id : {RENDERER_A_CLASS_ID, RENDERER_B_CLASS_ID}) {
        UseRenderer(id);
        Set("createNormalLayer"_param, TRUE);
        EXPECT_EQ(Required(), 0x0050U) << "0x1450 less 0x1400, with 0x40 already there";
        Set("createNormalLayer"_param, FALSE);
        Set("outputNodeIDs"_param, TRUE);
        EXPECT_EQ(Required(), 0x0144U);
        Set("outputNodeIDs"_param, FALSE);
    }
}

TEST_F(GBufferChannels, RenderersOfClassAAndBGetNoCoverageForWhatNeedsNoWeight) {
    for (const Class_ID id : {RENDERER_A_CLASS_ID, RENDERER_B_CLASS_ID}) {
        UseRenderer(id);
        Set("createNodeRenderIDLayer"_param, TRUE);
        EXPECT_EQ(Required(), 0x0100U);
        Set("createNodeRenderIDLayer"_param, FALSE);
        EXPECT_EQ(Required(), 0U);
    }
}

TEST_F(GBufferChannels, OtherRenderersGetTheMaskAsItIs) {
    Set("createNormalLayer"_param, TRUE);
    for (const Class_ID id :
         {VRAY_CLASS_ID, CORONA_CLASS_ID, RENDERER_C_CLASS_ID, Class_ID{1, 0}}) {
        UseRenderer(id);
        EXPECT_EQ(Required(), 0x1450U);
    }
}

TEST_F(GBufferChannels, NoneAreNeededWithoutTheBlock) {
    Set("createNormalLayer"_param, TRUE);
    effect->DeleteReference(0);
    EXPECT_EQ(Required(), 0U);
}

}  // namespace
