#include "ui/depth_controls.h"

#include "tests/effect/effect_fixture.h"

namespace {

class DepthControls : public EffectTest {
  protected:
    ui::DepthControls Show(int depth) {
        Set("bitDepth"_param, depth);
        return ui::ShowDepth(*effect->pblock);
    }
};

TEST_F(DepthControls, OneChoiceIsOn) {
    for (const int depth : {8, 16, 32}) {
        const ui::DepthControls controls = Show(depth);
        EXPECT_EQ(controls.is8Bits, depth == 8) << depth;
        EXPECT_EQ(controls.is16Bits, depth == 16) << depth;
        EXPECT_EQ(controls.is32Bits, depth == 32) << depth;
    }
}

TEST_F(DepthControls, NoChoiceIsOnForADepthOfAScript) {
    const ui::DepthControls controls = Show(12);
    EXPECT_FALSE(controls.is8Bits || controls.is16Bits || controls.is32Bits);
}

TEST_F(DepthControls, ColoursAboveWhiteAreFor32Bits) {
    EXPECT_FALSE(Show(8).nonClampedColorEnabled);
    EXPECT_FALSE(Show(16).nonClampedColorEnabled);
    EXPECT_TRUE(Show(32).nonClampedColorEnabled);
}

}  // namespace
