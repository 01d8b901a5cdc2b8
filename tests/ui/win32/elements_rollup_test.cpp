#include "ui/win32/elements_rollup.h"

#include <icolorman.h>
#include <windowsx.h>

#include "effect/sync_render_elements.h"
#include "effect/undo_step.h"
#include "host/win32/accelerators.h"
#include "tests/host/win32/object_counts.h"
#include "tests/ui/win32/list_stage.h"
#include "ui/move_layer.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr MapID elementsMap = 1;
constexpr Class_ID plainElement{0x12345678, 0x9abcdef0};
constexpr UINT_PTR timer = 2343;

class ElementsRollupTest : public ListTest {
  protected:
    // Rows stay in the order in which their elements came.
    ElementsRollupTest() { Set("autoSort"_param, FALSE); }

    static host::RenderElementManager& Elements() { return Host().elements[RS_Production]; }
    static host::RenderElement& Add(const std::string& name, Class_ID id = plainElement) {
        return Elements().Add(id, host::FromUtf8(name));
    }
    void OpenWith(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            Add(name);
        Open();
    }
    HWND List() { return Control(elementsMap, 1043); }
    IParamBlock2& Layer(int row) { return *effect->Layer(0, row)->pblock; }
    void SetOf(int row, ParamID id, int value) { Layer(row).SetValue(id, 0, value); }
    int GetOf(int row, ParamID id) { return Layer(row).GetInt(id); }
    std::vector<std::string> Row(int row) {
        std::vector<std::string> cells;
        cells.reserve(4);
        for (int column = 0; column < 4; ++column)
            cells.push_back(CellOf(List(), row, column));
        return cells;
    }
    std::vector<std::string> Names() { return ColumnOf(List(), 0); }
    // With the mouse, on the row's name.
    void Select(int row) { ClickAt(List(), LabelPoint(List(), row)); }
    std::string Mode() {
        HWND combo = Control(elementsMap, 1045);
        const int item = ComboBox_GetCurSel(combo);
        if (item < 0) return "none";
        MCHAR text[64] = {};
        ComboBox_GetLBText(combo, item, text);
        return host::ToUtf8(text);
    }
};

TEST_F(ElementsRollupTest, SetsUpItsList) {
    Open();
    EXPECT_THAT(ColumnsOf(List()),
                ElementsAre(ShownColumn{"Name", 120}, ShownColumn{"Visible", 42},
                            ShownColumn{"Blending Mode", 86}, ShownColumn{"Misc", 41}));
    EXPECT_EQ(ListView_GetExtendedListViewStyle(List()), 36U);
    EXPECT_TRUE(GetWindowLongW(List(), GWL_STYLE) & LVS_EDITLABELS);
    EXPECT_EQ(ListView_GetCallbackMask(List()), static_cast<UINT>(LVIS_STATEIMAGEMASK));
    IColorManager& colors = *GetColorManager();
    EXPECT_EQ(ListView_GetBkColor(List()), colors.GetColor(7));
    EXPECT_EQ(ListView_GetTextBkColor(List()), colors.GetColor(7));
    EXPECT_EQ(ListView_GetTextColor(List()), colors.GetColor(12));
}

TEST_F(ElementsRollupTest, ShowsARowForEachElementOfTheScene) {
    OpenWith({"Diffuse", "Reflect"});
    EXPECT_THAT(Names(), ElementsAre("Diffuse", "Reflect"));
    EXPECT_THAT(SelectedOf(List()), IsEmpty());
}

TEST_F(ElementsRollupTest, ShowsCellsAsTheyAreAtTheMoment) {
    OpenWith({"Diffuse"});
    const auto flags = [&](int on) {
        for (const ParamID id :
             {"premultiply"_layerParam, "transparency"_layerParam, "mask"_layerParam,
              "groupWithPrevious"_layerParam, "split"_layerParam})
            SetOf(0, id, on);
    };
    flags(FALSE);
    EXPECT_THAT(Row(0), ElementsAre("Diffuse", "On", "Normal", ""));
    flags(TRUE);
    SetOf(0, "blendingMode"_layerParam, 9);
    EXPECT_THAT(Row(0), ElementsAre("Diffuse", "On", "Linear Dodge (Add)", "PTMCS"));
    SetOf(0, "mergeDown"_layerParam, TRUE);
    EXPECT_THAT(Row(0), ElementsAre("Diffuse", "vvv", "Linear Dodge (Add)", "PTMCS"));
    SetOf(0, "visible"_layerParam, FALSE);
    EXPECT_THAT(Row(0), ElementsAre("Diffuse", "Off", "Linear Dodge (Add)", "PTMCS"));
    SetOf(0, "blendingMode"_layerParam, 26);
    EXPECT_EQ(Row(0)[2], "Divide");
    SetOf(0, "outputAs"_layerParam, 1);
    EXPECT_THAT(Row(0), ElementsAre("Diffuse", "- - -", "- - - - - - - - - - -", "P"));
    SetOf(0, "premultiply"_layerParam, FALSE);
    EXPECT_THAT(Row(0), ElementsAre("Diffuse", "- - -", "- - - - - - - - - - -", ""));
}

TEST_F(ElementsRollupTest, LeavesACellEmptyWhoseTextIsTooLongForTheList) {
    OpenWith({std::string(600, 'a')});
    MCHAR text[20] = L"before";
    ListView_GetItemText(List(), 0, 0, text, 20);
    EXPECT_STREQ(text, L"");
}

TEST_F(ElementsRollupTest, SwitchesAnElementWithTheCheckBoxOfItsRow) {
    OpenWith({"A", "B"});
    SetOf(0, "enabled"_layerParam, TRUE);
    SetOf(1, "enabled"_layerParam, TRUE);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
    ClickAt(List(), CheckBoxPoint(List(), 1));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1));
    EXPECT_EQ(GetOf(1, "enabled"_layerParam), FALSE);
    EXPECT_EQ(GetOf(0, "enabled"_layerParam), TRUE);
    ClickAt(List(), CheckBoxPoint(List(), 1));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
}

TEST_F(ElementsRollupTest, ShowsInThePaneWhatACheckBoxOfTheListSwitched) {
    OpenWith({"A"});
    Select(0);
    ASSERT_TRUE(IsChecked(elementsMap, 1048));
    ClickAt(List(), CheckBoxPoint(List(), 0));
    EXPECT_FALSE(IsChecked(elementsMap, 1048));
    ClickAt(List(), CellPoint(List(), 0, 1));
    EXPECT_FALSE(IsChecked(elementsMap, 1058));
}

TEST_F(ElementsRollupTest, SwitchesVisibilityWithAClickInItsColumnAndInNoOther) {
    OpenWith({"A", "B"});
    ClickAt(List(), CellPoint(List(), 1, 1));
    EXPECT_EQ(CellOf(List(), 1, 1), "Off");
    EXPECT_EQ(CellOf(List(), 0, 1), "On");
    EXPECT_EQ(GetOf(1, "visible"_layerParam), FALSE);
    for (const int column : {2, 3})
        ClickAt(List(), CellPoint(List(), 1, column));
    ClickAt(List(), LabelPoint(List(), 1));
    EXPECT_EQ(GetOf(1, "visible"_layerParam), FALSE);
    EXPECT_EQ(GetOf(1, "enabled"_layerParam), TRUE);
}

TEST_F(ElementsRollupTest, TakesADoubleClickAsAClick) {
    OpenWith({"A"});
    DoubleClickAt(List(), CellPoint(List(), 0, 1));
    EXPECT_EQ(GetOf(0, "visible"_layerParam), FALSE);
    DoubleClickAt(List(), CheckBoxPoint(List(), 0));
    EXPECT_EQ(GetOf(0, "enabled"_layerParam), FALSE);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1));
}

TEST_F(ElementsRollupTest, SwitchesNothingBelowItsRows) {
    OpenWith({"A"});
    Select(0);
    ASSERT_EQ(TextOf(elementsMap, 1063), "A");
    ClickAt(List(), EmptyPoint(List()));
    EXPECT_THAT(SelectedOf(List()), IsEmpty());
    EXPECT_EQ(TextOf(elementsMap, 1063), "") << "the pane shows that nothing is selected";
    EXPECT_FALSE(IsEnabled(elementsMap, 1063));
    EXPECT_EQ(GetOf(0, "enabled"_layerParam), TRUE);
    EXPECT_EQ(GetOf(0, "visible"_layerParam), TRUE);
}

TEST_F(ElementsRollupTest, SwitchesTheSelectedElementWithTheSpaceBar) {
    OpenWith({"A", "B"});
    Select(1);
    PressKey(List(), VK_SPACE);
    EXPECT_EQ(GetOf(1, "enabled"_layerParam), FALSE);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1));
    EXPECT_FALSE(IsChecked(elementsMap, 1048));
}

TEST_F(ElementsRollupTest, SwitchesNothingWithTheSpaceBarThatSelects) {
    OpenWith({"A", "B"});
    Select(1);
    WhileDown(VK_CONTROL, [this] { PressKey(List(), VK_SPACE); });
    EXPECT_EQ(GetOf(1, "enabled"_layerParam), TRUE);
}

TEST_F(ElementsRollupTest, EmptiesItsPaneWhenTheSelectionGoes) {
    OpenWith({"A", "B"});
    Select(1);
    RightClick(List(), EmptyPoint(List()).x, EmptyPoint(List()).y);
    ListView_SetItemState(List(), 1, 0, LVIS_SELECTED);
    Tick(elementsMap, timer);
    EXPECT_EQ(TextOf(elementsMap, 1063), "");
    EXPECT_FALSE(IsEnabled(elementsMap, 1048));
}

TEST_F(ElementsRollupTest, AnswersARightClickSoThatNoOtherMenuOpens) {
    OpenWith({"A"});
    NMITEMACTIVATE click{};
    click.hdr = {List(), 1043, static_cast<UINT>(NM_RCLICK)};
    click.ptAction = EmptyPoint(List());
    EXPECT_EQ(SendMessageW(Dialog(elementsMap), WM_NOTIFY, 1043, reinterpret_cast<LPARAM>(&click)),
              1);
}

TEST_F(ElementsRollupTest, TakesTheHostsColoursWhenTheyChange) {
    Open();
    ListView_SetBkColor(List(), RGB(1, 2, 3));
    SendMessageW(Dialog(elementsMap), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ListView_GetBkColor(List()), GetColorManager()->GetColor(7));
}

TEST_F(ElementsRollupTest, FollowsTheArrowKeysInItsPane) {
    OpenWith({"A", "B"});
    Select(0);
    PressKey(List(), VK_DOWN);
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
}

TEST_F(ElementsRollupTest, KeepsDefaultsOfAClassWithItsMenu) {
    OpenWith({"A", "B"});
    EXPECT_THAT(ChooseFromMenu(List(), LabelPoint(List(), 0), -1),
                ElementsAre("1 Save as Default", "2 Reset to Default"));
    SetOf(0, "blendingMode"_layerParam, 3);
    ChooseFromMenu(List(), LabelPoint(List(), 0), 0);
    EXPECT_EQ(GetOf(1, "blendingMode"_layerParam), 0);
    Select(1);
    ChooseFromMenu(List(), LabelPoint(List(), 1), 1);
    EXPECT_EQ(GetOf(1, "blendingMode"_layerParam), 3);
    EXPECT_EQ(CellOf(List(), 1, 2), "Multiply");
    EXPECT_EQ(Mode(), "Multiply") << "the pane shows it too";
}

TEST_F(ElementsRollupTest, OpensTheMenuOfTheSelectedRowByTheKeyboardToo) {
    OpenWith({"A", "B"});
    EXPECT_THAT(ChooseFromMenuKey(List(), 0), IsEmpty()) << "nothing is selected";
    SetOf(0, "blendingMode"_layerParam, 3);
    SetOf(1, "blendingMode"_layerParam, 3);
    Select(1);
    EXPECT_THAT(ChooseFromMenuKey(List(), 1),
                ElementsAre("1 Save as Default", "2 Reset to Default"));
    EXPECT_EQ(GetOf(1, "blendingMode"_layerParam), 0);
    Select(0);
    EXPECT_THAT(ChooseFromShiftF10(List(), 1),
                ElementsAre("1 Save as Default", "2 Reset to Default"));
    EXPECT_EQ(GetOf(0, "blendingMode"_layerParam), 0);
}

TEST_F(ElementsRollupTest, ClosesUnderItsMenu) {
    OpenWith({"A"});
    const auto close = [this] { std::exchange(dialogs, nullptr)->DeleteThis(); };
    EXPECT_EQ(ChooseFromMenu(List(), LabelPoint(List(), 0), 1, close).size(), 2U);
    EXPECT_EQ(dialogs, nullptr);
}

TEST_F(ElementsRollupTest, LeavesAnEffectAloneThatGoesUnderItsMenu) {
    OpenWith({"A"});
    HWND list = List();
    ChooseFromMenu(list, LabelPoint(list, 0), 1, [] { Host().effects.clear(); });
    EXPECT_EQ(RowsOf(list), 1);
}

TEST_F(ElementsRollupTest, ChangesTheLayerWhoseMenuItIsThoughRowsMoveMeanwhile) {
    OpenWith({"A", "B"});
    for (const int row : {0, 1})
        SetOf(row, "blendingMode"_layerParam, 3);
    ChooseFromMenu(List(), LabelPoint(List(), 0), 1, [this] { ui::MoveLayer(*effect, 0, 1); });
    EXPECT_THAT(Names(), ElementsAre("B", "A"));
    EXPECT_EQ(GetOf(0, "blendingMode"_layerParam), 3);
    EXPECT_EQ(GetOf(1, "blendingMode"_layerParam), 0);
}

TEST_F(ElementsRollupTest, LeavesALayerAloneThatStandsForAnotherElementSinceItsMenuCameUp) {
    OpenWith({"A"});
    SetOf(0, "blendingMode"_layerParam, 3);
    ChooseFromMenu(List(), LabelPoint(List(), 0), 1,
                   [this] { Layer(0).SetValue("renderElement"_layerParam, 0, &Add("B")); });
    EXPECT_EQ(CellOf(List(), 0, 0), "B");
    EXPECT_EQ(GetOf(0, "blendingMode"_layerParam), 3);
}

TEST_F(ElementsRollupTest, HasNoMenuBelowItsRows) {
    OpenWith({"A"});
    EXPECT_THAT(ChooseFromMenu(List(), EmptyPoint(List()), 0), IsEmpty());
}

TEST_F(ElementsRollupTest, RenamesAnElementInItsRow) {
    OpenWith({"A", "B"});
    Select(1);
    HWND edit = ListView_EditLabel(List(), 1);
    ASSERT_TRUE(edit);
    EXPECT_FALSE(host::AcceleratorsEnabled()) << "the keys are for the name";
    Type(edit, "Beauty");
    PressKey(edit, VK_RETURN);
    EXPECT_TRUE(host::AcceleratorsEnabled());
    EXPECT_EQ(std::basic_string<MCHAR>(Elements().GetRenderElement(1)->ElementName()), L"Beauty");
    EXPECT_THAT(Names(), ElementsAre("A", "Beauty"));
    EXPECT_EQ(TextOf(elementsMap, 1063), "Beauty");
}

TEST_F(ElementsRollupTest, KeepsANameWhoseEditingIsLeft) {
    OpenWith({"A"});
    Select(0);
    HWND edit = ListView_EditLabel(List(), 0);
    Type(edit, "Other");
    PressKey(edit, VK_ESCAPE);
    EXPECT_THAT(Names(), ElementsAre("A"));
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(ElementsRollupTest, StartsToRenameWithF2) {
    OpenWith({"A", "B"});
    PressKey(List(), VK_F2);
    EXPECT_FALSE(ListView_GetEditControl(List())) << "nothing is selected";
    Select(1);
    SetFocus(List());
    PressKey(List(), VK_F2);
    HWND edit = ListView_GetEditControl(List());
    ASSERT_TRUE(edit);
    Type(edit, "C");
    PressKey(edit, VK_RETURN);
    EXPECT_THAT(Names(), ElementsAre("A", "C"));
}

TEST_F(ElementsRollupTest, EndsTheEditingOfANameWhenItsRowsAreMadeAnew) {
    OpenWith({"A"});
    Select(0);
    HWND edit = ListView_EditLabel(List(), 0);
    Type(edit, "Other");
    Add("B");
    Tick(elementsMap, timer);
    EXPECT_FALSE(ListView_GetEditControl(List()));
    EXPECT_TRUE(host::AcceleratorsEnabled());
    EXPECT_THAT(Names(), ElementsAre("A", "B"));
}

TEST_F(ElementsRollupTest, EndsTheEditingOfANameWhenItCloses) {
    OpenWith({"A"});
    ListView_EditLabel(List(), 0);
    Close();
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

struct PaneBox {
    int control;
    ParamID id;
};
constexpr PaneBox paneBoxes[] = {{1048, "enabled"_layerParam},
                                 {1056, "transparency"_layerParam},
                                 {1057, "mask"_layerParam},
                                 {1058, "visible"_layerParam},
                                 {1059, "groupWithPrevious"_layerParam},
                                 {1060, "colorCorrect"_layerParam},
                                 {1092, "premultiply"_layerParam},
                                 {1159, "split"_layerParam},
                                 {1160, "gammaCorrect"_layerParam}};

TEST_F(ElementsRollupTest, WritesEachCheckBoxOfThePaneIntoTheSelectedLayer) {
    OpenWith({"A", "B"});
    Select(1);
    for (const PaneBox& box : paneBoxes) {
        const int before = GetOf(1, box.id);
        const int other = GetOf(0, box.id);
        EXPECT_EQ(IsChecked(elementsMap, box.control), before != 0) << box.control;
        // Some are disabled in this scene, and the mouse passes these by.
        EnableWindow(Control(elementsMap, box.control), TRUE);
        Press(elementsMap, box.control);
        EXPECT_EQ(GetOf(1, box.id), before ? FALSE : TRUE) << box.control;
        EXPECT_EQ(GetOf(0, box.id), other) << box.control;
        EXPECT_EQ(IsChecked(elementsMap, box.control), before == 0) << box.control;
        EnableWindow(Control(elementsMap, box.control), TRUE);
        Press(elementsMap, box.control);
        EXPECT_EQ(GetOf(1, box.id), before) << box.control;
    }
}

TEST_F(ElementsRollupTest, WritesTheRadiosOfThePaneIntoTheSelectedLayer) {
    OpenWith({"A"});
    Select(0);
    EXPECT_TRUE(IsChecked(elementsMap, 1112));
    EXPECT_FALSE(IsChecked(elementsMap, 1114));
    Press(elementsMap, 1114);
    EXPECT_EQ(GetOf(0, "outputAs"_layerParam), 1);
    EXPECT_FALSE(IsChecked(elementsMap, 1112));
    EXPECT_TRUE(IsChecked(elementsMap, 1114));
    EXPECT_FALSE(IsEnabled(elementsMap, 1045)) << "the pane follows";
    Press(elementsMap, 1112);
    EXPECT_EQ(GetOf(0, "outputAs"_layerParam), 0);
    EXPECT_TRUE(IsEnabled(elementsMap, 1045));
}

TEST_F(ElementsRollupTest, ShowsAnotherLayersValuesWhenAnotherRowIsSelected) {
    OpenWith({"A", "B"});
    for (const PaneBox& box : paneBoxes) {
        SetOf(0, box.id, TRUE);
        SetOf(1, box.id, FALSE);
    }
    SetOf(0, "blendingMode"_layerParam, 7);
    SetOf(1, "outputAs"_layerParam, 1);
    Select(0);
    for (const PaneBox& box : paneBoxes)
        EXPECT_TRUE(IsChecked(elementsMap, box.control)) << box.control;
    EXPECT_TRUE(IsChecked(elementsMap, 1112));
    EXPECT_EQ(Mode(), "Screen");
    EXPECT_EQ(TextOf(elementsMap, 1063), "A");
    Select(1);
    for (const PaneBox& box : paneBoxes)
        EXPECT_FALSE(IsChecked(elementsMap, box.control)) << box.control;
    EXPECT_TRUE(IsChecked(elementsMap, 1114));
    EXPECT_EQ(Mode(), "Normal");
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
}

TEST_F(ElementsRollupTest, ShowsNothingWithoutASelection) {
    OpenWith({"A"});
    for (const PaneBox& box : paneBoxes)
        EXPECT_FALSE(IsChecked(elementsMap, box.control)) << box.control;
    EXPECT_FALSE(IsChecked(elementsMap, 1112));
    EXPECT_FALSE(IsChecked(elementsMap, 1114));
    EXPECT_EQ(Mode(), "none");
    EXPECT_EQ(TextOf(elementsMap, 1063), "");
}

std::vector<std::pair<std::string, int>> ItemsOf(HWND combo) {
    std::vector<std::pair<std::string, int>> items;
    for (int item = 0; item < ComboBox_GetCount(combo); ++item) {
        MCHAR text[64] = {};
        ComboBox_GetLBText(combo, item, text);
        items.emplace_back(host::ToUtf8(text), static_cast<int>(ComboBox_GetItemData(combo, item)));
    }
    return items;
}

TEST_F(ElementsRollupTest, OffersBlendModesInTheOrderOfPaintApplications) {
    Open();
    const std::vector<std::pair<std::string, int>> all{{"Normal", 0},
                                                       {"Dissolve", 1},
                                                       {"Darken", 2},
                                                       {"Multiply", 3},
                                                       {"Color Burn", 4},
                                                       {"Linear Burn", 5},
                                                       {"Darker Color", 23},
                                                       {"Lighten", 6},
                                                       {"Screen", 7},
                                                       {"Color Dodge", 8},
                                                       {"Linear Dodge (Add)", 9},
                                                       {"Lighter Color", 24},
                                                       {"Overlay", 10},
                                                       {"Soft Light", 11},
                                                       {"Hard Light", 12},
                                                       {"Vivid Light", 13},
                                                       {"Linear Light", 14},
                                                       {"Pin Light", 15},
                                                       {"Hard Mix", 22},
                                                       {"Difference", 16},
                                                       {"Exclusion", 17},
                                                       {"Subtract", 25},
                                                       {"Divide", 26},
                                                       {"Hue", 18},
                                                       {"Saturation", 19},
                                                       {"Color", 20},
                                                       {"Luminosity", 21}};
    EXPECT_THAT(ItemsOf(Control(elementsMap, 1045)), ElementsAreArray(all));
    Set("bitDepth"_param, 32);
    const std::vector<std::pair<std::string, int>> at32{{"Normal", 0},
                                                        {"Dissolve", 1},
                                                        {"Darken", 2},
                                                        {"Multiply", 3},
                                                        {"Darker Color", 23},
                                                        {"Lighten", 6},
                                                        {"Linear Dodge (Add)", 9},
                                                        {"Lighter Color", 24},
                                                        {"Difference", 16},
                                                        {"Subtract", 25},
                                                        {"Divide", 26},
                                                        {"Hue", 18},
                                                        {"Saturation", 19},
                                                        {"Color", 20},
                                                        {"Luminosity", 21}};
    EXPECT_THAT(ItemsOf(Control(elementsMap, 1045)), ElementsAreArray(at32));
    Set("bitDepth"_param, 16);
    EXPECT_THAT(ItemsOf(Control(elementsMap, 1045)), ElementsAreArray(all));
}

TEST_F(ElementsRollupTest, WritesTheChosenBlendModeIntoTheSelectedLayer) {
    OpenWith({"A", "B"});
    Select(1);
    Choose(elementsMap, 1045, 6);
    EXPECT_EQ(GetOf(1, "blendingMode"_layerParam), 23);
    EXPECT_EQ(GetOf(0, "blendingMode"_layerParam), 0);
    EXPECT_EQ(CellOf(List(), 1, 2), "Darker Color");
    Choose(elementsMap, 1045, -1);
    EXPECT_EQ(GetOf(1, "blendingMode"_layerParam), 23) << "no item, no change";
}

TEST_F(ElementsRollupTest, ShowsTheModesThatTakeThePlaceOfThoseMissingAt32Bits) {
    OpenWith({"A", "B", "C"});
    SetOf(0, "blendingMode"_layerParam, 7);
    SetOf(1, "blendingMode"_layerParam, 10);
    SetOf(2, "blendingMode"_layerParam, 16);
    Select(0);
    ASSERT_EQ(Mode(), "Screen");
    Set("bitDepth"_param, 32);
    EXPECT_EQ(Mode(), "Linear Dodge (Add)");
    EXPECT_THAT(ColumnOf(List(), 2), ElementsAre("Linear Dodge (Add)", "Normal", "Difference"));
}

TEST_F(ElementsRollupTest, KeepsShowingTheSelectedLayersModeWhenModesAreOfferedAnew) {
    OpenWith({"A"});
    SetOf(0, "blendingMode"_layerParam, 7);
    Select(0);
    ASSERT_EQ(Mode(), "Screen");
    Set("usePS7Extensions"_param, FALSE);
    EXPECT_EQ(Mode(), "Screen");
}

TEST_F(ElementsRollupTest, RenamesTheSelectedElementWithTheEnterKey) {
    OpenWith({"A", "B"});
    Select(1);
    HWND field = Control(elementsMap, 1063);
    Type(field, "Beauty");
    EXPECT_THAT(Names(), ElementsAre("A", "B")) << "not while it is being typed";
    PressKey(GetFocus(), VK_RETURN);
    EXPECT_THAT(Names(), ElementsAre("A", "Beauty"));
    EXPECT_EQ(TextOf(elementsMap, 1063), "Beauty");
}

TEST_F(ElementsRollupTest, RenamesTheSelectedElementWhenItsFieldIsLeft) {
    OpenWith({"A", "B"});
    Select(0);
    Type(Control(elementsMap, 1063), "Beauty");
    EXPECT_FALSE(host::AcceleratorsEnabled());
    SetFocus(Control(elementsMap, 1058));
    EXPECT_THAT(Names(), ElementsAre("Beauty", "B"));
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(ElementsRollupTest, GivesATypedNameToTheRowItWasTypedForWhenAnotherRowIsClicked) {
    OpenWith({"A", "B"});
    Select(0);
    Type(Control(elementsMap, 1063), "Beauty");
    Select(1);
    EXPECT_THAT(Names(), ElementsAre("Beauty", "B"));
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
}

TEST_F(ElementsRollupTest, TakesUpTo255UnitsOfAName) {
    OpenWith({"A"});
    Select(0);
    HWND field = Control(elementsMap, 1063);
    SetFocus(field);
    ICustEdit* edit = GetICustEdit(field);
    edit->SetText(std::basic_string<MCHAR>(300, L'x').c_str());
    ReleaseICustEdit(edit);
    SetFocus(List());
    EXPECT_EQ(std::basic_string<MCHAR>(Elements().GetRenderElement(0)->ElementName()),
              std::basic_string<MCHAR>(255, L'x'));
}

TEST_F(ElementsRollupTest, LeavesALongNameAloneWhoseFieldIsOnlyPassed) {
    const std::string name(300, 'n');
    OpenWith({name});
    Select(0);
    SetFocus(Control(elementsMap, 1063));
    SetFocus(List());
    EXPECT_EQ(std::basic_string<MCHAR>(Elements().GetRenderElement(0)->ElementName()),
              std::basic_string<MCHAR>(300, L'n'));
}

TEST_F(ElementsRollupTest, ShowsWhatALayerIsCalledWhenATypedNameIsNotTaken) {
    OpenWith({"A"});
    Select(0);
    Type(Control(elementsMap, 1063), "Beauty");
    Layer(0).SetValue("renderElement"_layerParam, 0, static_cast<ReferenceTarget*>(nullptr));
    SetFocus(List());
    EXPECT_EQ(TextOf(elementsMap, 1063), "<deleted>");
}

TEST_F(ElementsRollupTest, TakesATypedNameBeforeItsFieldIsGreyed) {
    OpenWith({"A"});
    Select(0);
    Type(Control(elementsMap, 1063), "Beauty");
    Set("createRenderElementLayers"_param, FALSE);
    EXPECT_FALSE(IsEnabled(elementsMap, 1063));
    EXPECT_THAT(Names(), ElementsAre("Beauty"));
}

TEST_F(ElementsRollupTest, LeavesAHalfTypedNameAloneWhenItsRowsAreMadeAnew) {
    OpenWith({"A", "B"});
    Select(1);
    Type(Control(elementsMap, 1063), "Beau");
    Add("C");
    Tick(elementsMap, timer);
    ASSERT_EQ(RowsOf(List()), 3);
    EXPECT_EQ(TextOf(elementsMap, 1063), "Beau");
    PressKey(GetFocus(), VK_RETURN);
    EXPECT_THAT(Names(), ElementsAre("A", "Beau", "C"));
    // Given, and so no longer half typed.
    Elements().GetRenderElement(1)->SetElementName(_M("D"));
    Add("E");
    Tick(elementsMap, timer);
    EXPECT_EQ(TextOf(elementsMap, 1063), "D");
}

TEST_F(ElementsRollupTest, ShowsANameThatChangesElsewhereWhileNobodyTypes) {
    OpenWith({"A"});
    Select(0);
    SetFocus(Control(elementsMap, 1063));
    Elements().GetRenderElement(0)->SetElementName(_M("B"));
    Add("C");
    Tick(elementsMap, timer);
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
    SetFocus(List());
    EXPECT_THAT(Names(), ElementsAre("B", "C"));
}

// Controls of the pane by what enables them.
const std::vector<int> ofOutput{1043, 1091, 1079};
const std::vector<int> ofLayer{1048, 1112, 1114, 1063, 1083, 1092, 1159, 1087};
const std::vector<int> ofLayerOutput{1058, 1056, 1057, 1045, 1084, 1085, 1086, 1059};

class ElementsPaneTest : public ElementsRollupTest {
  protected:
    std::vector<int> Enabled(const std::vector<int>& controls) {
        std::vector<int> enabled;
        for (const int control : controls) {
            if (IsEnabled(elementsMap, control)) enabled.push_back(control);
        }
        return enabled;
    }
};

TEST_F(ElementsPaneTest, EnablesByWhatIsSelected) {
    OpenWith({"A", "B"});
    EXPECT_THAT(Enabled(ofOutput), ElementsAreArray(ofOutput));
    EXPECT_THAT(Enabled(ofLayer), IsEmpty());
    EXPECT_THAT(Enabled(ofLayerOutput), IsEmpty());
    Select(0);
    EXPECT_THAT(Enabled(ofLayer), ElementsAreArray(ofLayer));
    EXPECT_THAT(Enabled(ofLayerOutput), ElementsAreArray(ofLayerOutput));
    SetOf(1, "outputAs"_layerParam, 1);
    Select(1);
    EXPECT_THAT(Enabled(ofLayer), ElementsAreArray(ofLayer));
    EXPECT_THAT(Enabled(ofLayerOutput), IsEmpty());
}

TEST_F(ElementsPaneTest, EnablesNothingWhileNoElementsGoOut) {
    OpenWith({"A", "B"});
    Select(0);
    Press(elementsMap, 1088);
    ASSERT_EQ(Block().GetInt("createRenderElementLayers"_param), FALSE);
    EXPECT_THAT(Enabled(ofOutput), IsEmpty());
    EXPECT_THAT(Enabled(ofLayer), IsEmpty());
    EXPECT_THAT(Enabled(ofLayerOutput), IsEmpty());
    EXPECT_FALSE(IsEnabled(elementsMap, 1068));
    EXPECT_FALSE(IsEnabled(elementsMap, 1160));
    EXPECT_EQ(TextOf(elementsMap, 1063), "A") << "the values stay";
    Host().undo.Undo();
    EXPECT_THAT(Enabled(ofOutput), ElementsAreArray(ofOutput));
    EXPECT_THAT(Enabled(ofLayer), ElementsAreArray(ofLayer));
}

TEST_F(ElementsPaneTest, EnablesTheMaskOfTheSetWithTheSet) {
    Open();
    EXPECT_FALSE(IsEnabled(elementsMap, 1186));
    Press(elementsMap, 1184);
    EXPECT_TRUE(IsEnabled(elementsMap, 1186));
    Press(elementsMap, 1184);
    EXPECT_FALSE(IsEnabled(elementsMap, 1186));
}

TEST_F(ElementsPaneTest, EnablesTheGammaOfALayerThatHasASayInIt) {
    gammaMgr.enable = TRUE;
    Set("gammaCorrectRender"_param, TRUE);
    Set("gammaCorrectConfig"_param, 1);
    Set("bitDepth"_param, 16);
    OpenWith({"A"});
    EXPECT_FALSE(IsEnabled(elementsMap, 1160)) << "nothing is selected";
    Select(0);
    EXPECT_TRUE(IsEnabled(elementsMap, 1160));
    Set("gammaCorrectConfig"_param, 3);
    EXPECT_FALSE(IsEnabled(elementsMap, 1160));
    Set("gammaCorrectConfig"_param, 1);
    Set("gammaCorrectRender"_param, FALSE);
    EXPECT_FALSE(IsEnabled(elementsMap, 1160));
    Set("gammaCorrectRender"_param, TRUE);
    EXPECT_TRUE(IsEnabled(elementsMap, 1160));
    Set("bitDepth"_param, 32);
    EXPECT_FALSE(IsEnabled(elementsMap, 1160));
    Set("bitDepth"_param, 16);
    gammaMgr.enable = FALSE;
    host::Broadcast(NOTIFY_GAMMA_CHANGED, nullptr);
    EXPECT_FALSE(IsEnabled(elementsMap, 1160));
    gammaMgr.enable = TRUE;
    host::Broadcast(NOTIFY_GAMMA_CHANGED, nullptr);
    Press(elementsMap, 1114);
    EXPECT_FALSE(IsEnabled(elementsMap, 1160)) << "a channel has none";
}

TEST_F(ElementsPaneTest, LeavesNoDisabledControlWithTheKeyboard) {
    OpenWith({"A", "B", "C"});
    Select(1);
    SetFocus(Control(elementsMap, 1068));
    Press(elementsMap, 1068);
    ASSERT_FALSE(IsEnabled(elementsMap, 1068)) << "the row is the last";
    HWND focus = GetFocus();
    ASSERT_TRUE(focus);
    EXPECT_NE(focus, Control(elementsMap, 1068));
    EXPECT_TRUE(IsWindowEnabled(focus));
}

TEST_F(ElementsRollupTest, MovesRowsUpAndDown) {
    OpenWith({"A", "B", "C"});
    EXPECT_FALSE(IsEnabled(elementsMap, 1069));
    EXPECT_FALSE(IsEnabled(elementsMap, 1068)) << "nothing is selected";
    Select(0);
    EXPECT_FALSE(IsEnabled(elementsMap, 1069));
    EXPECT_TRUE(IsEnabled(elementsMap, 1068));
    Press(elementsMap, 1068);
    EXPECT_THAT(Names(), ElementsAre("B", "A", "C"));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1));
    EXPECT_EQ(ListView_GetNextItem(List(), -1, LVNI_FOCUSED), 1);
    EXPECT_TRUE(IsEnabled(elementsMap, 1069));
    Press(elementsMap, 1068);
    EXPECT_THAT(Names(), ElementsAre("B", "C", "A"));
    EXPECT_FALSE(IsEnabled(elementsMap, 1068)) << "it is the last";
    EXPECT_EQ(TextOf(elementsMap, 1063), "A");
    Press(elementsMap, 1069);
    Press(elementsMap, 1069);
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C"));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(0));
    EXPECT_FALSE(IsEnabled(elementsMap, 1069));
    EXPECT_EQ(effect->LayerCount(0), 3);
}

TEST_F(ElementsRollupTest, KeepsTheRowInViewThatTheArrowsMove) {
    std::vector<std::string> names;
    names.reserve(40);
    for (int i = 0; i < 40; ++i)
        names.push_back("E" + std::to_string(i));
    OpenWith(names);
    Select(0);
    for (int i = 0; i < 30; ++i)
        Press(elementsMap, 1068);
    EXPECT_THAT(SelectedOf(List()), ElementsAre(30));
    const int top = ListView_GetTopIndex(List());
    EXPECT_LE(top, 30);
    EXPECT_GT(top + ListView_GetCountPerPage(List()), 30);
}

TEST_F(ElementsRollupTest, HidesTheArrowsWhileTheListIsKeptSorted) {
    OpenWith({"A", "B"});
    EXPECT_TRUE(IsShown(elementsMap, 1068));
    EXPECT_TRUE(IsShown(elementsMap, 1069));
    Press(elementsMap, 1079);
    ASSERT_EQ(Block().GetInt("autoSort"_param), TRUE);
    EXPECT_FALSE(IsShown(elementsMap, 1068));
    EXPECT_FALSE(IsShown(elementsMap, 1069));
    EXPECT_TRUE(IsChecked(elementsMap, 1079));
    Press(elementsMap, 1079);
    EXPECT_TRUE(IsShown(elementsMap, 1068));
    EXPECT_TRUE(IsShown(elementsMap, 1069));
}

class ElementsSortTest : public ElementsRollupTest {
  protected:
    // Sorted: A, C, B.
    ElementsSortTest() {
        Add("A", plainElement);
        Open();
        Add("B", plainElement);
        Add("C", plainElement);
        Tick(elementsMap, timer);
        SetOf(1, "outputAs"_layerParam, 1);
    }
    void ClickHeader(int column) {
        HWND header = ListView_GetHeader(List());
        RECT area{};
        Header_GetItemRect(header, column, &area);
        Click(header, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
    }
};

TEST_F(ElementsSortTest, ByAClickOnAnyColumnsHeaderKeepsTheSelectedLayer) {
    for (int column = 0; column < 4; ++column) {
        SCOPED_TRACE(column);
        ASSERT_THAT(Names(), ElementsAre("A", "B", "C"));
        Select(1);
        ClickHeader(column);
        EXPECT_THAT(Names(), ElementsAre("A", "C", "B"));
        EXPECT_THAT(SelectedOf(List()), ElementsAre(2));
        EXPECT_EQ(TextOf(elementsMap, 1063), "B");
        Press(elementsMap, 1069);
    }
}

TEST_F(ElementsSortTest, ByTheButtonKeepsTheSelectedLayer) {
    Select(1);
    Press(elementsMap, 1079);
    EXPECT_THAT(Names(), ElementsAre("A", "C", "B"));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(2));
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
    Host().undo.Undo();
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C"));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1)) << "the selection goes back too";
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
    EXPECT_FALSE(IsChecked(elementsMap, 1079));
}

TEST_F(ElementsSortTest, TakenBackHasARowForAnElementThatCameSince) {
    const int before = RowsOf(List());
    Set("autoSort"_param, FALSE);
    Press(elementsMap, 1079);
    ASSERT_TRUE(Block().GetInt("autoSort"_param));
    Add("Late");
    Tick(elementsMap, timer);
    ASSERT_EQ(RowsOf(List()), before + 1);
    Host().undo.Undo();
    ASSERT_FALSE(Block().GetInt("autoSort"_param));
    Tick(elementsMap, timer);
    EXPECT_EQ(RowsOf(List()), before + 1);
}

TEST_F(ElementsSortTest, WithoutASelectionSelectsNothing) {
    ClickHeader(0);
    EXPECT_THAT(Names(), ElementsAre("A", "C", "B"));
    EXPECT_THAT(SelectedOf(List()), IsEmpty());
}

TEST_F(ElementsSortTest, GivesANameThatIsBeingTypedToItsRow) {
    Select(1);
    HWND edit = ListView_EditLabel(List(), 1);
    Type(edit, "Beauty");
    ClickHeader(0);
    EXPECT_THAT(Names(), ElementsAre("A", "C", "Beauty"));
}

TEST_F(ElementsSortTest, BringsTheSelectedRowIntoView) {
    for (int i = 0; i < 40; ++i)
        Add("more");
    Tick(elementsMap, timer);
    Select(1);
    ClickHeader(0);
    EXPECT_THAT(SelectedOf(List()), ElementsAre(42));
    EXPECT_GT(ListView_GetTopIndex(List()), 20);
}

TEST_F(ElementsRollupTest, FollowsTheScenesElementsWhenItsTimerTicks) {
    OpenWith({"A", "B"});
    Select(1);
    host::RenderElement& added = Add("C");
    EXPECT_EQ(RowsOf(List()), 2) << "not inside the scene's message";
    Tick(elementsMap, timer);
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C"));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1)) << "the layer stays selected";
    EXPECT_EQ(TextOf(elementsMap, 1063), "B");
    added.SetElementName(_M("D"));
    Tick(elementsMap, timer);
    EXPECT_THAT(Names(), ElementsAre("A", "B", "D"));
}

TEST_F(ElementsRollupTest, KeepsTheSelectedLayerInAListThatIsKeptSorted) {
    Set("autoSort"_param, TRUE);
    OpenWith({"A", "B"});
    Select(1);
    Type(Control(elementsMap, 1063), "Beauty");
    PressKey(GetFocus(), VK_RETURN);
    Tick(elementsMap, timer);
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1));
    EXPECT_EQ(TextOf(elementsMap, 1063), "Beauty");
    EXPECT_TRUE(IsEnabled(elementsMap, 1063));
}

TEST_F(ElementsRollupTest, WritesIntoTheLayerThatItsPaneShowsWhateverRowThatIsInNow) {
    OpenWith({"A", "B"});
    Select(0);
    const auto swap = [this] {
        effect::UndoStep step;
        ReferenceTarget* first = effect->Layer(0, 0);
        Block().SetValue("layersProduction"_param, 0, effect->Layer(0, 1), 0);
        Block().SetValue("layersProduction"_param, 0, first, 1);
        step.Accept(_M("Swap"));
    };
    swap();
    ASSERT_THAT(Names(), ElementsAre("B", "A"));
    SetOf(0, "visible"_layerParam, TRUE);
    SetOf(1, "visible"_layerParam, TRUE);
    Press(elementsMap, 1058);
    EXPECT_EQ(GetOf(0, "visible"_layerParam), TRUE);
    EXPECT_EQ(GetOf(1, "visible"_layerParam), FALSE);
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1)) << "the selection went with it";
    swap();
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1));
    Tick(elementsMap, timer);
    EXPECT_THAT(SelectedOf(List()), ElementsAre(0));
    EXPECT_EQ(TextOf(elementsMap, 1063), "A");
}

TEST_F(ElementsRollupTest, HasARowForEachLayerThatCameOrWentElsewhere) {
    OpenWith({"A", "B", "C"});
    Select(2);
    Tick(elementsMap, timer);
    Elements().Remove(Elements().GetRenderElement(1));
    Add("D");
    // As a render does, before the timer ticks.
    effect::SyncRenderElements(*effect, 0);
    Tick(elementsMap, timer);
    EXPECT_THAT(Names(), ElementsAre("A", "C", "D"));
    EXPECT_THAT(SelectedOf(List()), ElementsAre(1));
    EXPECT_EQ(TextOf(elementsMap, 1063), "C");
    Add("E");
    effect::SyncRenderElements(*effect, 0);
    Tick(elementsMap, timer);
    EXPECT_THAT(Names(), ElementsAre("A", "C", "D", "E"));
}

TEST_F(ElementsRollupTest, TicksByItself) {
    OpenWith({"A"});
    Add("B");
    EXPECT_TRUE(PumpUntil([&] { return RowsOf(List()) == 2; }));
}

TEST_F(ElementsRollupTest, DoesNothingAtATickWithoutAChange) {
    OpenWith({"A"});
    const ObjectCounts before = CountObjects();
    Block().Delete("layersProduction"_param, 0, 1);
    Tick(elementsMap, timer);
    EXPECT_EQ(effect->LayerCount(0), 0) << "no change of an element, no synchronisation";
    EXPECT_EQ(CountObjects(), before);
}

TEST_F(ElementsRollupTest, CallsARowDeletedUntilItsElementIsLookedForAgain) {
    OpenWith({"A", "B", "C"});
    Select(1);
    Elements().Remove(Elements().GetRenderElement(1));
    EXPECT_THAT(Names(), ElementsAre("A", "<deleted>", "C"));
    Tick(elementsMap, timer);
    EXPECT_THAT(Names(), ElementsAre("A", "C"));
    EXPECT_THAT(SelectedOf(List()), IsEmpty());
    EXPECT_EQ(TextOf(elementsMap, 1063), "");
}

TEST_F(ElementsRollupTest, EmptiesItsPaneWhenTheSelectedLayerIsDeleted) {
    OpenWith({"A", "B", "C"});
    Select(1);
    ASSERT_TRUE(IsEnabled(elementsMap, 1063));
    UpdateWindow(List());
    ValidateRect(List(), nullptr);
    effect->Layer(0, 1)->DeleteThis();
    EXPECT_THAT(Names(), ElementsAre("A", "C"));
    EXPECT_THAT(SelectedOf(List()), IsEmpty());
    EXPECT_EQ(TextOf(elementsMap, 1063), "");
    EXPECT_FALSE(IsEnabled(elementsMap, 1063));
    EXPECT_TRUE(GetUpdateRect(List(), nullptr, FALSE));
}

TEST_F(ElementsRollupTest, IgnoresClicksOnARowWithoutALayer) {
    OpenWith({"A", "B"});
    Select(1);
    // Its next tick takes the row away.
    KillTimer(Dialog(elementsMap), timer);
    Block().Delete("layersProduction"_param, 1, 1);
    ASSERT_EQ(CellOf(List(), 1, 0), "<deleted>");
    ClickAt(List(), CheckBoxPoint(List(), 1));
    ClickAt(List(), CellPoint(List(), 1, 1));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1));
    EXPECT_THAT(ChooseFromMenu(List(), LabelPoint(List(), 1), 0), IsEmpty());
    PressKey(List(), VK_SPACE);
    for (const int arrow : {1068, 1069})
        Press(elementsMap, arrow);
    HWND edit = ListView_EditLabel(List(), 1);
    Type(edit, "C");
    PressKey(edit, VK_RETURN);
    EXPECT_THAT(Names(), ElementsAre("A", "<deleted>"));
    EXPECT_EQ(GetOf(0, "enabled"_layerParam), TRUE);
    Tick(elementsMap, timer);
    EXPECT_THAT(Names(), ElementsAre("A"));
}

TEST_F(ElementsRollupTest, MakesRowsAnewWithItsHiddenButton) {
    OpenWith({"A"});
    EXPECT_FALSE(IsShown(elementsMap, 1070));
    Block().Delete("layersProduction"_param, 0, 1);
    SendMessageW(Control(elementsMap, 1070), BM_CLICK, 0, 0);
    EXPECT_THAT(Names(), ElementsAre("A"));
    EXPECT_EQ(effect->LayerCount(0), 1);
}

TEST_F(ElementsRollupTest, LeavesNothingBehindWhenItCloses) {
    OpenWith({"A", "B"});
    Close();
    const ObjectCounts before = CountObjects();
    Open();
    Select(1);
    UpdateWindow(List());
    PumpMessages();
    Close();
    EXPECT_EQ(CountObjects(), before);
    // Nobody listens any more.
    Add("C");
    EXPECT_EQ(effect->LayerCount(0), 2);
}

TEST_F(ElementsRollupTest, ShowsAnotherEffectInThePlaceOfTheFirst) {
    OpenWith({"A"});
    Select(0);
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    other->pblock->SetValue("bitDepth"_param, 0, 32);
    Type(Control(elementsMap, 1063), "Beauty");
    dialogs->SetThing(other);
    EXPECT_TRUE(GetUpdateRect(List(), nullptr, FALSE));
    EXPECT_THAT(Names(), ElementsAre("Beauty")) << "what was typed goes to the former one's row";
    EXPECT_THAT(SelectedOf(List()), IsEmpty());
    EXPECT_EQ(TextOf(elementsMap, 1063), "");
    EXPECT_EQ(ComboBox_GetCount(Control(elementsMap, 1045)), 15);
    ClickAt(List(), CheckBoxPoint(List(), 0));
    EXPECT_EQ(other->Layer(0, 0)->pblock->GetInt("enabled"_layerParam), FALSE);
    EXPECT_EQ(GetOf(0, "enabled"_layerParam), TRUE);
}

}  // namespace
