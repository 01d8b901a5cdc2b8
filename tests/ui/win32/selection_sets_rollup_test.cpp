#include "ui/win32/selection_sets_rollup.h"

#include "tests/ui/win32/list_stage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr MapID selectionSetsMap = 7;

class SelectionSetsRollupTest : public ListTest {
  protected:
    // Sets are on from the start: the effect takes those that come into its list.
    void OpenWith(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            Add(name);
        Open();
        Host().undo.Clear();
    }
    static void Add(const std::string& name) {
        Host().scene.AddSelectionSet(host::FromUtf8(name), {});
    }
    HWND List() { return Control(selectionSetsMap, 1192); }
    std::vector<std::string> Names() { return ColumnOf(List(), 0); }
    std::vector<std::string> Listed() {
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(Block().Count("namedSelectionSetsList"_param)));
        for (int i = 0; i < Block().Count("namedSelectionSetsList"_param); ++i)
            names.push_back(host::ToUtf8(Block().GetStr("namedSelectionSetsList"_param, 0, i)));
        return names;
    }
};

TEST_F(SelectionSetsRollupTest, ShowsTheScenesSets) {
    OpenWith({"chairs", "Lamps", "all"});
    EXPECT_THAT(Names(), ElementsAre("chairs", "Lamps", "all"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2));
}

TEST_F(SelectionSetsRollupTest, ForgetsSetsThatAreGoneWhenItOpens) {
    for (const std::string name : {"chairs", "Lamps"})
        Add(name);
    const MCHAR* gone = _M("gone");
    Block().Append("namedSelectionSetsList"_param, 1, &gone);
    Host().undo.Clear();
    Open();
    EXPECT_THAT(Listed(), ElementsAre("chairs", "Lamps"));
    EXPECT_EQ(UndoName(), "Sync Sel. Sets");
}

TEST_F(SelectionSetsRollupTest, SwitchesASetWithTheCheckBoxOfItsRow) {
    OpenWith({"chairs", "Lamps"});
    ClickAt(List(), CheckBoxPoint(List(), 0));
    EXPECT_THAT(Listed(), ElementsAre("Lamps"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 2));
    EXPECT_EQ(UndoName(), "Parameter Change");
    ClickAt(List(), CheckBoxPoint(List(), 0));
    EXPECT_THAT(Listed(), ElementsAre("Lamps", "chairs"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
    Host().undo.Undo();
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 2));
    Host().undo.Undo();
    EXPECT_THAT(Listed(), ElementsAre("chairs", "Lamps"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
}

TEST_F(SelectionSetsRollupTest, TakesClicksInTheCheckColumnAlone) {
    OpenWith({"chairs"});
    const int y = CheckBoxPoint(List(), 0).y;
    ClickAt(List(), {20, y});
    ClickAt(List(), LabelPoint(List(), 0));
    ClickAt(List(), {5, EmptyPoint(List()).y});
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2));
    EXPECT_FALSE(Host().undo.CanUndo());
    ClickAt(List(), {19, y});
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1));
}

TEST_F(SelectionSetsRollupTest, SwitchesTheSelectedSetWithTheSpaceBar) {
    OpenWith({"chairs", "Lamps"});
    PressKey(List(), VK_SPACE);
    EXPECT_FALSE(Host().undo.CanUndo()) << "nothing is selected";
    ClickAt(List(), LabelPoint(List(), 1));
    PressKey(List(), VK_SPACE);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1));
}

TEST_F(SelectionSetsRollupTest, SwitchesAllSetsWithItsMenu) {
    OpenWith({"chairs", "Lamps", "all"});
    ClickAt(List(), CheckBoxPoint(List(), 1));
    EXPECT_THAT(ChooseFromMenu(List(), LabelPoint(List(), 0), -1),
                ElementsAre("1 Enable output of all selection sets",
                            "2 Disable output of all selection sets"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1, 2)) << "the menu was left";
    ChooseFromMenu(List(), LabelPoint(List(), 0), 1);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 1, 1));
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_EQ(UndoName(), "Disable all layers");
    ChooseFromMenu(List(), LabelPoint(List(), 2), 0);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2));
    EXPECT_EQ(UndoName(), "Enable all layers");
    Host().undo.Undo();
    Host().undo.Undo();
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1, 2));
}

TEST_F(SelectionSetsRollupTest, KnowsOfChangesWhileItWasClosed) {
    OpenWith({"chairs", "Lamps"});
    ASSERT_THAT(ChecksOf(List()), ElementsAre(2, 2));
    Close();
    Host().scene.RenameSelectionSet(_M("chairs"), _M("seats"));
    Open();
    EXPECT_THAT(Names(), ElementsAre("seats", "Lamps"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
}

TEST_F(SelectionSetsRollupTest, FollowsTheScenesSets) {
    OpenWith({"chairs", "Lamps"});
    Add("walls");
    EXPECT_THAT(Names(), ElementsAre("chairs", "Lamps", "walls"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2, 2)) << "a new set is on";
    ClickAt(List(), CheckBoxPoint(List(), 1));
    Host().scene.RenameSelectionSet(_M("chairs"), _M("seats"));
    EXPECT_THAT(Names(), ElementsAre("seats", "Lamps", "walls"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 1, 2)) << "with their choices";
    Host().scene.RemoveSelectionSet(_M("seats"));
    EXPECT_THAT(Names(), ElementsAre("Lamps", "walls"));
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 2));
    EXPECT_THAT(Listed(), ElementsAre("walls"));
}

TEST_F(SelectionSetsRollupTest, KeepsASetOffThatIsEdited) {
    OpenWith({"chairs", "Lamps"});
    ClickAt(List(), CheckBoxPoint(List(), 0));
    Host().scene.AddSelectionSet(_M("chairs"), {&Host().scene.AddNode(_M("chair"))});
    ASSERT_EQ(Host().scene.SelectionSets().size(), 2U);
    const std::vector<std::string> names = Names();
    const std::vector<int> checks = ChecksOf(List());
    ASSERT_EQ(names.size(), 2U);
    for (std::size_t row = 0; row < 2; ++row)
        EXPECT_EQ(checks[row], names[row] == "chairs" ? 1 : 2) << names[row];
}

TEST_F(SelectionSetsRollupTest, DrawsItsCheckBoxesAsTheListIsChangedElsewhere) {
    OpenWith({"chairs", "Lamps"});
    ASSERT_THAT(ChecksOf(List()), ElementsAre(2, 2));
    const MCHAR* name = _M("Lamps");
    Block().SetValue("namedSelectionSetsList"_param, 0, name, 0);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(1, 2));
}

TEST_F(SelectionSetsRollupTest, MakesItsRowsAnewWithItsHiddenButton) {
    OpenWith({"chairs"});
    EXPECT_FALSE(IsShown(selectionSetsMap, 1191));
    ListView_DeleteAllItems(List());
    SendMessageW(Control(selectionSetsMap, 1191), BM_CLICK, 0, 0);
    EXPECT_THAT(Names(), ElementsAre("chairs"));
}

TEST_F(SelectionSetsRollupTest, ShowsAnotherEffectsChoice) {
    OpenWith({"chairs", "Lamps"});
    auto* other = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
    Host().effects.emplace_back(other);
    ClickAt(List(), CheckBoxPoint(List(), 0));
    ASSERT_THAT(ChecksOf(List()), ElementsAre(1, 2));
    const MCHAR* gone = _M("gone");
    other->pblock->Append("namedSelectionSetsList"_param, 1, &gone);
    dialogs->SetThing(other);
    EXPECT_THAT(ChecksOf(List()), ElementsAre(2, 2));
    EXPECT_EQ(other->pblock->Count("namedSelectionSetsList"_param), 2);
}

}  // namespace
