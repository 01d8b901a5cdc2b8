#include "effect/background_layer.h"

#include "tests/effect/fill_frame.h"

namespace {

using BackgroundLayer = FillFrameTest;

TEST_F(BackgroundLayer, IsAWhiteFillWithoutAMask) {
    effect::AddBackgroundLayer(builder, FrameOf(image.get()));
    EXPECT_EQ(Fill().name, "Background");
    EXPECT_EQ(Fill().unicodeName, u"Background");
    EXPECT_EQ(Fill().blendKey, psdfile::blendKeyNormal);
    EXPECT_EQ(Fill().flags, 0);
    EXPECT_FALSE(Fill().mask);
    EXPECT_TRUE(Fill().maskEnabled);
    EXPECT_FALSE(Fill().clipping);
    EXPECT_EQ(LevelsOf(Fill()), (std::vector{255.0, 255.0, 255.0}));
}

TEST_F(BackgroundLayer, MayHaveANameOfTheUsers) {
    SetText("backgroundLayerName"_param, _M("Paper"));
    effect::AddBackgroundLayer(builder, FrameOf(image.get()));
    EXPECT_EQ(Fill().name, "Paper");
}

TEST_F(BackgroundLayer, NeedsNoFrame) {
    effect::AddBackgroundLayer(builder, FrameOf(nullptr));
    EXPECT_EQ(Fill().name, "Background");
}

}  // namespace
