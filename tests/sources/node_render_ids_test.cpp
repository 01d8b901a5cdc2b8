#include "sources/node_render_ids.h"

#include <INamedSelectionSetManager.h>
#include <gmock/gmock.h>

#include "host/application.h"
#include "host/scene.h"

namespace {

using sources::AddRenderIDs;
using testing::ElementsAre;

class NodeRenderIDs : public testing::Test {
  protected:
    ~NodeRenderIDs() override { host::App().scene.Clear(); }

    host::Node& AddNode(USHORT renderID, host::Node* parent = nullptr) {
        host::Node& node = scene.AddNode(_M("node"), parent);
        node.SetRenderID(renderID);
        return node;
    }
    host::Node& AddMember(USHORT renderID, host::Node& parent) {
        host::Node& node = AddNode(renderID, &parent);
        node.SetGroupMember(true);
        return node;
    }
    template <class... From>
    std::vector<std::uint16_t> Added(From&&... from) {
        sources::RenderIDSet ids;
        AddRenderIDs(std::forward<From>(from)..., ids);
        std::vector<std::uint16_t> members;
        ids.ForEach([&members](std::uint16_t id) { members.push_back(id); });
        return members;
    }

    host::Scene& scene = host::App().scene;
};

TEST_F(NodeRenderIDs, OfANodeAreItsOwn) {
    host::Node& parent = AddNode(7);
    AddNode(8, &parent);
    EXPECT_THAT(Added(&parent), ElementsAre(7));
    EXPECT_THAT(Added(&AddNode(0)), ElementsAre(0));
    EXPECT_THAT(Added(&AddNode(65534)), ElementsAre(65534));
}

TEST_F(NodeRenderIDs, OfANodeThatIsntRenderedOrIsNullAreNone) {
    EXPECT_THAT(Added(&AddNode(65535)), ElementsAre());
    EXPECT_THAT(Added(static_cast<INode*>(nullptr)), ElementsAre());
    EXPECT_THAT(Added(static_cast<ILayerProperties*>(nullptr)), ElementsAre());
}

TEST_F(NodeRenderIDs, OfAGroupsHeadAreThoseOfItsMembersAndNotItsOwn) {
    host::Node& head = AddNode(1);
    head.SetGroupHead(true);
    AddMember(2, head);
    AddMember(65535, head);
    AddNode(3, &head);
    host::Node& inner = AddMember(4, head);
    inner.SetGroupHead(true);
    AddMember(5, AddMember(6, inner));
    AddMember(9, AddNode(8, &head));
    EXPECT_THAT(Added(&head), ElementsAre(2, 4, 5, 6, 9));
    EXPECT_THAT(Added(&inner), ElementsAre(5, 6));
}

TEST_F(NodeRenderIDs, OfAVeryDeepGroupAreFoundToo) {
    host::Node* head = &AddNode(1);
    head->SetGroupHead(true);
    host::Node* last = head;
    for (int depth = 0; depth < 5000; ++depth)
        last = &AddMember(65535, *last);
    AddMember(3, *last);
    EXPECT_THAT(Added(head), ElementsAre(3));
}

TEST_F(NodeRenderIDs, OfALayerAreThoseOfItsNodesAndOfTheLayersInsideIt) {
    host::SceneLayer& layer = scene.AddLayer(_M("outer"));
    host::SceneLayer& inner = scene.AddLayer(_M("inner"), &layer);
    host::SceneLayer& innermost = scene.AddLayer(_M("innermost"), &inner);
    host::SceneLayer& other = scene.AddLayer(_M("other"));
    AddNode(1).SetLayer(&layer);
    AddNode(65535).SetLayer(&layer);
    AddNode(2).SetLayer(&innermost);
    AddNode(3).SetLayer(&other);
    host::Node& head = AddNode(4);
    head.SetGroupHead(true);
    AddMember(5, head);
    head.SetLayer(&inner);
    EXPECT_THAT(Added(&layer), ElementsAre(1, 2, 5));
    EXPECT_THAT(Added(&innermost), ElementsAre(2));
    EXPECT_THAT(Added(&other), ElementsAre(3));
}

TEST_F(NodeRenderIDs, OfASelectionSetAreThoseOfItsNodes) {
    host::Node& head = AddNode(1);
    head.SetGroupHead(true);
    AddMember(2, head);
    scene.AddSelectionSet(_M("first"), {&AddNode(9)});
    scene.AddSelectionSet(_M("second"), {&AddNode(3), &head, &AddNode(65535)});
    INamedSelectionSetManager& sets = *INamedSelectionSetManager::GetInstance();
    EXPECT_THAT(Added(sets, 0), ElementsAre(9));
    EXPECT_THAT(Added(sets, 1), ElementsAre(2, 3));
    EXPECT_THAT(Added(sets, 2), ElementsAre());
    EXPECT_THAT(Added(sets, -1), ElementsAre());
}

TEST_F(NodeRenderIDs, AreAddedToThoseThatAreThere) {
    sources::RenderIDSet ids;
    ids.Add(50);
    AddRenderIDs(&AddNode(7), ids);
    EXPECT_TRUE(ids.Contains(50));
    EXPECT_TRUE(ids.Contains(7));
}

// A host whose lists have holes.
struct NodeWithHoles : INode {
    const MCHAR* GetName() override { return _M(""); }
    USHORT GetRenderID() override { return 12; }
    INode* GetParentNode() override { return nullptr; }
    BOOL IsRootNode() override { return FALSE; }
    int NumberOfChildren() override { return 2; }
    INode* GetChildNode(int) override { return nullptr; }
    BOOL IsGroupHead() override { return isHead; }
    BOOL IsGroupMember() override { return FALSE; }
    BOOL IsNodeHidden(BOOL) override { return FALSE; }
    const ObjectState& EvalWorldState(TimeValue, BOOL) override { return shown; }
    Matrix3 GetNodeTM(TimeValue, Interval*) override { return {}; }
    BOOL GetUserPropBool(const MSTR&, BOOL&) override { return FALSE; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }
    BOOL isHead = FALSE;
    ObjectState shown;
};

struct LayerWithHoles : ILayerProperties {
    const MCHAR* getName() override { return _M(""); }
    ILayerProperties* getParent() override { return nullptr; }
    int getNumChildren() override { return 2; }
    ILayerProperties* getChild(int) override { return nullptr; }
    void Nodes(Tab<INode*>& nodes) override {
        INode* items[] = {nullptr, node, nullptr};
        nodes.Append(3, items);
    }
    INode* node = nullptr;
};

struct SetWithHoles final : INamedSelectionSetManager {
    int GetNumNamedSelSets() override { return 1; }
    bool GetNamedSelSetName(int, MSTR&) override { return false; }
    int GetNamedSelSetItemCount(int) override { return 2; }
    INode* GetNamedSelSetItem(int, int index) override { return index == 1 ? node : nullptr; }
    INode* node = nullptr;
};

TEST_F(NodeRenderIDs, OfNullNodesAndLayersAreNone) {
    NodeWithHoles node;
    LayerWithHoles layer;
    SetWithHoles set;
    layer.node = &node;
    set.node = &node;
    EXPECT_THAT(Added(static_cast<ILayerProperties*>(&layer)), ElementsAre(12));
    EXPECT_THAT(Added(static_cast<INamedSelectionSetManager&>(set), 0), ElementsAre(12));
    node.isHead = TRUE;
    EXPECT_THAT(Added(static_cast<INode*>(&node)), ElementsAre());
}

}  // namespace
