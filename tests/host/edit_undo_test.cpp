// Edits of the scene and of the render elements, taken back and done again.
#include "host/edit_undo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hold.h>
#include <maxheap.h>
#include <multimatte.h>
#include <notify.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "host/application.h"
#include "host/text.h"
#include "tests/host/sample_block.h"
#include "tests/host/sample_objects.h"

namespace {

using host::Node;
using host::RenderElement;
using host::SceneLayer;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Class_ID DIFFUSE{4, 0};

class EditUndo : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override {
        for (const int code : codes)
            UnRegisterNotification(Hear, this, code);
        owner.reset();
        host::ResetApplication();
    }

    static host::Scene& Scene() { return host::App().scene; }
    static host::RenderElementManager& Elements() { return host::App().elements[RS_Production]; }
    static Node& AddNode(const char* name, Node* parent = nullptr) {
        return Scene().AddNode(host::FromUtf8(name), parent);
    }
    static SceneLayer& AddLayer(const char* name, SceneLayer* parent = nullptr) {
        return Scene().AddLayer(host::FromUtf8(name), parent);
    }
    template <class Edit>
    static void Held(const Edit& edit) {
        theHold.Begin();
        edit();
        theHold.Accept(_M("Edit"));
    }
    static bool Undo() { return host::App().undo.Undo(); }
    static bool Redo() { return host::App().undo.Redo(); }

    static std::string Name(INode* node) {
        return node ? host::ToUtf8(node->GetName()) : std::string("none");
    }
    static std::string Name(const SceneLayer* layer) {
        return layer ? host::ToUtf8(layer->GetName().data()) : std::string("none");
    }
    static std::string Tree(INode& node) {
        std::string text;
        for (int i = 0; i < node.NumberOfChildren(); ++i) {
            INode* child = node.GetChildNode(i);
            text.append(text.empty() ? "" : " ").append(Name(child));
            const std::string below = Tree(*child);
            if (!below.empty()) text.append("(").append(below).append(")");
        }
        return text;
    }
    static std::string Nodes() {
        std::string text;
        for (int i = 0; i < Scene().NumNodes(); ++i)
            text.append(i == 0 ? "" : " ").append(Name(Scene().GetNode(i)));
        return text;
    }
    // Each layer with its parent and nodes.
    static std::vector<std::string> Layers() {
        std::vector<std::string> lines;
        for (SceneLayer* layer : Scene().Layers()) {
            std::string& line = lines.emplace_back(Name(layer));
            line.append(" in ").append(Name(layer->GetParentLayer())).append(":");
            Tab<INode*> nodes;
            layer->Nodes(nodes);
            for (int i = 0; i < nodes.Count(); ++i)
                line.append(" ").append(Name(nodes[i]));
        }
        return lines;
    }
    static std::vector<std::string> Sets() {
        std::vector<std::string> lines;
        for (const host::SelectionSet& set : Scene().SelectionSets()) {
            std::string& line = lines.emplace_back(host::ToUtf8(set.name.data()));
            line.append(":");
            for (Node* node : set.nodes)
                line.append(" ").append(Name(node));
        }
        return lines;
    }
    static std::string ElementNames() {
        std::string text;
        for (int i = 0; i < Elements().NumRenderElements(); ++i) {
            const RenderElement& element = *Elements().GetRenderElement(i);
            text.append(i == 0 ? "" : " ").append(host::ToUtf8(element.ElementName()));
            text.append(element.IsEnabled() ? "" : "-");
        }
        return text;
    }

    void Listen() {
        for (const int code : codes)
            RegisterNotification(Hear, this, code);
    }
    std::vector<std::string> Heard() { return std::exchange(heard, {}); }
    static void Hear(void* param, NotifyInfo* info) {
        std::string text = std::to_string(info->intcode);
        const auto add = [&](const MCHAR* more) { text.append(" ").append(host::ToUtf8(more)); };
        switch (info->intcode) {
            case NOTIFY_LAYER_CREATED:
            case NOTIFY_LAYER_DELETED:
            case NOTIFY_LAYER_PARENT_CHANGED: {
                const auto* layer = static_cast<SceneLayer*>(static_cast<ILayer*>(info->callParam));
                add(layer->GetName().data());
                add(host::FromUtf8(Name(layer->GetParentLayer())).data());
                EXPECT_EQ(layer->IsInScene(), info->intcode != NOTIFY_LAYER_DELETED);
                break;
            }
            case NOTIFY_NAMED_SEL_SET_RENAMED: {
                const auto* change = static_cast<const NameChange*>(info->callParam);
                add(change->oldname);
                add(change->newname);
                break;
            }
            default:
                if (info->callParam) add(static_cast<const MCHAR*>(info->callParam));
                break;
        }
        static_cast<EditUndo*>(param)->heard.push_back(text);
    }

    static constexpr int codes[] = {NOTIFY_LAYER_CREATED,
                                    NOTIFY_LAYER_DELETED,
                                    NOTIFY_LAYER_PARENT_CHANGED,
                                    NOTIFY_NAMED_SEL_SET_CREATED,
                                    NOTIFY_NAMED_SEL_SET_DELETED,
                                    NOTIFY_NAMED_SEL_SET_RENAMED,
                                    NOTIFY_RENDPARAM_CHANGED,
                                    NOTIFY_NAMED_SEL_SET_PRE_MODIFY,
                                    NOTIFY_NAMED_SEL_SET_POST_MODIFY};
    std::vector<std::string> heard;
    SampleClassDesc desc{nullptr};
    std::unique_ptr<SampleOwner> owner = std::make_unique<SampleOwner>(desc);
};

// Nodes

TEST_F(EditUndo, ANodeThatCameGoesAndComesAgainAtItsPlace) {
    Node& car = AddNode("car");
    SceneLayer& layer = AddLayer("layer");
    Node* wheel = nullptr;
    Held([&] {
        wheel = &AddNode("wheel", &car);
        wheel->SetLayer(&layer);
    });
    AddNode("later", &car);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Tree(Scene().Root()), "car(later)");
    EXPECT_THAT(Layers(), ElementsAre("layer in none:"));
    EXPECT_FALSE(wheel->IsInScene());
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Scene().FindNode(_M("wheel")), wheel) << "it is the very same";
    EXPECT_TRUE(wheel->IsInScene());
    EXPECT_EQ(Tree(Scene().Root()), "car(wheel later)");
    EXPECT_EQ(Nodes(), "car wheel later");
    EXPECT_THAT(Layers(), ElementsAre("layer in none: wheel"));
}

TEST_F(EditUndo, ANodeThatWentComesBackWithAllThatItHungFrom) {
    Node& head = AddNode("head");
    Node& first = AddNode("first", &head);
    Node& group = AddNode("group", &head);
    Node& last = AddNode("last", &head);
    Node& a = AddNode("a", &group);
    Node& b = AddNode("b", &group);
    group.SetGroupHead(true);
    a.SetGroupMember(true);
    SceneLayer& layer = AddLayer("layer");
    for (Node* node : {&first, &group, &last})
        node->SetLayer(&layer);
    Scene().AddSelectionSet(_M("s"), {&first, &group, &a});
    Scene().AddSelectionSet(_M("t"), {&group});
    Held([&] { Scene().Remove(group); });
    EXPECT_EQ(Tree(Scene().Root()), "head(first last a b)");
    EXPECT_FALSE(a.IsGroupMember());
    EXPECT_THAT(Sets(), ElementsAre("s: first a", "t:"));

    ASSERT_TRUE(Undo());
    EXPECT_EQ(Tree(Scene().Root()), "head(first group(a b) last)");
    EXPECT_EQ(Nodes(), "head first group last a b");
    EXPECT_TRUE(a.IsGroupMember());
    EXPECT_FALSE(b.IsGroupMember());
    EXPECT_EQ(group.GetLayer(), &layer);
    EXPECT_THAT(Layers(), ElementsAre("layer in none: first group last"));
    EXPECT_THAT(Sets(), ElementsAre("s: first group a", "t: group"));

    ASSERT_TRUE(Redo());
    EXPECT_EQ(Tree(Scene().Root()), "head(first last a b)");
    EXPECT_FALSE(a.IsGroupMember());
    EXPECT_THAT(Layers(), ElementsAre("layer in none: first last"));
    EXPECT_THAT(Sets(), ElementsAre("s: first a", "t:"));
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Tree(Scene().Root()), "head(first group(a b) last)");
    EXPECT_THAT(Sets(), ElementsAre("s: first group a", "t: group"));
}

TEST_F(EditUndo, AWholeTreeThatWentNodeByNodeComesBack) {
    Node& a = AddNode("a");
    Node& b = AddNode("b", &a);
    Node& c = AddNode("c", &b);
    Held([&] {
        for (Node* node : {&a, &b, &c})
            Scene().Remove(*node);
    });
    EXPECT_EQ(Scene().NumNodes(), 0);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Tree(Scene().Root()), "a(b(c))");
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Scene().NumNodes(), 0);
}

TEST_F(EditUndo, WhatANodeIsComesBack) {
    Node& node = AddNode("a");
    const std::uintptr_t geometry = node.EvalWorldState(0).obj->SuperClassID();
    SampleTarget maker;
    maker.ReplaceReference(0, &node);
    Held([&] {
        node.SetName(_M("b"));
        node.SetHidden(true);
        node.SetGroupHead(true);
        node.SetGroupMember(true);
        node.SetKind(host::NodeKind::Light);
        node.SetObjectID(7);
        node.SetUserProperties(_M("x = 1"));
        Matrix3 transform;
        transform.SetRow(3, {1.0F, 2.0F, 3.0F});
        node.SetTransform(transform);
    });
    maker.messages.clear();
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Scene().FindNode(_M("a")), &node);
    EXPECT_EQ(Scene().FindNode(_M("b")), nullptr);
    EXPECT_FALSE(node.IsNodeHidden());
    EXPECT_FALSE(node.IsGroupHead());
    EXPECT_FALSE(node.IsGroupMember());
    EXPECT_EQ(node.EvalWorldState(0).obj->SuperClassID(), geometry);
    EXPECT_EQ(node.ObjectID(), 0);
    EXPECT_EQ(node.UserProperties(), MSTR());
    EXPECT_EQ(node.GetNodeTM(0).GetTrans(), Point3());
    EXPECT_FALSE(node.IsPlaced());
    EXPECT_EQ(maker.messages, std::vector<Message>(4, Message{&node, REFMSG_CHANGE, PART_ALL}))
        << "its name, visibility, kind and place";
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Scene().FindNode(_M("b")), &node);
    EXPECT_TRUE(node.IsNodeHidden());
    EXPECT_TRUE(node.IsGroupHead());
    EXPECT_TRUE(node.IsGroupMember());
    EXPECT_EQ(node.EvalWorldState(0).obj->SuperClassID(), LIGHT_CLASS_ID);
    EXPECT_EQ(node.ObjectID(), 7);
    EXPECT_EQ(node.UserProperties(), MSTR(_M("x = 1")));
    EXPECT_EQ(node.GetNodeTM(0).GetTrans(), Point3(1.0F, 2.0F, 3.0F));
    maker.DeleteAllRefsFromMe();
}

TEST_F(EditUndo, ANodeKeepsTheRenderIdThatItGotMeanwhile) {
    Node& node = AddNode("a");
    Held([&] { node.SetName(_M("b")); });
    Scene().AssignRenderIDs();
    Undo();
    EXPECT_EQ(node.GetRenderID(), 0);
    Held([&] { Scene().Remove(node); });
    Undo();
    EXPECT_EQ(node.GetRenderID(), 0);
}

TEST_F(EditUndo, ANodeGoesBackToItsParentAndLayerBetweenItsOldNeighbours) {
    Node& one = AddNode("one");
    Node& other = AddNode("other");
    for (const char* name : {"a", "b", "c"})
        AddNode(name, &one);
    SceneLayer& first = AddLayer("1");
    SceneLayer& second = AddLayer("2");
    Node& b = *Scene().FindNode(_M("b"));
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c")})
        Scene().FindNode(name)->SetLayer(&first);
    Held([&] {
        b.SetParent(&other);
        b.SetLayer(&second);
        b.SetLayer(nullptr);
    });
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Tree(Scene().Root()), "one(a b c) other");
    EXPECT_THAT(Layers(), ElementsAre("1 in none: a b c", "2 in none:"));
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Tree(Scene().Root()), "one(a c) other(b)");
    EXPECT_THAT(Layers(), ElementsAre("1 in none: a c", "2 in none:"));
}

TEST_F(EditUndo, TheOldestNodeOfANameIsFoundAgain) {
    Node& first = AddNode("Box");
    Node& second = AddNode("Box");
    Held([&] { Scene().Remove(first); });
    EXPECT_EQ(Scene().FindNode(_M("Box")), &second);
    Undo();
    EXPECT_EQ(Scene().FindNode(_M("Box")), &first);
    Held([&] { first.SetName(_M("Ball")); });
    Undo();
    EXPECT_EQ(Scene().FindNode(_M("Box")), &first);
}

TEST_F(EditUndo, CancelTakesEditsBack) {
    Node& a = AddNode("a");
    theHold.Begin();
    AddNode("b", &a);
    a.SetName(_M("c"));
    Scene().Remove(a);
    EXPECT_EQ(Nodes(), "b");
    theHold.Cancel();
    EXPECT_EQ(Tree(Scene().Root()), "a");
    EXPECT_EQ(Nodes(), "a");
    EXPECT_FALSE(Undo());
}

TEST_F(EditUndo, EditsWithoutAHoldLeaveNoStep) {
    Node& a = AddNode("a");
    a.SetName(_M("b"));
    AddLayer("l");
    Scene().AddSelectionSet(_M("s"), {&a});
    Elements().Add(DIFFUSE, _M("e")).SetEnabled(false);
    Scene().Remove(a);
    EXPECT_FALSE(Undo());
}

TEST_F(EditUndo, ASceneThatIsNotTheApplicationsLeavesNoStep) {
    host::Scene other;
    Listen();
    Held([&] {
        Node& a = other.AddNode(_M("a"));
        a.SetName(_M("b"));
        a.SetLayer(&other.AddLayer(_M("l")));
        other.AddSelectionSet(_M("s"), {&a});
        other.Remove(a);
    });
    EXPECT_FALSE(Undo());
    EXPECT_THAT(Heard(), IsEmpty());
}

// What refers to nodes

TEST_F(EditUndo, ANodeComesBackIntoTheParametersThatItLeft) {
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    ReferenceTarget* nodes[] = {&a, &b};
    owner->Block().Append(SAMPLE_NODES, 2, nodes, 0);
    owner->Block().SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(&a), 0);
    owner->Block().SetValue(SAMPLE_OWNERS_TARGET, 0, static_cast<ReferenceTarget*>(&a), 0);
    Held([&] { Scene().Remove(a); });
    EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODES, 0, 0), nullptr);
    EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODE, 0, 0), nullptr);
    EXPECT_EQ(owner->target, nullptr);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(Undo());
        EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODES, 0, 0), &a);
        EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODES, 0, 1), &b);
        EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODE, 0, 0), &a);
        EXPECT_EQ(owner->target, &a);
        ASSERT_TRUE(Redo());
        EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODES, 0, 0), nullptr);
        EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODE, 0, 0), nullptr);
        EXPECT_EQ(owner->target, nullptr);
    }
    Undo();
    owner->changes.clear();
    a.SetName(_M("c"));
    EXPECT_THAT(owner->changes, ElementsAre(ParameterChange{SAMPLE_NODE, -1}))
        << "the references tell again";
}

TEST_F(EditUndo, EntriesThatTheAccessorDeletesWithANodeComeBackWithIt) {
    SampleAccessor accessor;
    SampleClassDesc watched(&accessor);
    auto tables = std::make_unique<SampleOwner>(watched);
    accessor.onTabChanged = [&](tab_changes code, ParamID id, int index) {
        if (code == tab_ref_deleted) tables->Block().Delete(id, index, 1);
    };
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    ReferenceTarget* nodes[] = {&a, &b, &a};
    tables->Block().Append(SAMPLE_TARGETS, 3, nodes, 0);
    Held([&] { Scene().Remove(a); });
    EXPECT_EQ(tables->Block().Count(SAMPLE_TARGETS), 1);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(Undo());
        ASSERT_EQ(tables->Block().Count(SAMPLE_TARGETS), 3);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(tables->Block().GetReferenceTarget(SAMPLE_TARGETS, 0, i), nodes[i]);
        ASSERT_TRUE(Redo());
        ASSERT_EQ(tables->Block().Count(SAMPLE_TARGETS), 1);
        EXPECT_EQ(tables->Block().GetReferenceTarget(SAMPLE_TARGETS, 0, 0), &b);
    }
    tables.reset();
}

TEST_F(EditUndo, ReferencesOfAMakerThatIsNoBlockComeBackToo) {
    Node& node = AddNode("a");
    auto maker = std::make_unique<SampleTarget>(3);
    maker->ReplaceReference(0, &node);
    maker->ReplaceReference(2, &node);
    SampleTarget above;
    above.ReplaceReference(0, maker.get());
    Held([&] { Scene().Remove(node); });
    EXPECT_THAT(maker->messages, ElementsAre(Message{&node, REFMSG_TARGET_DELETED, PART_ALL}));
    EXPECT_EQ(maker->GetReference(0), nullptr);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(maker->GetReference(0), &node);
    EXPECT_EQ(maker->GetReference(1), nullptr);
    EXPECT_EQ(maker->GetReference(2), &node);
    EXPECT_THAT(above.messages, ElementsAre(Message{maker.get(), REFMSG_CHANGE, PART_ALL}));
    ASSERT_TRUE(Redo());
    EXPECT_EQ(maker->GetReference(0), nullptr);
    EXPECT_EQ(maker->GetReference(2), nullptr);
    maker.reset();
    EXPECT_TRUE(Undo()) << "of the node alone";
    EXPECT_TRUE(node.IsInScene());
    EXPECT_TRUE(Redo());
    above.DeleteAllRefsFromMe();
}

TEST_F(EditUndo, ThoseWhoCameToReferMeanwhileAreToldWhenANodeGoesAgain) {
    Node& node = AddNode("a");
    Held([&] { Scene().Remove(node); });
    Undo();
    SampleTarget maker;
    maker.ReplaceReference(0, &node);
    maker.onMessage = [&](ReferenceTarget*, PartID&, RefMessage) {
        EXPECT_EQ(Scene().NumNodes(), 0);
        return REF_SUCCEED;
    };
    ASSERT_TRUE(Redo());
    EXPECT_THAT(maker.messages, ElementsAre(Message{&node, REFMSG_TARGET_DELETED, PART_ALL}));
    EXPECT_EQ(maker.GetReference(0), nullptr);
    maker.messages.clear();
    maker.onMessage = nullptr;

    Node* made = nullptr;
    Held([&] { made = &AddNode("b"); });
    maker.ReplaceReference(0, made);
    ASSERT_TRUE(Undo());
    EXPECT_THAT(maker.messages, ElementsAre(Message{made, REFMSG_TARGET_DELETED, PART_ALL}));
    EXPECT_EQ(maker.GetReference(0), nullptr);
}

TEST_F(EditUndo, DependentsFindANodeBackInTheSceneWhenTheyGetItBack) {
    Node& node = AddNode("a");
    owner->Block().SetValue(SAMPLE_NODE, 0, static_cast<ReferenceTarget*>(&node), 0);
    Held([&] { Scene().Remove(node); });
    std::vector<int> found;
    owner->onChange = [&] { found.push_back(Scene().NumNodes()); };
    Undo();
    EXPECT_THAT(found, ElementsAre(1));
    found.clear();
    Redo();
    EXPECT_THAT(found, ElementsAre(0));
    owner->onChange = nullptr;
}

TEST_F(EditUndo, OlderStepsFindANodeThatCameBack) {
    Node& node = AddNode("a");
    ReferenceTarget* nodes[] = {&node};
    owner->Block().Append(SAMPLE_NODES, 1, nodes, 0);
    Held([&] { owner->Block().Delete(SAMPLE_NODES, 0, 1); });
    Held([&] { node.SetName(_M("b")); });
    Held([&] { Scene().Remove(node); });
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(Undo());
    EXPECT_EQ(owner->Block().GetINode(SAMPLE_NODES, 0, 0), &node);
    EXPECT_EQ(Name(&node), "a");
}

TEST_F(EditUndo, AMatteHasItsNodeAgain) {
    Node& node = AddNode("a");
    RenderElement& element = Elements().Add(DIFFUSE, _M("matte"));
    MultiMatteComponent given;
    INode* nodes[] = {&node};
    given.nodes.Append(1, nodes);
    element.SetMultiMatte(0, given);
    const auto count = [&] {
        MultiMatteComponent described;
        IRenderElement& asElement = element;
        static_cast<IMultiMatte*>(asElement.GetInterface(MULTI_MATTE_INTERFACE))
            ->GetComponent(0, described);
        return described.nodes.Count();
    };
    Held([&] { Scene().Remove(node); });
    EXPECT_EQ(count(), 0);
    Undo();
    EXPECT_EQ(count(), 1);
}

// How long what went lives

TEST_F(EditUndo, ANodeThatWentIsDestroyedWithTheStepThatCouldBringItBack) {
    Node& node = AddNode("a");
    host::TargetReference watch(&node);
    Held([&] { Scene().Remove(node); });
    EXPECT_EQ(watch.Get(), &node);
    host::App().undo.Clear();
    EXPECT_EQ(watch.Get(), nullptr);
}

TEST_F(EditUndo, ANodeWhoseComingWasTakenBackIsDestroyedByTheNextStep) {
    host::TargetReference watch;
    Held([&] { watch.ReplaceReference(0, &AddNode("a")); });
    Undo();
    EXPECT_NE(watch.Get(), nullptr);
    Held([&] { AddNode("b"); });
    EXPECT_EQ(watch.Get(), nullptr);
    EXPECT_EQ(Nodes(), "b");
}

TEST_F(EditUndo, WithoutAHoldANodeThatGoesIsDestroyedAndItsStepsDoNothing) {
    Node& parent = AddNode("parent");
    Node& node = AddNode("a");
    SceneLayer& layer = AddLayer("l");
    host::TargetReference watch(&node);
    Held([&] {
        AddNode("b", &node);
        node.SetName(_M("c"));
        node.SetParent(&parent);
        node.SetLayer(&layer);
        Scene().AddSelectionSet(_M("s"), {&node});
        Scene().AddSelectionSet(_M("s"), {});
    });
    Scene().Remove(node);
    EXPECT_EQ(watch.Get(), nullptr);
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Nodes(), "parent");
    EXPECT_TRUE(Redo());
    EXPECT_EQ(Tree(Scene().Root()), "parent(b)") << "what hung below it went to its parent";
    EXPECT_THAT(Sets(), ElementsAre("s:"));
}

TEST_F(EditUndo, WhatAnUnrecordedEditHungBelowANodeStaysWhenItGoes) {
    Node* node = nullptr;
    SceneLayer* layer = nullptr;
    Held([&] {
        node = &AddNode("a");
        layer = &AddLayer("l");
    });
    Node& child = AddNode("child", node);
    child.SetLayer(layer);
    SceneLayer& inner = AddLayer("inner", layer);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Tree(Scene().Root()), "child");
    EXPECT_EQ(child.GetLayer(), nullptr);
    EXPECT_EQ(inner.GetParentLayer(), nullptr);
    EXPECT_THAT(Layers(), ElementsAre("inner in none:"));
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Nodes(), "a child");
}

TEST_F(EditUndo, AStepMakesNoCircleAfterUnrecordedEdits) {
    Node& a = AddNode("a");
    Node& b = AddNode("b", &a);
    Held([&] { b.SetParent(nullptr); });
    a.SetParent(&b);
    Undo();
    EXPECT_EQ(Tree(Scene().Root()), "b(a)");
}

TEST_F(EditUndo, ANodeOutOfTheSceneTakesPartInNothing) {
    Node& node = AddNode("a");
    SceneLayer& layer = AddLayer("l");
    Held([&] {
        Scene().Remove(node);
        Scene().Remove(layer);
    });
    EXPECT_FALSE(AddNode("b").SetParent(&node));
    EXPECT_FALSE(AddLayer("m").SetParent(&layer));
    node.SetName(_M("c"));
    EXPECT_EQ(Scene().FindNode(_M("c")), nullptr);
    node.DeleteThis();
    layer.DeleteThis();
    Undo();
    EXPECT_EQ(Scene().FindNode(_M("c")), &node);
    EXPECT_TRUE(layer.IsInScene());
}

// Layers

TEST_F(EditUndo, ALayerThatWentComesBackWithItsDataPlaceNodesAndChildren) {
    SceneLayer& outer = AddLayer("outer");
    AddLayer("z", &outer);
    SceneLayer& middle = AddLayer("middle", &outer);
    SceneLayer& inner = AddLayer("inner", &middle);
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    Node& c = AddNode("c");
    for (Node* node : {&b, &a})
        node->SetLayer(&middle);
    c.SetLayer(&outer);
    void* data = MAX_malloc(4);
    std::memcpy(data, "\1\2\3\4", 4);
    middle.AddAppDataChunk(Class_ID(1, 2), 3, 4, 4, data);
    middle.SetHidden(true);
    SampleTarget maker;
    maker.ReplaceReference(0, &middle);
    const auto before = Layers();
    ASSERT_THAT(before, ElementsAre("outer in none: c", "middle in outer: b a",
                                    "inner in middle:", "z in outer:"));
    Listen();

    Held([&] { Scene().Remove(middle); });
    EXPECT_THAT(Layers(), ElementsAre("outer in none: c b a", "inner in outer:", "z in outer:"));
    EXPECT_THAT(Heard(), ElementsAre("246 inner outer", "149 middle none"));
    EXPECT_EQ(maker.GetReference(0), nullptr);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Layers(), before);
    EXPECT_THAT(Heard(), ElementsAre("148 middle outer", "246 inner middle"));
    EXPECT_EQ(Scene().FindLayer(_M("middle")), &middle);
    EXPECT_EQ(outer.GetChildLayer(1), &middle);
    EXPECT_TRUE(inner.IsHidden(true));
    EXPECT_EQ(maker.GetReference(0), &middle);
    const AppDataChunk* chunk = middle.GetAppDataChunk(Class_ID(1, 2), 3, 4);
    ASSERT_TRUE(chunk);
    ASSERT_EQ(chunk->length, 4U);
    EXPECT_EQ(std::memcmp(chunk->data, "\1\2\3\4", 4), 0);
    ASSERT_TRUE(Redo());
    EXPECT_THAT(Layers(), ElementsAre("outer in none: c b a", "inner in outer:", "z in outer:"));
    EXPECT_THAT(Heard(), ElementsAre("246 inner outer", "149 middle none"));
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Layers(), before);
    maker.DeleteAllRefsFromMe();
}

TEST_F(EditUndo, ALayerThatCameGoesAndComesAgain) {
    SceneLayer& outer = AddLayer("outer");
    Listen();
    SceneLayer* layer = nullptr;
    Held([&] { layer = &AddLayer("l", &outer); });
    EXPECT_THAT(Heard(), ElementsAre("148 l outer"));
    Undo();
    EXPECT_THAT(Heard(), ElementsAre("149 l none"));
    EXPECT_EQ(outer.GetNumOfChildLayers(), 0);
    Redo();
    EXPECT_THAT(Heard(), ElementsAre("148 l outer"));
    EXPECT_EQ(outer.GetChildLayer(0), layer);
}

TEST_F(EditUndo, ALayersNameVisibilityAndParentComeBack) {
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& layer = AddLayer("a", &outer);
    Listen();
    Held([&] {
        layer.SetName(_M("b"));
        layer.SetHidden(true);
        layer.SetParent(nullptr);
    });
    EXPECT_THAT(Heard(), ElementsAre("246 b none"));
    Undo();
    EXPECT_THAT(Heard(), ElementsAre("246 b outer"));
    EXPECT_THAT(Layers(), ElementsAre("outer in none:", "a in outer:"));
    EXPECT_FALSE(layer.IsHidden());
    Redo();
    EXPECT_THAT(Layers(), ElementsAre("b in none:", "outer in none:"));
    EXPECT_TRUE(layer.IsHidden());
}

TEST_F(EditUndo, AMoveToTheSameParentIsNoNews) {
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& layer = AddLayer("a", &outer);
    Listen();
    layer.SetParent(&outer);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_F(EditUndo, WithoutAHoldLayersAreBroadcastAsWell) {
    Listen();
    SceneLayer& outer = AddLayer("outer");
    SceneLayer& layer = AddLayer("a");
    layer.SetParent(&outer);
    Scene().Remove(outer);
    EXPECT_THAT(Heard(), ElementsAre("148 outer none", "148 a none", "246 a outer", "246 a none",
                                     "149 outer none"));
}

TEST_F(EditUndo, DataThatClassesKeepOnALayerIsTakenBack) {
    SceneLayer& layer = AddLayer("l");
    const auto set = [&](char value) {
        void* data = MAX_malloc(1);
        std::memcpy(data, &value, 1);
        layer.AddAppDataChunk(Class_ID(1, 2), 3, 4, 1, data);
    };
    const auto get = [&] {
        const AppDataChunk* chunk = layer.GetAppDataChunk(Class_ID(1, 2), 3, 4);
        return chunk && chunk->length == 1 ? *static_cast<const char*>(chunk->data) : '-';
    };
    Held([&] { set('a'); });
    Held([&] { set('b'); });
    Held([&] { layer.RemoveAppDataChunk(Class_ID(1, 2), 3, 4); });
    std::string seen;
    while (Undo())
        seen.push_back(get());
    while (Redo())
        seen.push_back(get());
    EXPECT_EQ(seen, "ba-ab-");
}

// Selection sets

TEST_F(EditUndo, ASetThatCameGoesAndComesAgain) {
    Node& a = AddNode("a");
    Listen();
    Held([&] { Scene().AddSelectionSet(_M("s"), {&a}); });
    Undo();
    EXPECT_THAT(Sets(), IsEmpty());
    Redo();
    EXPECT_THAT(Sets(), ElementsAre("s: a"));
    EXPECT_THAT(Heard(), ElementsAre("184 s", "185 s", "184 s"));
}

TEST_F(EditUndo, ASetThatWentComesBackAtItsPlace) {
    Node& a = AddNode("a");
    for (const MCHAR* name : {_M("r"), _M("s"), _M("t")})
        Scene().AddSelectionSet(name, {&a});
    Listen();
    Held([&] { Scene().RemoveSelectionSet(_M("s")); });
    Undo();
    EXPECT_THAT(Sets(), ElementsAre("r: a", "s: a", "t: a"));
    Redo();
    EXPECT_THAT(Sets(), ElementsAre("r: a", "t: a"));
    EXPECT_THAT(Heard(), ElementsAre("185 s", "184 s", "185 s"));
}

TEST_F(EditUndo, ASetsNodesComeBack) {
    Node& a = AddNode("a");
    Node& b = AddNode("b");
    Scene().AddSelectionSet(_M("s"), {&a});
    Scene().AddSelectionSet(_M("t"), {});
    Listen();
    Held([&] { Scene().AddSelectionSet(_M("s"), {&b, &a}); });
    EXPECT_THAT(Heard(), ElementsAre("202", "185 s", "184 s", "203"));
    Undo();
    EXPECT_THAT(Sets(), ElementsAre("s: a", "t:"));
    EXPECT_THAT(Heard(), ElementsAre("202", "185 s", "184 s", "203"));
    Redo();
    EXPECT_THAT(Sets(), ElementsAre("s: b a", "t:"));
    EXPECT_THAT(Heard(), ElementsAre("202", "185 s", "184 s", "203"));
}

TEST_F(EditUndo, ASetsNameComesBack) {
    Scene().AddSelectionSet(_M("s"), {});
    Listen();
    Held([&] { Scene().RenameSelectionSet(_M("s"), _M("t")); });
    Undo();
    EXPECT_THAT(Sets(), ElementsAre("s:"));
    Redo();
    EXPECT_THAT(Sets(), ElementsAre("t:"));
    EXPECT_THAT(Heard(), ElementsAre("188 s t", "188 t s", "188 s t"));
}

TEST_F(EditUndo, WhatAListenerRecordedIsRestoredAfterItHeardOfTheUndo) {
    const MCHAR* texts[] = {_M("s")};
    owner->Block().Append(SAMPLE_STRINGS, 1, texts, 0);
    Scene().AddSelectionSet(_M("s"), {});
    const NOTIFYPROC forget = [](void* param, NotifyInfo*) {
        static_cast<SampleOwner*>(param)->Block().SetCount(SAMPLE_STRINGS, 0);
    };
    RegisterNotification(forget, owner.get(), NOTIFY_NAMED_SEL_SET_DELETED);
    Held([&] { Scene().RemoveSelectionSet(_M("s")); });
    EXPECT_EQ(owner->Block().Count(SAMPLE_STRINGS), 0);
    for (int round = 0; round < 2; ++round) {
        Undo();
        EXPECT_EQ(owner->Block().Count(SAMPLE_STRINGS), 1);
        Redo();
        EXPECT_EQ(owner->Block().Count(SAMPLE_STRINGS), 0);
    }
    UnRegisterNotification(forget, owner.get(), NOTIFY_NAMED_SEL_SET_DELETED);
}

TEST_F(EditUndo, SetsStepsDoNothingWhereUnrecordedEditsTookTheirPlace) {
    Held([&] { Scene().AddSelectionSet(_M("s"), {}); });
    Scene().RemoveSelectionSet(_M("s"));
    EXPECT_TRUE(Undo());
    Scene().AddSelectionSet(_M("s"), {&AddNode("a")});
    EXPECT_TRUE(Redo());
    EXPECT_THAT(Sets(), ElementsAre("s: a"));
}

// Render elements

TEST_F(EditUndo, AnElementThatCameGoesAndComesAgain) {
    Elements().Add(DIFFUSE, _M("a"));
    Listen();
    RenderElement* b = nullptr;
    Held([&] { b = &Elements().Add(DIFFUSE, _M("b")); });
    Undo();
    EXPECT_EQ(ElementNames(), "a");
    Redo();
    EXPECT_EQ(ElementNames(), "a b");
    EXPECT_EQ(Elements().GetRenderElement(1), b);
    EXPECT_THAT(Heard(), ElementsAre("35", "35", "35"));
}

TEST_F(EditUndo, AnElementThatWentComesBackAtItsPlaceAndToThoseWhoReferredToIt) {
    for (const MCHAR* name : {_M("a"), _M("b"), _M("c")})
        Elements().Add(DIFFUSE, name);
    RenderElement& b = *Elements().GetRenderElement(1);
    owner->Block().SetValue(SAMPLE_OWNERS_TARGET, 0, static_cast<ReferenceTarget*>(&b), 0);
    Listen();
    Held([&] { Elements().Remove(&b); });
    EXPECT_EQ(ElementNames(), "a c");
    EXPECT_EQ(owner->target, nullptr);
    Undo();
    EXPECT_EQ(ElementNames(), "a b c");
    EXPECT_EQ(owner->target, &b);
    Redo();
    EXPECT_EQ(ElementNames(), "a c");
    EXPECT_EQ(owner->target, nullptr);
    EXPECT_THAT(Heard(), ElementsAre("35", "35", "35"));
    Undo();
    Heard();
    b.SetEnabled(false);
    EXPECT_THAT(Heard(), ElementsAre("35")) << "it is one of the list again";
}

TEST_F(EditUndo, AnElementsNameAndStateComeBackAndItsDependentsAreTold) {
    RenderElement& element = Elements().Add(DIFFUSE, _M("a"));
    SampleTarget maker;
    maker.ReplaceReference(0, &element);
    Listen();
    Held([&] {
        element.SetElementName(_M("b"));
        element.SetEnabled(false);
    });
    EXPECT_EQ(ElementNames(), "b-");
    Undo();
    EXPECT_EQ(ElementNames(), "a");
    Redo();
    EXPECT_EQ(ElementNames(), "b-");
    EXPECT_EQ(maker.messages, std::vector<Message>(6, Message{&element, REFMSG_CHANGE, PART_ALL}));
    EXPECT_EQ(Heard(), std::vector<std::string>(6, "35"));
    maker.DeleteAllRefsFromMe();
}

class Everything : public GlobalReferenceMaker {
  public:
    Everything() { RegisterGlobalReference(this); }
    ~Everything() override { UnRegisterGlobalReference(this); }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle target, PartID&, RefMessage message,
                               BOOL) override {
        if (target->SuperClassID() == RENDER_ELEMENT_CLASS_ID) messages.push_back(message);
        return REF_SUCCEED;
    }
    std::vector<RefMessage> messages;
};

TEST_F(EditUndo, GlobalReferencesHearOfElementsThatComeGoAndChange) {
    Everything everything;
    const auto heardOf = [&] { return std::exchange(everything.messages, {}); };
    RenderElement* element = nullptr;
    Held([&] { element = &Elements().Add(DIFFUSE, _M("a")); });
    EXPECT_THAT(heardOf(), ElementsAre(REFMSG_CHANGE));
    Held([&] { element->SetElementName(_M("b")); });
    EXPECT_THAT(heardOf(), ElementsAre(REFMSG_CHANGE));
    Held([&] { Elements().Remove(element); });
    EXPECT_THAT(heardOf(), ElementsAre(REFMSG_TARGET_DELETED, REFMSG_CHANGE));
    Undo();
    EXPECT_THAT(heardOf(), ElementsAre(REFMSG_CHANGE));
    Undo();
    EXPECT_THAT(heardOf(), ElementsAre(REFMSG_CHANGE));
    Undo();
    EXPECT_THAT(heardOf(), ElementsAre(REFMSG_TARGET_DELETED, REFMSG_CHANGE));
}

TEST_F(EditUndo, ElementsOfNoApplicationLeaveNoStep) {
    host::RenderElementManager apart;
    Listen();
    Held([&] { apart.Remove(&apart.Add(DIFFUSE, _M("a"))); });
    EXPECT_FALSE(Undo());
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_F(EditUndo, EverythingIsTakenBackToTheStartAndDoneAgain) {
    SceneLayer& layer = AddLayer("layer");
    Node& a = AddNode("a");
    a.SetLayer(&layer);
    Scene().AddSelectionSet(_M("s"), {&a});
    Elements().Add(DIFFUSE, _M("e"));
    Held([&] { Scene().Remove(a); });
    Held([&] { Scene().Remove(layer); });
    Held([&] { Scene().RenameSelectionSet(_M("s"), _M("t")); });
    Held([&] { Elements().Remove(Elements().GetRenderElement(0)); });
    while (Undo()) {
    }
    EXPECT_THAT(Layers(), ElementsAre("layer in none: a"));
    EXPECT_THAT(Sets(), ElementsAre("s: a"));
    EXPECT_EQ(ElementNames(), "e");
    while (Redo()) {
    }
    EXPECT_THAT(Layers(), IsEmpty());
    EXPECT_THAT(Sets(), ElementsAre("t:"));
    EXPECT_EQ(ElementNames(), "");
}

}  // namespace
