#include "ui/blend_mode_combo.h"

#include <string>
#include <vector>

#include "effect/psd_output_layer.h"
#include "tests/effect/element_frame.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<std::string> NamesOf(const std::vector<int>& modes) {
    std::vector<std::string> names;
    for (const int mode : modes)
        names.push_back(host::ToUtf8(ui::BlendModeName(mode)));
    return names;
}

TEST(BlendModeCombo, NamesEachMode) {
    std::vector<int> all;
    for (int mode = 0; mode <= 26; ++mode)
        all.push_back(mode);
    EXPECT_THAT(NamesOf(all),
                ElementsAre("Normal", "Dissolve", "Darken", "Multiply", "Color Burn", "Linear Burn",
                            "Lighten", "Screen", "Color Dodge", "Linear Dodge (Add)", "Overlay",
                            "Soft Light", "Hard Light", "Vivid Light", "Linear Light", "Pin Light",
                            "Difference", "Exclusion", "Hue", "Saturation", "Color", "Luminosity",
                            "Hard Mix", "Darker Color", "Lighter Color", "Subtract", "Divide"));
    EXPECT_THAT(NamesOf({-1, 27, 1000}), ElementsAre("<unknown>", "<unknown>", "<unknown>"));
}

TEST(BlendModeCombo, GoesByTheMenuOfPaintApplications) {
    EXPECT_THAT(ui::OfferedBlendModes(false, true),
                ElementsAre(0, 1, 2, 3, 4, 5, 23, 6, 7, 8, 9, 24, 10, 11, 12, 13, 14, 15, 22, 16,
                            17, 25, 26, 18, 19, 20, 21));
}

TEST(BlendModeCombo, LeavesOutWhatADocumentDoesntHave) {
    EXPECT_THAT(ui::OfferedBlendModes(true, true),
                ElementsAre(0, 1, 2, 3, 23, 6, 9, 24, 16, 25, 26, 18, 19, 20, 21));
    EXPECT_THAT(ui::OfferedBlendModes(false, false),
                ElementsAre(0, 1, 2, 3, 4, 6, 7, 8, 10, 11, 12, 16, 17, 18, 19, 20, 21));
    EXPECT_THAT(ui::OfferedBlendModes(true, false), ElementsAre(0, 1, 2, 3, 6, 16, 18, 19, 20, 21));
}

TEST(BlendModeCombo, FindsTheItemOfAMode) {
    const std::vector<int> offered = ui::OfferedBlendModes(true, true);
    EXPECT_EQ(ui::ItemOfBlendMode(offered, 0), 0);
    EXPECT_EQ(ui::ItemOfBlendMode(offered, 23), 4);
    EXPECT_EQ(ui::ItemOfBlendMode(offered, 21), 14);
    EXPECT_EQ(ui::ItemOfBlendMode(offered, 7), -1) << "not at 32 bits";
    EXPECT_EQ(ui::ItemOfBlendMode(offered, -1), -1);
    EXPECT_EQ(ui::ItemOfBlendMode({}, 0), -1);
}

class BlendModes : public ElementFrameTest {};

TEST_F(BlendModes, AreThoseOfTheDocumentsDepth) {
    for (const int depth : {8, 16}) {
        Set("bitDepth"_param, depth);
        EXPECT_THAT(ui::OfferedBlendModes(*effect),
                    ElementsAreArray(ui::OfferedBlendModes(false, true)));
    }
    Set("bitDepth"_param, 32);
    EXPECT_THAT(ui::OfferedBlendModes(*effect),
                ElementsAreArray(ui::OfferedBlendModes(true, true)));
}

TEST_F(BlendModes, AreAlwaysOfferedWithTheNewerOnes) {
    Set("usePS7Extensions"_param, FALSE);
    EXPECT_EQ(ui::OfferedBlendModes(*effect).size(), 27U);
}

// By number: what a layer of each mode has in place of it.
TEST_F(BlendModes, ThatAreNotOfferedAreReplaced) {
    AddElement(unknownElement, "a");
    effect::PSDOutputLayer& layer = *effect->Layer(0, 0);
    for (int mode = 0; mode <= 26; ++mode) {
        layer.pblock->SetValue("blendingMode"_layerParam, 0, mode);
        layer.PrepareFor32Bits();
        const bool at32 = ui::ItemOfBlendMode(ui::OfferedBlendModes(true, true), mode) >= 0;
        EXPECT_EQ(layer.pblock->GetInt("blendingMode"_layerParam), at32        ? mode
                                                                   : mode == 7 ? 9
                                                                               : 0)
            << mode;
        layer.pblock->SetValue("blendingMode"_layerParam, 0, mode);
        layer.ReplaceNewerModes();
        const bool old = ui::ItemOfBlendMode(ui::OfferedBlendModes(false, false), mode) >= 0;
        EXPECT_EQ(layer.pblock->GetInt("blendingMode"_layerParam), old         ? mode
                                                                   : mode == 9 ? 7
                                                                               : 0)
            << mode;
    }
}

}  // namespace
