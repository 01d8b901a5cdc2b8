#include "ui/objects_group.h"

#include "tests/ui/object_list_fixture.h"

namespace {

class ObjectsGroup : public ObjectListTest {
  protected:
    ObjectsGroup() {
        List(AddAll({"a", "b", "c", "d"}));
        Set("outputObjects"_param, TRUE);
    }
    ui::ObjectsGroup Show(const std::vector<int>& rows, bool picking = false) {
        return ui::RefreshObjectsGroup(Block(), picking, rows);
    }
    // Whether rows can be removed, and moved up and down: "r", "u" and "d".
    std::string Enabled(const std::vector<int>& rows, bool picking = false) {
        const ui::ObjectsGroup group = Show(rows, picking);
        std::string enabled;
        if (group.removeEnabled) enabled += 'r';
        if (group.upEnabled) enabled += 'u';
        if (group.downEnabled) enabled += 'd';
        return enabled;
    }
};

TEST_F(ObjectsGroup, WhatIsSelectedInTheSceneCanBeAdded) {
    EXPECT_FALSE(Show({}).addSelectedEnabled);
    Host().selection.Set({&Add("e")});
    EXPECT_TRUE(Show({}).addSelectedEnabled);
    EXPECT_FALSE(Show({}, true).addSelectedEnabled) << "not while objects are picked";
    Set("outputObjects"_param, FALSE);
    EXPECT_TRUE(Show({}).addSelectedEnabled) << "also for output that is switched off";
}

TEST_F(ObjectsGroup, PickingShowsOnItsButton) {
    EXPECT_TRUE(Show({}).addObjectsEnabled);
    EXPECT_FALSE(Show({}).addObjectsChecked);
    EXPECT_FALSE(Show({}, true).addObjectsEnabled);
    EXPECT_TRUE(Show({}, true).addObjectsChecked);
}

TEST_F(ObjectsGroup, SelectedRowsAreRemovedAndMovedWhereAllCanGo) {
    EXPECT_EQ(Enabled({1}), "rud");
    EXPECT_EQ(Enabled({2, 1}), "rud");
    EXPECT_EQ(Enabled({0}), "rd");
    EXPECT_EQ(Enabled({3}), "ru");
    EXPECT_EQ(Enabled({0, 2}), "rd");
    EXPECT_EQ(Enabled({3, 1}), "ru");
    EXPECT_EQ(Enabled({0, 3}), "r");
}

TEST_F(ObjectsGroup, WithoutASelectedRowNothingIsToBeDone) {
    EXPECT_EQ(Enabled({}), "");
}

TEST_F(ObjectsGroup, NothingIsToBeDoneWhileObjectsArePickedOrOutputIsOff) {
    EXPECT_EQ(Enabled({1}, true), "");
    Set("outputObjects"_param, FALSE);
    EXPECT_EQ(Enabled({1}), "");
}

TEST_F(ObjectsGroup, ARowThatIsNotThereCanNotBeMoved) {
    EXPECT_EQ(Enabled({4}), "r");
    EXPECT_EQ(Enabled({-1}), "r");
}

}  // namespace
