#include "ui/element_row_clicks.h"

#include <elementclasses.h>

#include "tests/effect/element_frame.h"

namespace {

class ElementRowClicks : public ElementFrameTest {
  protected:
    ElementRowClicks() {
        AddElement(unknownElement, "a");
        AddElement(unknownElement, "b");
    }
    int Get(int row, ParamID id) { return effect->Layer(0, row)->pblock->GetInt(id); }
    // What both rows have of the two settings that clicks switch.
    std::string Switches() {
        std::string text;
        for (int row = 0; row < 2; ++row) {
            text += Get(row, "enabled"_layerParam) ? 'E' : '-';
            text += Get(row, "visible"_layerParam) ? 'V' : '-';
        }
        return text;
    }
};

TEST_F(ElementRowClicks, OnTheCheckBoxSwitchTheOutput) {
    EXPECT_TRUE(ui::ClickElement(*effect, {1, 0, 8}));
    EXPECT_EQ(Switches(), "EV-V");
    EXPECT_TRUE(ui::ClickElement(*effect, {1, 0, 8}));
    EXPECT_EQ(Switches(), "EVEV");
}

TEST_F(ElementRowClicks, OnTheSecondColumnSwitchTheVisibility) {
    for (const std::uint32_t flags : {2U, 4U, 8U, 14U}) {
        EXPECT_TRUE(ui::ClickElement(*effect, {0, 1, flags}));
        EXPECT_EQ(Switches(), "E-EV") << flags;
        EXPECT_TRUE(ui::ClickElement(*effect, {0, 1, flags}));
        EXPECT_EQ(Switches(), "EVEV") << flags;
    }
}

TEST_F(ElementRowClicks, ElsewhereSwitchNothing) {
    for (const ui::RowHit& hit :
         {ui::RowHit{0, 0, 4}, ui::RowHit{0, 0, 2}, ui::RowHit{0, 0, 14}, ui::RowHit{0, 1, 1},
          ui::RowHit{0, 1, 0}, ui::RowHit{0, 2, 14}, ui::RowHit{0, 3, 14}, ui::RowHit{0, -1, 14},
          ui::RowHit{-1, 0, 8}, ui::RowHit{-1, -1, 1}, ui::RowHit{2, 0, 8}}) {
        EXPECT_FALSE(ui::ClickElement(*effect, hit)) << hit.row << ' ' << hit.column;
    }
    EXPECT_EQ(Switches(), "EVEV");
}

TEST_F(ElementRowClicks, OnARowWithoutALayerDoNothing) {
    // The first entry stays behind as a null.
    effect->Layer(0, 0)->DeleteThis();
    EXPECT_FALSE(ui::ClickElement(*effect, {0, 0, 8}));
    EXPECT_FALSE(ui::ClickElement(*effect, {0, 1, 4}));
    EXPECT_FALSE(ui::HasElementMenu(*effect, 0));
    EXPECT_FALSE(ui::HasElementMenu(*effect, -1));
    EXPECT_TRUE(ui::HasElementMenu(*effect, 1));
    EXPECT_FALSE(ui::ChooseElementMenu(*effect, 0, 2));
}

TEST_F(ElementRowClicks, OpenAMenuOfTwo) {
    const ui::RowMenu menu = ui::ElementMenu();
    EXPECT_EQ(menu[0].id, 1);
    EXPECT_EQ(menu[0].text, MSTR(_M("Save as Default")));
    EXPECT_EQ(menu[1].id, 2);
    EXPECT_EQ(menu[1].text, MSTR(_M("Reset to Default")));
}

TEST_F(ElementRowClicks, SaveALayerForItsClassAndBringItBack) {
    AddElement(ATMOSPHERE_ELEMENT, "fog");
    IParamBlock2& fog = *effect->Layer(0, 2)->pblock;
    EXPECT_TRUE(ui::ChooseElementMenu(*effect, 2, 2));
    EXPECT_EQ(fog.GetInt("blendingMode"_layerParam), 7) << "the default of the class: Screen";
    fog.SetValue("blendingMode"_layerParam, 0, 3);
    EXPECT_FALSE(ui::ChooseElementMenu(*effect, 2, 1)) << "the layer stays as it is";
    fog.SetValue("blendingMode"_layerParam, 0, 16);
    EXPECT_FALSE(ui::ChooseElementMenu(*effect, 2, 0)) << "the menu was left without a choice";
    EXPECT_FALSE(ui::ChooseElementMenu(*effect, 2, 3));
    EXPECT_EQ(fog.GetInt("blendingMode"_layerParam), 16);
    EXPECT_TRUE(ui::ChooseElementMenu(*effect, 2, 2));
    EXPECT_EQ(fog.GetInt("blendingMode"_layerParam), 3) << "the user's default";
    effect->Layer(0, 0)->pblock->SetValue("blendingMode"_layerParam, 0, 16);
    EXPECT_TRUE(ui::ChooseElementMenu(*effect, 0, 2));
    EXPECT_EQ(Get(0, "blendingMode"_layerParam), 0) << "of another class";
}

TEST_F(ElementRowClicks, BringBackWhatTheDocumentsDepthHas) {
    AddElement(ATMOSPHERE_ELEMENT, "fog");
    Set("bitDepth"_param, 32);
    EXPECT_TRUE(ui::ChooseElementMenu(*effect, 2, 2));
    EXPECT_EQ(Get(2, "blendingMode"_layerParam), 9);
}

TEST_F(ElementRowClicks, SelectARowWhenItsStateSaysSo) {
    constexpr std::uint32_t text = 1;
    constexpr std::uint32_t state = 8;
    EXPECT_TRUE(ui::IsSelectionChange(state, 0, 2));
    EXPECT_TRUE(ui::IsSelectionChange(state | text, 0, 2));
    EXPECT_TRUE(ui::IsSelectionChange(state, 0, 3));
    EXPECT_TRUE(ui::IsSelectionChange(state, 1, 3));
    EXPECT_TRUE(ui::IsSelectionChange(state, 2, 3)) << "it got the focus";
    EXPECT_TRUE(ui::IsSelectionChange(state, 3, 2)) << "it lost the focus";
    EXPECT_FALSE(ui::IsSelectionChange(state, 2, 2));
    EXPECT_FALSE(ui::IsSelectionChange(state, 2, 0));
    EXPECT_FALSE(ui::IsSelectionChange(state, 3, 1));
    EXPECT_FALSE(ui::IsSelectionChange(state, 0, 1));
    EXPECT_FALSE(ui::IsSelectionChange(text, 0, 3));
}

}  // namespace
