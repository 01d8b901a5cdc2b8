#include "ui/selection_set_rows.h"

#include <hold.h>

#include <functional>
#include <string>
#include <vector>

#include "effect/selection_set_list.h"
#include "tests/effect/effect_fixture.h"
#include "tests/plugin/recording_panel.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SelectionSetRowsTest : public EffectTest {
  protected:
    // Of an effect that meets them one by one, so that all are on.
    static void Add(const MSTR& name) { Host().scene.AddSelectionSet(name, {}); }
    std::vector<std::string> Listed() {
        std::vector<std::string> names;
        for (int i = 0; i < effect->pblock->Count("namedSelectionSetsList"_param); ++i) {
            names.push_back(
                host::ToUtf8(MSTR(effect->pblock->GetStr("namedSelectionSetsList"_param, 0, i))));
        }
        return names;
    }
    void List(std::initializer_list<const MCHAR*> names) {
        effect->pblock->SetCount("namedSelectionSetsList"_param, 0);
        for (const MCHAR* name : names)
            effect->pblock->Append("namedSelectionSetsList"_param, 1, &name);
        rows.ListChanged();
    }
    std::vector<int> Images() {
        std::vector<int> images;
        for (int row = 0; row < rows.Count(); ++row)
            images.push_back(rows.CheckImage(*effect, row));
        return images;
    }
    std::string Text(int row) { return host::ToUtf8(rows.Text(row)); }
    bool Click(int row) { return rows.Click(*effect, row, 0, 5); }
    int Choose(int item) {
        int redraws = 0;
        rows.ChooseMenu(*effect, item, [&] { ++redraws; });
        return redraws;
    }

    ui::SelectionSetRows rows;
};

TEST_F(SelectionSetRowsTest, AreTheScenesSetsInTheirOrder) {
    Add(_M("b"));
    Add(_M("a"));
    ASSERT_EQ(rows.Count(), 2);
    EXPECT_EQ(Text(0), "b");
    EXPECT_EQ(Text(1), "a");
    EXPECT_EQ(Text(2), "");
    EXPECT_EQ(Text(-1), "");
    EXPECT_THAT(Images(), ElementsAre(2, 2)) << "sets that come are on";
}

TEST_F(SelectionSetRowsTest, AreCheckedByTheirWholeNameAndCase) {
    for (const MCHAR* name : {_M("Wall"), _M("wall"), _M("Wal"), _M("Walls")})
        Add(name);
    List({_M("Wall"), _M("nowhere")});
    EXPECT_THAT(Images(), ElementsAre(2, 1, 1, 1));
    EXPECT_EQ(rows.CheckImage(*effect, 4), 1);
    EXPECT_EQ(rows.CheckImage(*effect, -1), 1);
}

TEST_F(SelectionSetRowsTest, AreSwitchedByAClickWhichCanBeUndone) {
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c")})
        Add(name);
    Host().undo.Clear();
    EXPECT_TRUE(Click(1));
    EXPECT_THAT(Listed(), ElementsAre("a", "c"));
    EXPECT_THAT(Images(), ElementsAre(2, 1, 2));
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Parameter Change")));
    EXPECT_TRUE(Click(1));
    EXPECT_THAT(Listed(), ElementsAre("a", "c", "b"));
    EXPECT_THAT(Images(), ElementsAre(2, 2, 2));
    Host().undo.Undo();
    rows.ListChanged();
    EXPECT_THAT(Images(), ElementsAre(2, 1, 2));
    Host().undo.Undo();
    EXPECT_THAT(Listed(), ElementsAre("a", "b", "c"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SelectionSetRowsTest, AreSwitchedInTheCheckColumnAlone) {
    Add(_M("a"));
    Host().undo.Clear();
    EXPECT_FALSE(rows.Click(*effect, 0, 0, 20));
    EXPECT_FALSE(rows.Click(*effect, 0, 0, -1));
    EXPECT_FALSE(rows.Click(*effect, 0, 1, 5));
    EXPECT_FALSE(rows.Click(*effect, 0, -1, 5));
    EXPECT_FALSE(rows.Click(*effect, 1, 0, 5));
    EXPECT_FALSE(rows.Click(*effect, -1, 0, 5));
    EXPECT_THAT(Listed(), ElementsAre("a"));
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_TRUE(rows.Click(*effect, 0, 0, 0));
    EXPECT_TRUE(rows.Click(*effect, 0, 0, 19));
}

TEST_F(SelectionSetRowsTest, ThatAreListedTwiceAreOffAfterOneClick) {
    Add(_M("a"));
    List({_M("a"), _M("b"), _M("a")});
    EXPECT_TRUE(Click(0));
    EXPECT_THAT(Listed(), ElementsAre("b"));
}

TEST_F(SelectionSetRowsTest, AreSwitchedAllAtOnceWhichCanBeUndone) {
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c"), _M("d")})
        Add(name);
    List({_M("b"), _M("nowhere"), _M("c")});
    Host().undo.Clear();
    EXPECT_GE(Choose(1), 1);
    EXPECT_THAT(Listed(), ElementsAre("b", "nowhere", "c", "a", "d"));
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Enable all layers")));
    EXPECT_THAT(Images(), ElementsAre(2, 2, 2, 2));
    EXPECT_GE(Choose(2), 1);
    EXPECT_THAT(Listed(), ElementsAre("nowhere")) << "of no set of the scene";
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Disable all layers")));
    EXPECT_THAT(Images(), ElementsAre(1, 1, 1, 1));
    Host().undo.Undo();
    EXPECT_THAT(Listed(), ElementsAre("b", "nowhere", "c", "a", "d"));
    Host().undo.Undo();
    EXPECT_THAT(Listed(), ElementsAre("b", "nowhere", "c"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SelectionSetRowsTest, ThatAreAsWantedAreLeftAlone) {
    Add(_M("a"));
    Host().undo.Clear();
    EXPECT_EQ(Choose(1), 0);
    for (const int item : {0, 3, -1})
        EXPECT_EQ(Choose(item), 0);
    EXPECT_THAT(Listed(), ElementsAre("a"));
    List({});
    Host().undo.Clear();
    EXPECT_EQ(Choose(2), 0);
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SelectionSetRowsTest, HaveAMenuOfTwo) {
    const ui::RowMenu menu = rows.Menu();
    EXPECT_EQ(menu[0].id, 1);
    EXPECT_EQ(menu[0].text, MSTR(_M("Enable output of all selection sets")));
    EXPECT_EQ(menu[1].id, 2);
    EXPECT_EQ(menu[1].text, MSTR(_M("Disable output of all selection sets")));
}

TEST_F(SelectionSetRowsTest, AreRightAtEachRedraw) {
    Add(_M("a"));
    Add(_M("b"));
    List({_M("b"), _M("nowhere"), _M("a")});
    EXPECT_THAT(Images(), ElementsAre(2, 2));
    std::vector<std::vector<int>> drawn;
    rows.ChooseMenu(*effect, 2, [&] { drawn.push_back(Images()); });
    EXPECT_THAT(drawn, ElementsAre(ElementsAre(1, 2), ElementsAre(1, 1)));
}

// The panel hears of every change of the list, an undo's too, and says so.
TEST_F(SelectionSetRowsTest, FollowTheList) {
    RecordingPanel panel;
    panel.onRecord = [this](const std::string& what) {
        if (what == "draw selection sets") rows.ListChanged();
    };
    Add(_M("a"));
    Add(_M("b"));
    EXPECT_THAT(Images(), ElementsAre(2, 2));
    theHold.Begin();
    effect->pblock->SetValue("namedSelectionSetsList"_param, 0, _M("c"), 1);
    theHold.Accept(_M("Change"));
    EXPECT_THAT(Images(), ElementsAre(2, 1));
    Host().undo.Undo();
    EXPECT_THAT(Images(), ElementsAre(2, 2));
    Host().scene.RenameSelectionSet(_M("b"), _M("d"));
    EXPECT_THAT(Images(), ElementsAre(2, 2));
    EXPECT_EQ(Text(1), "d");
}

TEST_F(SelectionSetRowsTest, AreAnEffectsOwn) {
    Add(_M("a"));
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    Click(0);
    EXPECT_EQ(rows.CheckImage(*effect, 0), 1);
    EXPECT_EQ(rows.CheckImage(*other, 0), 2);
    EXPECT_EQ(rows.CheckImage(*effect, 0), 1);
}

}  // namespace
