#include "effect/color_decisions.h"

#include <gamma.h>

#include "effect/renderer_kinds.h"
#include "tests/effect/effect_fixture.h"

namespace {

class ColorDecisions : public EffectTest {
  protected:
    ColorDecisions() {
        gammaMgr.enable = TRUE;
        gammaMgr.SetFileOutGamma(2.2F);
    }
    effect::ColorDecisions Decide() { return effect::DecideColors(*effect->pblock); }
    IParamBlock2& UseVRay() {
        IParamBlock2* block = UseRenderer(VRAY_CLASS_ID).GetParamBlock(15);
        block->SetValue(170, 0, TRUE);
        return *block;
    }
};

TEST_F(ColorDecisions, GammaGoesWhereItsConfigurationSays) {
    const struct {
        int config;
        bool render;
        bool elements;
    } rows[] = {{0, true, false}, {1, true, true}, {2, true, true}, {3, false, false}};
    for (const auto& row : rows) {
        Set("gammaCorrectConfig"_param, row.config);
        EXPECT_TRUE(Decide().gammaActive) << row.config;
        EXPECT_EQ(Decide().gammaToRender, row.render) << row.config;
        EXPECT_EQ(Decide().gammaToElements, row.elements) << row.config;
    }
}

TEST_F(ColorDecisions, GammaIsActiveAt8And16BitsOnly) {
    Set("gammaCorrectConfig"_param, 2);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        EXPECT_EQ(Decide().gammaActive, bitDepth != 32) << bitDepth;
        EXPECT_EQ(Decide().gammaToRender, bitDepth != 32) << bitDepth;
        EXPECT_EQ(Decide().gammaToElements, bitDepth != 32) << bitDepth;
    }
}

TEST_F(ColorDecisions, GammaNeedsTheEffectsSwitchTheHostsAndAValueThatIsnt1) {
    Set("gammaCorrectConfig"_param, 2);
    Set("gammaCorrectRender"_param, FALSE);
    EXPECT_FALSE(Decide().gammaActive || Decide().gammaToRender || Decide().gammaToElements);
    Set("gammaCorrectRender"_param, TRUE);
    EXPECT_TRUE(Decide().gammaActive);
    gammaMgr.enable = FALSE;
    EXPECT_FALSE(Decide().gammaActive || Decide().gammaToRender || Decide().gammaToElements);
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(1.0F);
    EXPECT_FALSE(Decide().gammaActive || Decide().gammaToRender || Decide().gammaToElements);
    gammaMgr.SetFileOutGamma(1.0001F);
    EXPECT_TRUE(Decide().gammaActive);
}

TEST_F(ColorDecisions, CorrectionsGoWhereTheirConfigurationSays) {
    UseVRay();
    for (const auto& [config, elements] : {std::pair{0, false}, {1, true}, {2, true}, {3, false}}) {
        Set("colorCorrectConfig"_param, config);
        EXPECT_TRUE(Decide().ccActive) << config;
        EXPECT_EQ(Decide().ccToElements, elements) << config;
    }
}

TEST_F(ColorDecisions, CorrectionsNeedVRaysFrameBufferAndTheEffectsSwitch) {
    Set("colorCorrectConfig"_param, 2);
    EXPECT_FALSE(Decide().ccActive || Decide().ccToElements) << "no renderer";
    UseRenderer(CORONA_CLASS_ID);
    EXPECT_FALSE(Decide().ccActive || Decide().ccToElements) << "another renderer";
    IParamBlock2& vray = UseVRay();
    EXPECT_TRUE(Decide().ccActive && Decide().ccToElements);
    Set("vrayColorCorrections"_param, FALSE);
    EXPECT_FALSE(Decide().ccActive || Decide().ccToElements);
    Set("vrayColorCorrections"_param, TRUE);
    vray.SetValue(170, 0, FALSE);
    EXPECT_FALSE(Decide().ccActive || Decide().ccToElements);
}

TEST_F(ColorDecisions, CorrectionsAreActiveAt32BitsToo) {
    UseVRay();
    Set("bitDepth"_param, 32);
    EXPECT_TRUE(Decide().ccActive);
}

TEST_F(ColorDecisions, ByDefaultBothAreLeftToAdjustmentLayers) {
    UseVRay();
    EXPECT_TRUE(Decide().gammaActive && Decide().ccActive);
    EXPECT_FALSE(Decide().gammaToRender || Decide().gammaToElements || Decide().ccToElements);
}

}  // namespace
