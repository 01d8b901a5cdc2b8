#include "effect/solid_fill.h"

#include "tests/effect/fill_frame.h"

namespace {

using SolidFill = FillFrameTest;

TEST_F(SolidFill, IsOneGreyThatBlendsAsTheCallerSays) {
    effect::AddSolidFill(builder, effect::LayerName(_M("Gr\u00FCn")), psdfile::blendModes[3].key,
                         127.5);
    EXPECT_EQ(Fill().name, "Gr\xFCn");
    EXPECT_EQ(Fill().unicodeName, u"Gr\u00FCn");
    EXPECT_EQ(Fill().blendKey, 0x6D756C20U) << "mul ";
    EXPECT_EQ(Fill().flags, 0);
    EXPECT_FALSE(Fill().mask);
    EXPECT_TRUE(Fill().maskEnabled);
    EXPECT_FALSE(Fill().clipping);
    EXPECT_EQ(LevelsOf(Fill()), (std::vector{127.5, 127.5, 127.5}));
}

TEST_F(SolidFill, ShowsWhereItsMaskLetsItThrough) {
    effect::AddSolidFill(builder, effect::LayerName(_M("Fill")), psdfile::blendKeyNormal,
                         effect::whiteLevel, black);
    EXPECT_EQ(Fill().mask, black);
    EXPECT_TRUE(Fill().maskEnabled);
    EXPECT_EQ(LevelsOf(Fill()), (std::vector{255.0, 255.0, 255.0}));
}

}  // namespace
