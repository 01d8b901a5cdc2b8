#include "ui/win32/matte_list_rollup.h"

#include <icolorman.h>

#include <ostream>

#include "tests/host/win32/object_counts.h"
#include "tests/ui/win32/list_stage.h"
#include "ui/resource.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The two rollups, which differ in what their rows are.
struct MatteList {
    const char* name;
    MapID map;
    int list;
    const char* title;
    int box;
    int label;
    int combo;
    int folder;
    ParamID outputAs;
    // A row more in the scene, and one less.
    void (*add)(const MSTR& name);
    void (*remove)(const MSTR& name);
};
constexpr MatteList matteLists[] = {
    {"SceneLayers", 5, IDC_SCENE_LAYER_LIST, "Layers", IDC_OUTPUT_SCENE_LAYERS,
     IDC_SCENE_LAYERS_AS_LABEL, IDC_SCENE_LAYERS_AS, IDC_SCENE_LAYERS_GROUP,
     "outputSceneLayersAs"_param, [](const MSTR& name) { host::App().scene.AddLayer(name); },
     [](const MSTR& name) { host::App().scene.Remove(*host::App().scene.FindLayer(name)); }},
    {"SelectionSets", 7, IDC_SELECTION_SET_LIST, "Selection Sets", IDC_OUTPUT_SELECTION_SETS,
     IDC_SELECTION_SETS_AS_LABEL, IDC_SELECTION_SETS_AS, IDC_SELECTION_SETS_GROUP,
     "outputNamedSelectionSetsAs"_param,
     [](const MSTR& name) { host::App().scene.AddSelectionSet(name, {}); },
     [](const MSTR& name) { host::App().scene.RemoveSelectionSet(name); }},
};

void PrintTo(const MatteList& list, std::ostream* out) {
    *out << list.name;
}

class MatteListRollupTest : public ListTest, public testing::WithParamInterface<MatteList> {
  protected:
    // With two rows, which are on.
    void OpenWithRows() {
        GetParam().add(_M("a"));
        GetParam().add(_M("b"));
        Open();
        Host().undo.Clear();
    }
    HWND List() { return Control(GetParam().map, GetParam().list); }
    void CloseUnderAMenu() { std::exchange(dialogs, nullptr)->DeleteThis(); }
};

INSTANTIATE_TEST_SUITE_P(Rollups, MatteListRollupTest, testing::ValuesIn(matteLists),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_P(MatteListRollupTest, SetsUpItsList) {
    Open();
    EXPECT_THAT(ColumnsOf(List()), ElementsAre(ShownColumn{GetParam().title, 265}));
    EXPECT_EQ(ListView_GetExtendedListViewStyle(List()), 4U);
    EXPECT_FALSE(GetWindowLongW(List(), GWL_STYLE) & LVS_EDITLABELS);
    IColorManager& colors = *GetColorManager();
    EXPECT_EQ(ListView_GetBkColor(List()), colors.GetColor(7));
    EXPECT_EQ(ListView_GetTextBkColor(List()), colors.GetColor(7));
    EXPECT_EQ(ListView_GetTextColor(List()), colors.GetColor(12));
}

TEST_P(MatteListRollupTest, OpensItsMenuByTheKeyboardToo) {
    OpenWithRows();
    EXPECT_THAT(ChooseFromMenuKey(List(), 1), IsEmpty()) << "nothing is selected";
    ClickAt(List(), LabelPoint(List(), 1));
    EXPECT_EQ(ChooseFromMenuKey(List(), 1).size(), 2U);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 1));
    EXPECT_EQ(ChooseFromShiftF10(List(), 0).size(), 2U);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
}

TEST_P(MatteListRollupTest, HasNoMenuBelowItsRows) {
    OpenWithRows();
    EXPECT_THAT(ChooseFromMenu(List(), EmptyPoint(List()), 1), IsEmpty());
}

TEST_P(MatteListRollupTest, ClosesUnderItsMenu) {
    OpenWithRows();
    EXPECT_EQ(
        ChooseFromMenu(List(), LabelPoint(List(), 0), 1, [this] { CloseUnderAMenu(); }).size(), 2U);
    EXPECT_EQ(dialogs, nullptr);
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_P(MatteListRollupTest, ClosesUnderAMenuOfTheKeyboard) {
    OpenWithRows();
    ClickAt(List(), LabelPoint(List(), 1));
    HWND list = List();
    ChooseFromMenuThat([list] { SendMessageW(list, WM_KEYDOWN, VK_APPS, 1); }, list, 1,
                       [this] { CloseUnderAMenu(); });
    EXPECT_EQ(dialogs, nullptr);
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_P(MatteListRollupTest, SwitchesNothingOfAnEffectThatGoesUnderItsMenu) {
    OpenWithRows();
    HWND list = List();
    ChooseFromMenu(list, LabelPoint(list, 0), 1, [] { Host().effects.clear(); });
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_P(MatteListRollupTest, SwitchesNothingWithTheSpaceBarThatSelects) {
    OpenWithRows();
    const std::vector<int> before = ChecksOf(List());
    ClickAt(List(), LabelPoint(List(), 0));
    WhileDown(VK_CONTROL, [this] { PressKey(List(), VK_SPACE); });
    EXPECT_EQ(ChecksOf(List()), before);
}

TEST_P(MatteListRollupTest, EnablesItsCombosGroupByItsSwitch) {
    const MatteList& shown = GetParam();
    Open();
    EXPECT_FALSE(IsEnabled(shown.map, shown.label));
    EXPECT_FALSE(IsEnabled(shown.map, shown.combo));
    Press(shown.map, shown.box);
    EXPECT_TRUE(IsEnabled(shown.map, shown.label));
    EXPECT_TRUE(IsEnabled(shown.map, shown.combo));
    EXPECT_TRUE(IsShown(shown.map, shown.folder));
    Choose(shown.map, shown.combo, 0);
    ASSERT_EQ(Block().GetInt(shown.outputAs), 0);
    EXPECT_FALSE(IsShown(shown.map, shown.folder)) << "channels can't be grouped";
    Host().undo.Undo();
    EXPECT_TRUE(IsShown(shown.map, shown.folder));
    Host().undo.Undo();
    EXPECT_FALSE(IsEnabled(shown.map, shown.combo));
}

TEST_P(MatteListRollupTest, LeavesNothingBehindWhenItCloses) {
    OpenWithRows();
    Close();
    const ObjectCounts before = CountObjects();
    Open();
    UpdateWindow(List());
    PumpMessages();
    Close();
    EXPECT_EQ(CountObjects(), before);
    // Nobody listens any more.
    GetParam().add(_M("c"));
    GetParam().remove(_M("a"));
}

}  // namespace
