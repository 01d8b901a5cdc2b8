// The scene around a frame, as far as effects look at it: nodes, layers and named selection sets.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <ilayermanager.h>
#include <inode.h>

#include "host/owned.h"

namespace host {

class RootNode;
class Scene;
class SceneLayer;

// What a node shows, as far as effects tell things apart.
enum class NodeKind { Geometry, Camera, Light, PointHelper };

// Owned by its scene; DeleteThis is Scene::Remove. A change of its name, visibility or place is
// told to its dependents.
class Node final : public INode {
  public:
    ~Node() override = default;
    void DeleteThis() override;

    const MCHAR* GetName() override { return name_.data(); }
    USHORT GetRenderID() override { return renderID_; }
    INode* GetParentNode() override;
    BOOL IsRootNode() override { return FALSE; }
    int NumberOfChildren() override { return static_cast<int>(children_.size()); }
    // In the order in which they came to it.
    Node* GetChildNode(int index) override;
    BOOL IsGroupHead() override { return groupHead_; }
    BOOL IsGroupMember() override { return groupMember_; }
    BOOL IsNodeHidden(BOOL hflagsOverride = FALSE) override;
    // The same at all times, as the transform is; so `valid` stays as it was.
    const ObjectState& EvalWorldState(TimeValue, BOOL = TRUE) override { return shown_; }
    Matrix3 GetNodeTM(TimeValue, Interval* = nullptr) override { return transform_; }
    BOOL GetUserPropBool(const MSTR& key, BOOL& b) override;
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    void SetName(const MSTR& name);
    // Null puts the node to the root of the scene. False, and nothing done, for a parent that is
    // the node itself or hangs below it, or is of another scene.
    bool SetParent(Node* parent);
    void SetGroupHead(bool on) { groupHead_ = on; }
    void SetGroupMember(bool on) { groupMember_ = on; }
    void SetHidden(bool on);
    // A node starts as geometry. What it showed before goes, and its dependents are told.
    void SetKind(NodeKind kind);
    // To the world's space; the nodes below stay where they are.
    void SetTransform(const Matrix3& transform);
    // Null for none. The layer must be of the same scene.
    void SetLayer(SceneLayer* layer);
    SceneLayer* GetLayer() const { return layer_; }
    // Keeps a number that a render file told; 65535 lets the next AssignRenderIDs give one.
    void SetRenderID(USHORT id) { renderID_ = id; }
    // What the user numbers objects with (GB_NODE_ID).
    UWORD ObjectID() const { return objectID_; }
    void SetObjectID(UWORD id) { objectID_ = id; }
    // The user properties: lines of text, "name = value" each.
    const MSTR& UserProperties() const { return userProperties_; }
    void SetUserProperties(const MSTR& text) { userProperties_ = text; }

  private:
    friend class Scene;
    Node(Scene& scene, const MSTR& name);
    void Changed() { NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE); }

    Scene& scene_;
    MSTR name_;
    MSTR userProperties_;
    Node* parent_ = nullptr;
    std::vector<Node*> children_;
    SceneLayer* layer_ = nullptr;
    Owned<Object> object_;
    ObjectState shown_;
    Matrix3 transform_;
    UWORD objectID_ = 0;
    USHORT renderID_ = 65535;
    bool hidden_ = false;
    bool groupHead_ = false;
    bool groupMember_ = false;
};

// Owned by its scene; DeleteThis is Scene::Remove. A change of its name, visibility or place is
// told to its dependents.
class SceneLayer final : public ILayer, public ILayerProperties {
  public:
    ~SceneLayer() override = default;
    void DeleteThis() override;

    MSTR GetName() const override { return name_; }
    bool IsHidden(bool checkParents = false) const override;
    SceneLayer* GetParentLayer() const override { return parent_; }
    int GetNumOfChildLayers() const override { return static_cast<int>(children_.size()); }
    // In order of creation, as all of a layer's lists.
    SceneLayer* GetChildLayer(int index) const override;
    using ILayer::GetInterface;
    BaseInterface* GetInterface(Interface_ID id) override;
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    const MCHAR* getName() override { return name_.data(); }
    ILayerProperties* getParent() override { return parent_; }
    int getNumChildren() override { return GetNumOfChildLayers(); }
    ILayerProperties* getChild(int index) override { return GetChildLayer(index); }
    void Nodes(Tab<INode*>& nodes) override;

    void SetName(const MSTR& name);
    // As Node::SetParent.
    bool SetParent(SceneLayer* parent);
    void SetHidden(bool on);

  private:
    friend class Node;
    friend class Scene;
    SceneLayer(Scene& scene, const MSTR& name) : scene_(scene), name_(name) {}
    void Changed() { NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE); }

    Scene& scene_;
    MSTR name_;
    SceneLayer* parent_ = nullptr;
    std::vector<SceneLayer*> children_;
    std::vector<Node*> nodes_;
    bool hidden_ = false;
};

// A selection that the user gave a name.
struct SelectionSet {
    MSTR name;
    // Each once.
    std::vector<Node*> nodes;
};

class Scene {
  public:
    Scene();
    // Layers and nodes go, and their dependents are told.
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // The node that those without a parent hang from, in order of creation. It stays as long as the
    // scene, and is none of the nodes that are counted and found by name.
    INode& Root() const;

    // In no layer, and without a render id. Names may repeat.
    Node& AddNode(const MSTR& name, Node* parent = nullptr);
    // The oldest node of that very name; null when there is none.
    Node* FindNode(const MSTR& name) const;
    // The node goes out of its layer and the selection sets; its children hang from its parent
    // then, and those that were members of the group whose head it was are members no longer,
    // unless they come into another group.
    void Remove(Node& node);
    // In order of creation.
    int NumNodes() const { return static_cast<int>(nodes_.size()); }
    // Null for an index out of range.
    Node* GetNode(int index) const;
    // Gives every node that has no render id one that no other node has and that was never given
    // before: from 0 on in order of creation, up to 65533. Nodes beyond that stay at 65535. A node
    // keeps its id from then on, so that a run of frames sees the same ids.
    void AssignRenderIDs();

    // A scene starts without layers.
    SceneLayer& AddLayer(const MSTR& name, SceneLayer* parent = nullptr);
    // The oldest layer of that very name; null when there is none.
    SceneLayer* FindLayer(const MSTR& name) const;
    // The layer's nodes and child layers go to its parent; at the top, the nodes are in no layer
    // then.
    void Remove(SceneLayer& layer);
    // Parents before their children, and siblings by name as people count (MaxAlphaNumCompI).
    // Valid until a layer comes, goes, or changes name or place.
    const std::vector<SceneLayer*>& Layers() const;

    // Nulls and repetitions are left out. A set of that name that is there is edited, which the
    // host broadcasts as a deletion and a creation between two notifications about the edit.
    void AddSelectionSet(const MSTR& name, const std::vector<Node*>& nodes);
    // False when there is no such set, or the new name is taken.
    bool RenameSelectionSet(const MSTR& name, const MSTR& newName);
    bool RemoveSelectionSet(const MSTR& name);
    // In order of creation.
    const std::vector<SelectionSet>& SelectionSets() const { return sets_; }

    // Removes all but the root, and tells dependents. Broadcasts nothing.
    void Clear();

  private:
    friend class Node;
    friend class RootNode;
    friend class SceneLayer;
    using Name = std::basic_string<MCHAR>;

    void EnterName(Node& node);
    void LeaveName(Node& node);
    SelectionSet* FindSet(const MSTR& name);
    // The nodes without a parent, in order of creation.
    const std::vector<Node*>& TopNodes();

    std::unique_ptr<RootNode> root_;
    // In order of creation.
    std::vector<std::unique_ptr<Node>> nodes_;
    // Empty when it is to be made anew.
    std::vector<Node*> topNodes_;
    std::unordered_map<Name, std::vector<Node*>> nodesByName_;
    int nextRenderID_ = 0;
    std::vector<std::unique_ptr<SceneLayer>> layers_;
    // Empty when it is to be made anew.
    mutable std::vector<SceneLayer*> sortedLayers_;
    std::vector<SelectionSet> sets_;
};

// The running application's layers, as the host's interface gives them.
ILayerManager* TheLayerManager();

}  // namespace host
