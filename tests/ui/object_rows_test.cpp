#include "ui/object_rows.h"

#include "tests/ui/object_list_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ObjectRows : public ObjectListTest {
  protected:
    ObjectRows() : nodes(AddAll({"a", "b", "c", "d"})) { Host().undo.Clear(); }

    std::vector<int> Move(const std::vector<int>& rows, int delta) {
        return ui::MoveObjects(Block(), rows, delta);
    }
    void Remove(const std::vector<int>& rows) { ui::RemoveObjects(Block(), rows); }

    std::vector<host::Node*> nodes;
};

TEST_F(ObjectRows, SelectedNodesAreAddedInOneStep) {
    Host().selection.Set({nodes[1], nodes[3]});
    ui::AddSelectedObjects(Block());
    EXPECT_THAT(Names(), ElementsAre("b", "d"));
    EXPECT_EQ(UndoName(), "Add Objects");
    Host().undo.Undo();
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(Host().undo.CanUndo());
    Host().undo.Redo();
    EXPECT_THAT(Names(), ElementsAre("b", "d"));
}

TEST_F(ObjectRows, WhatIsListedIsNotAddedAgain) {
    List({nodes[3], nodes[1]});
    Host().selection.Set({nodes[1], nodes[2], nodes[3]});
    ui::AddSelectedObjects(Block());
    EXPECT_THAT(Names(), ElementsAre("d", "b", "c"));
    EXPECT_EQ(UndoName(), "Add Objects");
}

TEST_F(ObjectRows, WithoutANewOneThereIsNoStep) {
    ui::AddSelectedObjects(Block());
    List({nodes[1]});
    Host().selection.Set({nodes[1]});
    ui::AddSelectedObjects(Block());
    EXPECT_THAT(Names(), ElementsAre("b"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(ObjectRows, ListedNodesAreFound) {
    List({nodes[1]});
    EXPECT_TRUE(ui::IsInObjectList(Block(), nodes[1]));
    EXPECT_FALSE(ui::IsInObjectList(Block(), nodes[0]));
}

TEST_F(ObjectRows, RowsAreRemovedInOneStep) {
    List(nodes);
    Remove({0, 2, 3});
    EXPECT_THAT(Names(), ElementsAre("b"));
    EXPECT_EQ(UndoName(), "Remove Objects");
    Host().undo.Undo();
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
}

TEST_F(ObjectRows, RowsComeInAnyOrderAndMayBeGone) {
    List(nodes);
    Remove({3, 9, 1, 1, -1});
    EXPECT_THAT(Names(), ElementsAre("a", "c"));
    Host().undo.Clear();
    Remove({});
    Remove({2});
    EXPECT_THAT(Names(), ElementsAre("a", "c"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(ObjectRows, ARowMovesAndIsSelectedThere) {
    List(nodes);
    EXPECT_THAT(Move({2}, -1), ElementsAre(1));
    EXPECT_THAT(Names(), ElementsAre("a", "c", "b", "d"));
    EXPECT_EQ(UndoName(), "Move Objects");
    EXPECT_THAT(Move({1}, 1), ElementsAre(2));
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
    Host().undo.Undo();
    EXPECT_THAT(Names(), ElementsAre("a", "c", "b", "d"));
}

TEST_F(ObjectRows, NeighboursMoveTogether) {
    List(nodes);
    EXPECT_THAT(Move({2, 1}, -1), ElementsAre(0, 1));
    EXPECT_THAT(Names(), ElementsAre("b", "c", "a", "d"));
    EXPECT_THAT(Move({0, 1}, 1), ElementsAre(1, 2));
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(Move({0, 2}, 1), ElementsAre(1, 3));
    EXPECT_THAT(Names(), ElementsAre("b", "a", "d", "c"));
}

TEST_F(ObjectRows, ARowAtTheEndStays) {
    List(nodes);
    EXPECT_THAT(Move({0}, -1), ElementsAre(0));
    EXPECT_THAT(Move({3}, 1), ElementsAre(3));
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_THAT(Move({0, 1, 3}, -1), ElementsAre(0, 1, 2)) << "and so do those before it";
    EXPECT_THAT(Names(), ElementsAre("a", "b", "d", "c"));
}

TEST_F(ObjectRows, AnObjectThatIsGoneMovesAsAnyOther) {
    List(nodes);
    Host().scene.Remove(*nodes[1]);
    EXPECT_THAT(Move({1}, -1), ElementsAre(0));
    EXPECT_THAT(Names(), ElementsAre("-", "a", "c", "d"));
}

TEST_F(ObjectRows, WithoutRowsNothingMoves) {
    List(nodes);
    EXPECT_THAT(Move({}, 1), IsEmpty());
    EXPECT_THAT(Move({7, -1}, 1), IsEmpty());
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
}

}  // namespace
