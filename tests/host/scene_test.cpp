#include "host/scene.h"

#include <INamedSelectionSetManager.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <maxapi.h>
#include <notify.h>

#include "host/application.h"
#include "host/text.h"
#include "tests/host/sample_block.h"
#include "tests/host/sample_objects.h"

namespace {

using host::Node;
using host::SceneLayer;
using testing::ElementsAre;
using testing::IsEmpty;

class SceneTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
    static host::Scene& Scene() { return host::App().scene; }
    static Node& AddNode(const char* name, Node* parent = nullptr) {
        return Scene().AddNode(host::FromUtf8(name), parent);
    }
    static SceneLayer& AddLayer(const char* name, SceneLayer* parent = nullptr) {
        return Scene().AddLayer(host::FromUtf8(name), parent);
    }
    static std::vector<INode*> Children(INode& node) {
        std::vector<INode*> children;
        for (int index = 0; index < node.NumberOfChildren(); ++index) {
            children.push_back(node.GetChildNode(index));
        }
        return children;
    }
    static std::vector<INode*> NodesOf(SceneLayer& layer) {
        Tab<INode*> tab;
        layer.Nodes(tab);
        std::vector<INode*> nodes;
        for (int index = 0; index < tab.Count(); ++index) {
            nodes.push_back(tab[index]);
        }
        return nodes;
    }
    static std::vector<std::string> LayerNames() {
        std::vector<std::string> names;
        ILayerManager* manager = GetCOREInterface()->GetLayerManager();
        for (int index = 0; index < manager->GetLayerCount(); ++index) {
            names.push_back(host::ToUtf8(manager->GetLayer(index)->GetName().data()));
        }
        return names;
    }
};

TEST_F(SceneTest, NodesHangBelowEachOther) {
    Node& car = AddNode("Car");
    Node& wheel = AddNode("Wheel", &car);
    Node& door = AddNode("Door", &car);
    EXPECT_EQ(MSTR(car.GetName()), MSTR(_M("Car")));
    EXPECT_EQ(car.GetParentNode(), &Scene().Root());
    EXPECT_EQ(wheel.GetParentNode(), &car);
    EXPECT_THAT(Children(car), ElementsAre(&wheel, &door));
    EXPECT_EQ(car.GetChildNode(2), nullptr);
    EXPECT_EQ(car.GetChildNode(-1), nullptr);
    EXPECT_EQ(Scene().NumNodes(), 3);
    EXPECT_EQ(Scene().GetNode(1), &wheel);
    EXPECT_EQ(Scene().GetNode(3), nullptr);
}

TEST_F(SceneTest, ANodeThatMovesHangsElsewhere) {
    Node& car = AddNode("Car");
    Node& wheel = AddNode("Wheel", &car);
    Node& garage = AddNode("Garage");
    EXPECT_TRUE(wheel.SetParent(&garage));
    EXPECT_THAT(Children(car), IsEmpty());
    EXPECT_THAT(Children(garage), ElementsAre(&wheel));
    EXPECT_TRUE(wheel.SetParent(nullptr));
    EXPECT_EQ(wheel.GetParentNode(), &Scene().Root());
    EXPECT_THAT(Children(garage), IsEmpty());
}

TEST_F(SceneTest, ANodeCannotHangBelowItself) {
    Node& car = AddNode("Car");
    Node& wheel = AddNode("Wheel", &car);
    EXPECT_FALSE(car.SetParent(&wheel));
    EXPECT_FALSE(car.SetParent(&car));
    EXPECT_EQ(car.GetParentNode(), &Scene().Root());
    EXPECT_EQ(wheel.GetParentNode(), &car);
    host::Scene other;
    EXPECT_FALSE(car.SetParent(&other.AddNode(_M("Other"))));
}

TEST_F(SceneTest, TheRootHoldsWhatHangsFromNoOtherNode) {
    INode& root = Scene().Root();
    EXPECT_TRUE(root.IsRootNode());
    EXPECT_EQ(root.GetParentNode(), nullptr);
    EXPECT_THAT(Children(root), IsEmpty());
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    Node& c = AddNode("c", &a);
    EXPECT_FALSE(a.IsRootNode());
    EXPECT_EQ(a.GetParentNode(), &root);
    EXPECT_THAT(Children(root), ElementsAre(&a, &b));
    EXPECT_EQ(root.GetChildNode(2), nullptr);
    EXPECT_EQ(root.GetChildNode(-1), nullptr);
    a.SetParent(&b);
    EXPECT_THAT(Children(root), ElementsAre(&b));
    c.SetParent(nullptr);
    a.SetParent(nullptr);
    EXPECT_THAT(Children(root), ElementsAre(&a, &b, &c)) << "in order of creation";
    Scene().Remove(b);
    EXPECT_THAT(Children(root), ElementsAre(&a, &c));
    Node& d = AddNode("d");
    EXPECT_THAT(Children(root), ElementsAre(&a, &c, &d));
}

TEST_F(SceneTest, TheChildrenOfATopNodeThatGoesHangFromTheRoot) {
    Node& head = AddNode("head");
    Node& later = AddNode("later");
    Node& member = AddNode("member", &head);
    Scene().Remove(head);
    EXPECT_EQ(member.GetParentNode(), &Scene().Root());
    EXPECT_THAT(Children(Scene().Root()), ElementsAre(&later, &member));
}

TEST_F(SceneTest, TheRootShowsNothingAndIsNoneOfTheNodes) {
    INode& root = Scene().Root();
    EXPECT_EQ(MSTR(root.GetName()), MSTR(_M("Scene Root")));
    EXPECT_EQ(root.EvalWorldState(0).obj, nullptr);
    EXPECT_EQ(root.GetRenderID(), 65535);
    EXPECT_FALSE(root.IsGroupHead());
    EXPECT_FALSE(root.IsGroupMember());
    EXPECT_FALSE(root.IsNodeHidden());
    EXPECT_EQ(root.GetNodeTM(0).GetRow(0), Point3(1.0F, 0.0F, 0.0F));
    EXPECT_EQ(root.GetNodeTM(0).GetTrans(), Point3());
    BOOL value = 5;
    EXPECT_FALSE(root.GetUserPropBool(_M("a"), value));
    EXPECT_EQ(value, 5);
    Scene().AssignRenderIDs();
    EXPECT_EQ(root.GetRenderID(), 65535);
    EXPECT_EQ(Scene().NumNodes(), 0);
    EXPECT_EQ(Scene().FindNode(_M("Scene Root")), nullptr);
}

TEST_F(SceneTest, TheRootStaysWhileItsSceneIsCleared) {
    INode& root = Scene().Root();
    SampleTarget maker;
    maker.ReplaceReference(0, &root);
    AddNode("a");
    EXPECT_EQ(root.NumberOfChildren(), 1);
    root.DeleteThis();
    Scene().Clear();
    ASSERT_EQ(&Scene().Root(), &root);
    EXPECT_EQ(maker.GetReference(0), &root);
    EXPECT_THAT(Children(root), IsEmpty());
    Node& b = AddNode("b");
    EXPECT_THAT(Children(root), ElementsAre(&b));
    maker.DeleteAllRefsFromMe();
}

TEST_F(SceneTest, TheRootGoesWithItsScene) {
    SampleTarget maker;
    {
        host::Scene scene;
        maker.ReplaceReference(0, &scene.Root());
    }
    EXPECT_EQ(maker.GetReference(0), nullptr);
}

TEST_F(SceneTest, ANodeIsGeometryUntilItIsToldOtherwise) {
    Node& node = AddNode("a");
    ASSERT_TRUE(node.EvalWorldState(0).obj);
    EXPECT_EQ(node.EvalWorldState(0).obj->SuperClassID(), GEOMOBJECT_CLASS_ID);
    constexpr struct {
        host::NodeKind kind;
        SClass_ID superClass;
    } KINDS[] = {{host::NodeKind::Camera, CAMERA_CLASS_ID},
                 {host::NodeKind::Light, LIGHT_CLASS_ID},
                 {host::NodeKind::PointHelper, HELPER_CLASS_ID},
                 {host::NodeKind::Geometry, GEOMOBJECT_CLASS_ID}};
    for (const auto& row : KINDS) {
        node.SetKind(row.kind);
        Object* object = node.EvalWorldState(480).obj;
        ASSERT_TRUE(object);
        EXPECT_EQ(object->SuperClassID(), row.superClass);
        EXPECT_EQ(object->ClassID() == Class_ID(POINTHELP_CLASS_ID, 0),
                  row.kind == host::NodeKind::PointHelper);
    }
}

TEST_F(SceneTest, ANodeStandsWhereItIsPut) {
    Node& car = AddNode("Car");
    Node& wheel = AddNode("Wheel", &car);
    EXPECT_EQ(car.GetNodeTM(0).GetRow(1), Point3(0.0F, 1.0F, 0.0F));
    EXPECT_EQ(car.GetNodeTM(0).GetTrans(), Point3());
    Matrix3 transform;
    transform.SetRow(0, {0.0F, 2.0F, 0.0F});
    transform.SetRow(3, {1.0F, 2.0F, 3.0F});
    car.SetTransform(transform);
    Interval valid(3, 4);
    const Matrix3 read = car.GetNodeTM(480, &valid);
    EXPECT_EQ(read.GetRow(0), Point3(0.0F, 2.0F, 0.0F));
    EXPECT_EQ(read.GetTrans(), Point3(1.0F, 2.0F, 3.0F));
    EXPECT_EQ(valid.Start(), 3);
    EXPECT_EQ(valid.End(), 4);
    EXPECT_EQ(wheel.GetNodeTM(0).GetTrans(), Point3()) << "it is told in the world's space";
}

TEST_F(SceneTest, ANodesUserPropertiesAnswerByName) {
    Node& node = AddNode("Box");
    BOOL value = 5;
    EXPECT_FALSE(node.GetUserPropBool(_M("a"), value));
    EXPECT_EQ(value, 5);
    node.SetUserProperties(_M("a = yes\r\nb = no"));
    EXPECT_TRUE(node.GetUserPropBool(_M("A"), value));
    EXPECT_EQ(value, TRUE);
    EXPECT_TRUE(node.GetUserPropBool(_M("b"), value));
    EXPECT_EQ(value, FALSE);
}

TEST_F(SceneTest, NodesAreFoundByNameTheOldestFirst) {
    Node& first = AddNode("Box");
    Node& second = AddNode("Box");
    EXPECT_EQ(Scene().FindNode(_M("Box")), &first);
    EXPECT_EQ(Scene().FindNode(_M("box")), nullptr);
    first.SetName(_M("Ball"));
    EXPECT_EQ(Scene().FindNode(_M("Box")), &second);
    EXPECT_EQ(Scene().FindNode(_M("Ball")), &first);
    Scene().Remove(second);
    EXPECT_EQ(Scene().FindNode(_M("Box")), nullptr);
}

TEST_F(SceneTest, AChangeOfANodeIsToldToItsDependents) {
    Node& node = AddNode("Box");
    SampleTarget maker;
    maker.ReplaceReference(0, &node);
    node.SetName(_M("Ball"));
    node.SetHidden(true);
    node.SetParent(&AddNode("Car"));
    node.SetKind(host::NodeKind::Light);
    node.SetTransform({});
    EXPECT_EQ(maker.messages, std::vector<Message>(5, Message{&node, REFMSG_CHANGE, PART_ALL}));
    maker.DeleteAllRefsFromMe();
}

TEST_F(SceneTest, ANodeThatGoesIsToldAndReferencesToItAreNull) {
    Node& node = AddNode("Box");
    SampleTarget maker;
    maker.ReplaceReference(0, &node);
    node.DeleteThis();
    EXPECT_THAT(maker.messages, ElementsAre(Message{&node, REFMSG_TARGET_DELETED, PART_ALL}));
    EXPECT_EQ(maker.GetReference(0), nullptr);
    EXPECT_EQ(Scene().NumNodes(), 0);
}

TEST_F(SceneTest, ANodeThatGoesLeavesItsEntryInATableNull) {
    SampleClassDesc desc(nullptr);
    SampleOwner owner(desc);
    Node& first = AddNode("a");
    Node& second = AddNode("b");
    ReferenceTarget* nodes[] = {&first, &second};
    ASSERT_EQ(owner.Block().Append(SAMPLE_NODES, 2, nodes, 0), 0);
    Scene().Remove(first);
    EXPECT_EQ(owner.Block().GetINode(SAMPLE_NODES, 0, 0), nullptr);
    EXPECT_EQ(owner.Block().GetINode(SAMPLE_NODES, 0, 1), &second);
    EXPECT_EQ(owner.Block().Count(SAMPLE_NODES), 2);
}

TEST_F(SceneTest, TheChildrenOfANodeThatGoesHangFromItsParent) {
    Node& root = AddNode("Root");
    Node& middle = AddNode("Middle", &root);
    Node& leaf = AddNode("Leaf", &middle);
    Scene().Remove(middle);
    EXPECT_EQ(leaf.GetParentNode(), &root);
    EXPECT_THAT(Children(root), ElementsAre(&leaf));
    Scene().Remove(root);
    EXPECT_EQ(leaf.GetParentNode(), &Scene().Root());
}

TEST_F(SceneTest, AGroupHasAHeadAndMembers) {
    Node& head = AddNode("Group");
    Node& member = AddNode("Member", &head);
    EXPECT_FALSE(head.IsGroupHead());
    EXPECT_FALSE(member.IsGroupMember());
    head.SetGroupHead(true);
    member.SetGroupMember(true);
    EXPECT_TRUE(head.IsGroupHead());
    EXPECT_TRUE(member.IsGroupMember());
    Scene().Remove(head);
    EXPECT_FALSE(member.IsGroupMember()) << "its group is gone";
}

TEST_F(SceneTest, MembersOfANestedGroupStayInTheOuterOne) {
    Node& outer = AddNode("Outer");
    Node& inner = AddNode("Inner", &outer);
    Node& member = AddNode("Member", &inner);
    outer.SetGroupHead(true);
    inner.SetGroupHead(true);
    inner.SetGroupMember(true);
    member.SetGroupMember(true);
    Scene().Remove(inner);
    EXPECT_TRUE(member.IsGroupMember());
    EXPECT_EQ(member.GetParentNode(), &outer);
}

TEST_F(SceneTest, UserPropertiesAndObjectIdsAreKept) {
    Node& node = AddNode("Box");
    EXPECT_EQ(node.ObjectID(), 0);
    EXPECT_EQ(node.UserProperties(), MSTR());
    node.SetObjectID(7);
    node.SetUserProperties(_M("a = 1\nb = 2"));
    EXPECT_EQ(node.ObjectID(), 7);
    EXPECT_EQ(node.UserProperties(), MSTR(_M("a = 1\nb = 2")));
}

TEST_F(SceneTest, RenderIdsCountFromZeroInOrderOfCreationAndStay) {
    Node& a = AddNode("a");
    Node& b = AddNode("b", &a);
    EXPECT_EQ(a.GetRenderID(), 65535);
    Scene().AssignRenderIDs();
    EXPECT_EQ(a.GetRenderID(), 0);
    EXPECT_EQ(b.GetRenderID(), 1);
    Scene().Remove(a);
    Node& c = AddNode("c");
    Scene().AssignRenderIDs();
    EXPECT_EQ(b.GetRenderID(), 1);
    EXPECT_EQ(c.GetRenderID(), 2) << "the number of a node that is gone isn't given again";
}

TEST_F(SceneTest, ARenderIdThatWasSetIsKeptAndNotGivenToOthers) {
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    Node& c = AddNode("c");
    b.SetRenderID(0);
    c.SetRenderID(1);
    Scene().AssignRenderIDs();
    EXPECT_EQ(b.GetRenderID(), 0);
    EXPECT_EQ(c.GetRenderID(), 1);
    EXPECT_EQ(a.GetRenderID(), 2);
}

TEST_F(SceneTest, ARenderIdThatWasSetStaysThatOfANodeThatIsGone) {
    Node& a = AddNode("a");
    a.SetRenderID(1);
    Scene().Remove(a);
    Node& b = AddNode("b");
    Node& c = AddNode("c");
    Scene().AssignRenderIDs();
    EXPECT_EQ(b.GetRenderID(), 0);
    EXPECT_EQ(c.GetRenderID(), 2) << "an undo may bring the other one back";
}

TEST_F(SceneTest, NodesBeyondTheLastRenderIdAreNotInTheRender) {
    for (int i = 0; i < 65536; ++i) {
        AddNode("n");
    }
    Scene().AssignRenderIDs();
    EXPECT_EQ(Scene().GetNode(65533)->GetRenderID(), 65533);
    EXPECT_EQ(Scene().GetNode(65534)->GetRenderID(), 65535);
    EXPECT_EQ(Scene().GetNode(65535)->GetRenderID(), 65535);
    Scene().AssignRenderIDs();
    EXPECT_EQ(Scene().GetNode(65535)->GetRenderID(), 65535);
}

TEST_F(SceneTest, ASceneStartsWithoutLayersAndNodesInNone) {
    EXPECT_THAT(LayerNames(), IsEmpty());
    EXPECT_EQ(GetCOREInterface()->GetLayerManager()->GetLayer(0), nullptr);
    EXPECT_EQ(AddNode("Box").GetLayer(), nullptr);
}

TEST_F(SceneTest, LayersComeAfterTheirParentsAndByNameAsPeopleCount) {
    SceneLayer& walls = AddLayer("walls");
    AddLayer("Layer10");
    AddLayer("Layer2");
    AddLayer("b", &walls);
    AddLayer("C", &AddLayer("A", &walls));
    EXPECT_THAT(LayerNames(), ElementsAre("Layer2", "Layer10", "walls", "A", "C", "b"));
    walls.SetName(_M("0"));
    EXPECT_THAT(LayerNames(), ElementsAre("0", "A", "C", "b", "Layer2", "Layer10"));
}

TEST_F(SceneTest, ALayerTellsItsPlaceInBothInterfaces) {
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& inner = AddLayer("inner", &outer);
    ILayer& asLayer = inner;
    auto* properties =
        static_cast<ILayerProperties*>(asLayer.GetInterface(LAYERPROPERTIES_INTERFACE));
    ASSERT_TRUE(properties);
    EXPECT_EQ(asLayer.GetInterface(Interface_ID(1, 2)), nullptr);
    EXPECT_EQ(asLayer.GetInterface(ULONG{1}), nullptr);
    EXPECT_EQ(MSTR(properties->getName()), MSTR(_M("inner")));
    EXPECT_EQ(asLayer.GetParentLayer(), &outer);
    EXPECT_EQ(properties->getParent(), static_cast<ILayerProperties*>(&outer));
    EXPECT_EQ(properties->getParent()->getParent(), nullptr);
    EXPECT_EQ(outer.GetNumOfChildLayers(), 1);
    EXPECT_EQ(outer.GetChildLayer(0), &inner);
    EXPECT_EQ(outer.GetChildLayer(1), nullptr);
    EXPECT_EQ(outer.getNumChildren(), 1);
    EXPECT_EQ(outer.getChild(0), properties);
    EXPECT_EQ(outer.getChild(-1), nullptr);
}

TEST_F(SceneTest, ALayerCannotBeInItself) {
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& inner = AddLayer("inner", &outer);
    EXPECT_FALSE(outer.SetParent(&inner));
    EXPECT_FALSE(outer.SetParent(&outer));
    EXPECT_TRUE(inner.SetParent(nullptr));
    EXPECT_TRUE(outer.SetParent(&inner));
    EXPECT_THAT(LayerNames(), ElementsAre("inner", "outer"));
}

TEST_F(SceneTest, ANodeIsInOneLayer) {
    SceneLayer& first = AddLayer("1");
    SceneLayer& second = AddLayer("2");
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    a.SetLayer(&first);
    b.SetLayer(&first);
    EXPECT_THAT(NodesOf(first), ElementsAre(&a, &b));
    a.SetLayer(&second);
    EXPECT_THAT(NodesOf(first), ElementsAre(&b));
    EXPECT_THAT(NodesOf(second), ElementsAre(&a));
    Scene().Remove(b);
    EXPECT_THAT(NodesOf(first), IsEmpty());
    a.SetLayer(nullptr);
    EXPECT_THAT(NodesOf(second), IsEmpty());
}

TEST_F(SceneTest, AHiddenLayerHidesTheLayersAndNodesInIt) {
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& inner = AddLayer("inner", &outer);
    Node& node = AddNode("a");
    node.SetLayer(&inner);
    EXPECT_FALSE(node.IsNodeHidden());
    outer.SetHidden(true);
    EXPECT_TRUE(outer.IsHidden());
    EXPECT_FALSE(inner.IsHidden());
    EXPECT_TRUE(inner.IsHidden(true));
    EXPECT_TRUE(node.IsNodeHidden());
    outer.SetHidden(false);
    node.SetHidden(true);
    EXPECT_FALSE(inner.IsHidden(true));
    EXPECT_TRUE(node.IsNodeHidden());
}

// As deep as a file of the largest size can have them: neither the stack nor patience runs out.
TEST_F(SceneTest, LayersMayLieInEachOtherVeryDeep) {
    SceneLayer& outermost = AddLayer("outermost");
    SceneLayer* layer = &outermost;
    for (int i = 0; i < 1'000'000; ++i)
        layer = &AddLayer("l", layer);
    EXPECT_FALSE(layer->IsHidden(true));
    outermost.SetHidden(true);
    EXPECT_TRUE(layer->IsHidden(true));
    EXPECT_FALSE(layer->IsHidden());
    EXPECT_FALSE(outermost.SetParent(layer)) << "a circle";
    EXPECT_EQ(Scene().Layers().back(), layer);
}

TEST_F(SceneTest, WhatIsInALayerThatGoesIsInItsParent) {
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& middle = AddLayer("middle", &outer);
    SceneLayer& inner = AddLayer("inner", &middle);
    Node& node = AddNode("a");
    node.SetLayer(&middle);
    SampleTarget maker;
    maker.ReplaceReference(0, &middle);
    middle.DeleteThis();
    EXPECT_EQ(maker.GetReference(0), nullptr);
    EXPECT_EQ(node.GetLayer(), &outer);
    EXPECT_EQ(inner.GetParentLayer(), &outer);
    EXPECT_THAT(LayerNames(), ElementsAre("outer", "inner"));
    Scene().Remove(outer);
    EXPECT_EQ(node.GetLayer(), nullptr);
    EXPECT_EQ(inner.GetParentLayer(), nullptr);
    EXPECT_THAT(LayerNames(), ElementsAre("inner"));
}

TEST_F(SceneTest, ALayersDataStaysWhenItChangesItsName) {
    SceneLayer& layer = AddLayer("a");
    layer.AddAppDataChunk(Class_ID(1, 2), 3, 4, 0, nullptr);
    layer.SetName(_M("b"));
    EXPECT_EQ(Scene().FindLayer(_M("a")), nullptr);
    ASSERT_EQ(Scene().FindLayer(_M("b")), &layer);
    EXPECT_TRUE(layer.GetAppDataChunk(Class_ID(1, 2), 3, 4));
}

// Sets, and what is broadcast of them

class SelectionSets : public SceneTest {
  protected:
    void SetUp() override {
        SceneTest::SetUp();
        for (const int code : {NOTIFY_NAMED_SEL_SET_CREATED, NOTIFY_NAMED_SEL_SET_DELETED,
                               NOTIFY_NAMED_SEL_SET_RENAMED, NOTIFY_NAMED_SEL_SET_PRE_MODIFY,
                               NOTIFY_NAMED_SEL_SET_POST_MODIFY}) {
            RegisterNotification(Hear, this, code);
        }
    }
    static void Hear(void* param, NotifyInfo* info) {
        std::string text = std::to_string(info->intcode);
        if (info->intcode == NOTIFY_NAMED_SEL_SET_RENAMED) {
            const auto* change = static_cast<NameChange*>(info->callParam);
            text.append(" ").append(host::ToUtf8(change->oldname));
            text.append(" ").append(host::ToUtf8(change->newname));
        } else if (info->callParam) {
            text.append(" ").append(host::ToUtf8(static_cast<const MCHAR*>(info->callParam)));
        }
        if (info->intcode == NOTIFY_NAMED_SEL_SET_DELETED) {
            EXPECT_FALSE(Scene().RemoveSelectionSet(static_cast<const MCHAR*>(info->callParam)))
                << "it is gone already";
        }
        static_cast<SelectionSets*>(param)->heard.push_back(text);
    }
    static INamedSelectionSetManager& Manager() {
        return *INamedSelectionSetManager::GetInstance();
    }

    std::vector<std::string> heard;
};

TEST_F(SelectionSets, HaveNamesAndNodes) {
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    Scene().AddSelectionSet(_M("two"), {&b, &a});
    Scene().AddSelectionSet(_M("none"), {});
    EXPECT_EQ(Manager().GetNumNamedSelSets(), 2);
    MSTR name;
    EXPECT_TRUE(Manager().GetNamedSelSetName(0, name));
    EXPECT_EQ(name, MSTR(_M("two")));
    EXPECT_EQ(Manager().GetNamedSelSetItemCount(0), 2);
    EXPECT_EQ(Manager().GetNamedSelSetItem(0, 0), &b);
    EXPECT_EQ(Manager().GetNamedSelSetItem(0, 1), &a);
    EXPECT_EQ(Manager().GetNamedSelSetItem(0, 2), nullptr);
    EXPECT_EQ(Manager().GetNamedSelSetItemCount(1), 0);
    EXPECT_FALSE(Manager().GetNamedSelSetName(2, name));
    EXPECT_FALSE(Manager().GetNamedSelSetName(-1, name));
    EXPECT_EQ(name, MSTR(_M("two")));
    EXPECT_EQ(Manager().GetNamedSelSetItemCount(2), 0);
    EXPECT_EQ(Manager().GetNamedSelSetItem(-1, 0), nullptr);
    EXPECT_THAT(heard, ElementsAre("184 two", "184 none"));
}

TEST_F(SelectionSets, LeaveOutNullsAndRepetitions) {
    Node& a = AddNode("a");
    Scene().AddSelectionSet(_M("s"), {&a, nullptr, &a});
    EXPECT_THAT(Scene().SelectionSets()[0].nodes, ElementsAre(&a));
}

TEST_F(SelectionSets, AreDeletedAndCreatedWhenTheyAreEdited) {
    Node& a = AddNode("a");
    Scene().AddSelectionSet(_M("s"), {});
    Scene().AddSelectionSet(_M("t"), {});
    heard.clear();
    Scene().AddSelectionSet(_M("s"), {&a});
    EXPECT_THAT(heard, ElementsAre("202", "185 s", "184 s", "203"));
    EXPECT_THAT(Scene().SelectionSets()[0].nodes, ElementsAre(&a));
    EXPECT_EQ(Manager().GetNumNamedSelSets(), 2);
}

TEST_F(SelectionSets, ChangeTheirNames) {
    Scene().AddSelectionSet(_M("s"), {});
    Scene().AddSelectionSet(_M("t"), {});
    heard.clear();
    EXPECT_TRUE(Scene().RenameSelectionSet(_M("s"), _M("u")));
    EXPECT_FALSE(Scene().RenameSelectionSet(_M("s"), _M("v")));
    EXPECT_FALSE(Scene().RenameSelectionSet(_M("t"), _M("u")));
    EXPECT_THAT(heard, ElementsAre("188 s u"));
    EXPECT_EQ(Scene().SelectionSets()[0].name, MSTR(_M("u")));
}

TEST_F(SelectionSets, GoAway) {
    Scene().AddSelectionSet(_M("s"), {});
    heard.clear();
    EXPECT_TRUE(Scene().RemoveSelectionSet(Scene().SelectionSets()[0].name));
    EXPECT_FALSE(Scene().RemoveSelectionSet(_M("s")));
    EXPECT_THAT(heard, ElementsAre("185 s"));
    EXPECT_EQ(Manager().GetNumNamedSelSets(), 0);
}

TEST_F(SelectionSets, LoseNodesThatGo) {
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    Scene().AddSelectionSet(_M("s"), {&a, &b});
    Scene().Remove(a);
    EXPECT_THAT(Scene().SelectionSets()[0].nodes, ElementsAre(&b));
}

TEST_F(SceneTest, AClearedSceneTellsDependentsAndHasNothingLeft) {
    Node& node = AddNode("a", &AddNode("parent"));
    SceneLayer& layer = AddLayer("l", &AddLayer("outer"));
    node.SetLayer(&layer);
    Scene().AddSelectionSet(_M("s"), {&node});
    SampleTarget maker(2);
    maker.ReplaceReference(0, &node);
    maker.ReplaceReference(1, &layer);
    maker.onMessage = [](ReferenceTarget*, PartID&, RefMessage) {
        EXPECT_EQ(Scene().NumNodes(), 0);
        EXPECT_EQ(Scene().FindNode(_M("a")), nullptr);
        EXPECT_THAT(Scene().Layers(), IsEmpty());
        EXPECT_THAT(Scene().SelectionSets(), IsEmpty());
        return REF_SUCCEED;
    };
    Scene().Clear();
    EXPECT_EQ(maker.messages.size(), 2U);
    EXPECT_EQ(maker.GetReference(0), nullptr);
    EXPECT_EQ(maker.GetReference(1), nullptr);
    Scene().AddNode(_M("new"));
    Scene().AssignRenderIDs();
    EXPECT_EQ(Scene().GetNode(0)->GetRenderID(), 0);
}

}  // namespace
