// What stands in the scene: objects, cameras, lights and point helpers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <inode.h>

#include "host/camera_lens.h"
#include "host/owned.h"

namespace host {

class Scene;
class SceneLayer;

// What a node shows, as far as effects tell things apart.
enum class NodeKind { Geometry, Camera, Light, PointHelper };

// Owned by its scene, or, when it was removed while theHold held, by the undo step that can bring
// it back; DeleteThis is Scene::Remove. A change of its name, visibility or place is told to its
// dependents. While theHold holds, all that is set here but the render id can be undone.
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
    Matrix3 GetNodeTM(TimeValue, Interval* = nullptr) override {
        return transform_.value_or(Matrix3());
    }
    BOOL GetUserPropBool(const MSTR& key, BOOL& b) override;
    RefTargetHandle Clone(RemapDir&) override { return this; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    // False for one that was removed and lives on in an undo step.
    bool IsInScene() const { return inScene_; }
    void SetName(const MSTR& name);
    // Null puts the node to the root of the scene. False, and nothing done, for a parent that is
    // the node itself or hangs below it, or isn't in the node's scene.
    bool SetParent(Node* parent);
    void SetGroupHead(bool on);
    void SetGroupMember(bool on);
    // Whether the node itself is hidden, by no layer.
    bool IsHidden() const { return hidden_; }
    void SetHidden(bool on);
    NodeKind Kind() const { return kind_; }
    // A node starts as geometry. What it showed before goes, and its dependents are told.
    void SetKind(NodeKind kind);
    // To the world's space; the nodes below stay where they are.
    void SetTransform(const Matrix3& transform);
    // False while nobody told where the node stands.
    bool IsPlaced() const { return transform_.has_value(); }
    // What a camera shows; nothing when nobody told.
    const std::optional<CameraLens>& Lens() const { return lens_; }
    void SetLens(const std::optional<CameraLens>& lens);
    // Null for none. The layer must be in the same scene.
    void SetLayer(SceneLayer* layer);
    SceneLayer* GetLayer() const { return layer_; }
    // Keeps a number that a render file told; 65535 lets the next AssignRenderIDs give one.
    void SetRenderID(USHORT id) { renderID_ = id; }
    // What the user numbers objects with (GB_NODE_ID).
    UWORD ObjectID() const { return objectID_; }
    void SetObjectID(UWORD id);
    // The user properties: lines of text, "name = value" each.
    const MSTR& UserProperties() const { return userProperties_; }
    void SetUserProperties(const MSTR& text);

  private:
    friend class LayerPresence;
    friend class NodeLayerRestore;
    friend class NodePresence;
    template <class T>
    friend class ParentRestore;
    friend class Scene;
    Node(Scene& scene, std::uint64_t serial, const MSTR& name);
    void Changed() { NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE); }
    template <class Value, class Argument>
    void PutUndo(Value Node::*field, void (Node::*setter)(Argument));
    void Place(const std::optional<Matrix3>& transform);
    bool MayHangBelow(const Node* parent) const;
    // `index` is the place among the parent's children or the layer's nodes.
    void HangBelow(Node* parent, std::size_t index);
    void PutInLayer(SceneLayer* layer, std::size_t index);

    Scene& scene_;
    // Counts up in order of creation.
    std::uint64_t serial_;
    bool inScene_ = false;
    MSTR name_;
    MSTR userProperties_;
    Node* parent_ = nullptr;
    std::vector<Node*> children_;
    SceneLayer* layer_ = nullptr;
    NodeKind kind_ = NodeKind::Geometry;
    Owned<Object> object_;
    ObjectState shown_;
    std::optional<Matrix3> transform_;
    std::optional<CameraLens> lens_;
    UWORD objectID_ = 0;
    USHORT renderID_ = 65535;
    bool hidden_ = false;
    bool groupHead_ = false;
    bool groupMember_ = false;
};

}  // namespace host
