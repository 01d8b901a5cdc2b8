#include "effect/object_groups.h"

#include "effect/scene_layer_choice.h"
#include "tests/effect/matte_frame.h"

namespace {

class ObjectsGroup : public MatteFrameTest {
  protected:
    ObjectsGroup() {
        List(AddNode(_M("Table"), 10));
        List(AddNode(_M("Chair"), 11));
        List(AddNode(_M("Lost"), 77));
    }
    void List(host::Node& node) {
        ReferenceTarget* target = &node;
        effect->pblock->Append("objectList"_param, 1, &target);
    }
    void Add() { effect::AddObjectsGroup(builder, FrameOf(image.get())); }
    host::Node& Find(const MSTR& name) { return *Host().scene.FindNode(name); }
};

TEST_F(ObjectsGroup, HasAMatteForEachObjectOfTheList) {
    Set("filterEmptyMattes"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Objects(Table Chair Lost)");
    EXPECT_EQ(InSet(0).unicodeName, u"Table");
    EXPECT_EQ(Rows8(InSet(0).alpha), firstMatte);
    EXPECT_EQ(Rows8(InSet(1).alpha), secondMatte);
    EXPECT_EQ(Rows8(InSet(2).alpha), noMatte);
}

TEST_F(ObjectsGroup, HasItsOwnSettings) {
    SetText("objectsLayerSetName"_param, _M("Things"));
    Set("outputObjectsAs"_param, 4);
    Add();
    EXPECT_EQ(Tree(), "Things(Table Chair)");
    EXPECT_EQ(Rows8(InSet(0).red), firstMatte);
    Set("outputObjectsLayerSet"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Things(Table Chair) Table Chair");
    Set("outputObjectsAs"_param, 0);
    Add();
    EXPECT_EQ(Channels(), "Table | Chair");
}

TEST_F(ObjectsGroup, LeavesOutHiddenObjectsUnlessTheyAreRendered) {
    Find(_M("Table")).SetHidden(true);
    Add();
    EXPECT_EQ(Tree(), "Objects(Chair)");
    Render().hidden = true;
    Add();
    EXPECT_EQ(Tree(), "Objects(Chair Table Chair)");
}

TEST_F(ObjectsGroup, AnEntryWithoutItsObjectHasQuestionMarks) {
    Set("filterEmptyMattes"_param, FALSE);
    Host().scene.Remove(Find(_M("Chair")));
    Add();
    EXPECT_EQ(Tree(), "Objects(Table ??? Lost)");
    EXPECT_EQ(Rows8(InSet(1).alpha), noMatte);
    Set("filterEmptyMattes"_param, TRUE);
    Set("outputObjectsLayerSet"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Objects(Table ??? Lost) Table");
}

TEST_F(ObjectsGroup, AGroupsHeadStandsForItsMembers) {
    host::Node& head = AddNode(_M("Group"), 65535);
    head.SetGroupHead(true);
    Find(_M("Table")).SetParent(&head);
    Find(_M("Table")).SetGroupMember(true);
    host::Node& inner = AddNode(_M("Inner"), 65535, &head);
    inner.SetGroupHead(true);
    inner.SetGroupMember(true);
    host::Node& lamp = AddNode(_M("Lamp"), 12, &inner);
    lamp.SetGroupMember(true);
    // Hangs in the group without being of it.
    Find(_M("Chair")).SetParent(&head);
    List(head);
    Add();
    EXPECT_EQ(Tree(), "Objects(Table Chair Group)");
    std::vector<int> expected = firstMatte;
    expected[5] = 51;
    EXPECT_EQ(Rows8(InSet(2).alpha), expected);
}

TEST_F(ObjectsGroup, AGroupWithoutAVisibleMemberIsLeftOut) {
    host::Node& head = AddNode(_M("Group"), 65535);
    head.SetGroupHead(true);
    AddNode(_M("Member"), 78, &head).SetGroupMember(true);
    // It isn't of the group.
    AddNode(_M("Child"), 12, &head);
    List(head);
    Add();
    EXPECT_EQ(Tree(), "Objects(Table Chair)");
    Set("filterEmptyMattes"_param, FALSE);
    Add();
    EXPECT_EQ(InSet(5).name, "Group");
    EXPECT_EQ(Rows8(InSet(5).alpha), noMatte);
}

TEST_F(ObjectsGroup, AnObjectThatIsntInTheRenderIsNotTheBackground) {
    List(AddNode(_M("Helper"), 65535));
    Add();
    EXPECT_EQ(Tree(), "Objects(Table Chair)");
}

TEST_F(ObjectsGroup, NeedsRenderIDs) {
    UseChannels(allChannels & ~BMM_CHAN_NODE_RENDER_ID);
    Add();
    UseChannels(BMM_CHAN_NODE_RENDER_ID);
    Set("outputObjectsAs"_param, 2);
    Add();
    EXPECT_EQ(Tree(), "");
    Set("outputObjectsAs"_param, 1);
    Add();
    EXPECT_EQ(Tree(), "Objects(Table Chair)");
}

class SceneLayersGroup : public MatteFrameTest {
  protected:
    SceneLayersGroup() {
        host::SceneLayer& furniture = Host().scene.AddLayer(_M("Furniture"));
        AddNode(_M("Table"), 10).SetLayer(&furniture);
        host::SceneLayer& chairs = Host().scene.AddLayer(_M("Chairs"), &furniture);
        AddNode(_M("Chair"), 11).SetLayer(&chairs);
        AddNode(_M("Floor"), 12).SetLayer(&Host().scene.AddLayer(_M("0")));
        AddNode(_M("Lost"), 77).SetLayer(&Host().scene.AddLayer(_M("Void")));
    }
    void Add() { effect::AddSceneLayersGroup(builder, FrameOf(image.get())); }
    host::SceneLayer& Find(const MSTR& name) { return *Host().scene.FindLayer(name); }
    DWORD ChunkID() {
        return static_cast<DWORD>(effect->pblock->GetInt("sceneLayerAppDataChunkId"_param));
    }
};

TEST_F(SceneLayersGroup, HasAMatteForEachLayerWithThoseInsideIt) {
    Set("filterEmptyMattes"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Scene Layers(Default Furniture Chairs Void)");
    EXPECT_EQ(InSet(0).unicodeName, u"Default");
    EXPECT_EQ(Rows8(InSet(0).alpha), thirdMatte);
    std::vector<int> furniture = firstMatte;
    furniture[1] = 255;
    furniture[4] = 255;
    EXPECT_EQ(Rows8(InSet(1).alpha), furniture);
    EXPECT_EQ(Rows8(InSet(2).alpha), secondMatte);
    EXPECT_EQ(Rows8(InSet(3).alpha), noMatte);
}

TEST_F(SceneLayersGroup, LeavesOutWhatHasNoPixels) {
    Add();
    EXPECT_EQ(Tree(), "Scene Layers(Default Furniture Chairs)");
}

TEST_F(SceneLayersGroup, LeavesOutWhatTheUserSwitchedOffForThisEffect) {
    effect::SetSceneLayerOn(&Find(_M("Furniture")), ChunkID(), false);
    effect::SetSceneLayerOn(&Find(_M("Chairs")), ChunkID(), true);
    effect::SetSceneLayerOn(&Find(_M("0")), ChunkID() + 1, false);
    Add();
    EXPECT_EQ(Tree(), "Scene Layers(Default Chairs)") << "each layer has its own choice";
}

TEST_F(SceneLayersGroup, LeavesOutHiddenLayersUnlessTheyAreRendered) {
    Find(_M("Furniture")).SetHidden(true);
    Add();
    EXPECT_EQ(Tree(), "Scene Layers(Default)") << "what is in a hidden layer is hidden";
    Find(_M("Furniture")).SetHidden(false);
    Find(_M("Chairs")).SetHidden(true);
    Set("outputSceneLayersLayerGroup"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Scene Layers(Default) Default Furniture");
    Render().hidden = true;
    Add();
    EXPECT_EQ(Tree(), "Scene Layers(Default) Default Furniture Default Furniture Chairs");
}

TEST_F(SceneLayersGroup, HasItsOwnSettings) {
    SetText("sceneLayersLayerSetName"_param, _M("Layers"));
    Set("outputSceneLayersAs"_param, 3);
    Add();
    EXPECT_EQ(Tree(), "Layers(Default Furniture Chairs)");
    EXPECT_THAT(Rows8(InSet(2).red), testing::ElementsAre(0, 19, 0, 0, 40, 0));
    Set("outputSceneLayersAs"_param, 0);
    Add();
    EXPECT_EQ(Channels(), "Default | Furniture | Chairs");
}

TEST_F(SceneLayersGroup, OfASceneWithoutLayersIsAnEmptySet) {
    Host().scene.Clear();
    Add();
    EXPECT_EQ(Tree(), "Scene Layers()");
}

TEST_F(SceneLayersGroup, NeedsRenderIDs) {
    UseChannels(allChannels & ~BMM_CHAN_NODE_RENDER_ID);
    Add();
    EXPECT_EQ(Tree(), "");
}

class SelectionSetsGroup : public MatteFrameTest {
  protected:
    SelectionSetsGroup() {
        host::Node& table = AddNode(_M("Table"), 10);
        host::Node& floor = AddNode(_M("Floor"), 12);
        Host().scene.AddSelectionSet(_M("Ground"), {&floor});
        Host().scene.AddSelectionSet(_M("Both"), {&table, &floor});
        Host().scene.AddSelectionSet(_M("Lost"), {&AddNode(_M("Lost"), 77)});
        effect->pblock->SetCount("namedSelectionSetsList"_param, 0);
    }
    void SwitchOn(const MSTR& name) {
        const MCHAR* text = name.data();
        effect->pblock->Append("namedSelectionSetsList"_param, 1, &text);
    }
    void Add() { effect::AddSelectionSetsGroup(builder, FrameOf(image.get())); }
};

TEST_F(SelectionSetsGroup, HasAMatteForEachSetThatIsOnInTheHostsOrder) {
    Set("filterEmptyMattes"_param, FALSE);
    for (const MCHAR* name : {_M("Lost"), _M("Both"), _M("Ground"), _M("Gone")})
        SwitchOn(name);
    Add();
    EXPECT_EQ(Tree(), "Selection Sets(Ground Both Lost)");
    EXPECT_EQ(InSet(1).unicodeName, u"Both");
    EXPECT_EQ(Rows8(InSet(0).alpha), thirdMatte);
    std::vector<int> both = firstMatte;
    both[5] = 51;
    EXPECT_EQ(Rows8(InSet(1).alpha), both);
    EXPECT_EQ(Rows8(InSet(2).alpha), noMatte);
}

TEST_F(SelectionSetsGroup, LeavesOutSetsThatAreOffAndThoseWithoutPixels) {
    for (const MCHAR* name : {_M("both"), _M("Lost"), _M("Groun"), _M("Ground")})
        SwitchOn(name);
    Add();
    EXPECT_EQ(Tree(), "Selection Sets(Ground)");
}

TEST_F(SelectionSetsGroup, HasItsOwnSettings) {
    SwitchOn(_M("Ground"));
    SetText("namedSelectionSetsLayerSetName"_param, _M("Sets"));
    Set("outputNamedSelectionSetsAs"_param, 2);
    Add();
    EXPECT_EQ(Tree(), "Sets(Ground)");
    EXPECT_THAT(Rows8(InSet(0).green), testing::ElementsAre(0, 0, 0, 0, 0, 240));
    Set("createNamedSelectionSetsLayerSet"_param, FALSE);
    Add();
    EXPECT_EQ(Tree(), "Sets(Ground) Ground");
    Set("outputNamedSelectionSetsAs"_param, 0);
    Add();
    EXPECT_EQ(Channels(), "Ground");
}

TEST_F(SelectionSetsGroup, NeedsRenderIDs) {
    SwitchOn(_M("Ground"));
    UseChannels(allChannels & ~BMM_CHAN_NODE_RENDER_ID);
    Add();
    EXPECT_EQ(Tree(), "");
}

}  // namespace
