#include "host/node.h"

#include <hold.h>

#include <optional>

#include "host/edit_undo.h"
#include "host/parent_restore.h"
#include "host/scene.h"
#include "host/scene_tree.h"
#include "host/user_properties.h"

namespace host {
namespace {

class ShownObject final : public Object {
  public:
    explicit ShownObject(NodeKind kind) : kind_(kind) {}

    SClass_ID SuperClassID() override {
        static constexpr SClass_ID CLASSES[] = {GEOMOBJECT_CLASS_ID, CAMERA_CLASS_ID,
                                                LIGHT_CLASS_ID, HELPER_CLASS_ID};
        return CLASSES[static_cast<std::size_t>(kind_)];
    }
    // Nobody knows which geometry, camera or light it is.
    Class_ID ClassID() override {
        return kind_ == NodeKind::PointHelper ? Class_ID(POINTHELP_CLASS_ID, 0) : Class_ID();
    }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    NodeKind kind_;
};

}  // namespace

// Takes back that a node came into a layer.
class NodeLayerRestore final : public RestoreObj {
  public:
    explicit NodeLayerRestore(Node& node) : node_(&node) { Note(node); }

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    void Note(const Node& node) {
        layer_ = std::make_unique<TargetReference>(node.layer_);
        index_ = node.layer_ ? IndexOf<Node>(node.layer_->nodes_, &node) : 0;
    }
    void Exchange() {
        auto* node = static_cast<Node*>(node_.Get());
        auto* layer = static_cast<SceneLayer*>(layer_->Get());
        if (!node || !node->inScene_ || (layer && !layer->inScene_)) return;
        const std::size_t index = index_;
        Note(*node);
        node->PutInLayer(layer, index);
    }

    TargetReference node_;
    std::unique_ptr<TargetReference> layer_;
    std::size_t index_ = 0;
};

Node::Node(Scene& scene, std::uint64_t serial, const MSTR& name)
    : scene_(scene),
      serial_(serial),
      name_(name),
      object_(new ShownObject(NodeKind::Geometry)),
      shown_{object_.get()} {}

template <class Value, class Argument>
void Node::PutUndo(Value Node::*field, void (Node::*setter)(Argument)) {
    if (scene_.Records()) PutFieldUndo(*this, field, setter);
}

void Node::DeleteThis() {
    scene_.Remove(*this);
}

INode* Node::GetParentNode() {
    return parent_ ? static_cast<INode*>(parent_) : &scene_.Root();
}

Node* Node::GetChildNode(int index) {
    return At(children_, index);
}

BOOL Node::GetUserPropBool(const MSTR& key, BOOL& b) {
    const std::optional<bool> value = FindUserPropertyBool(userProperties_, key);
    if (value) {
        b = *value;
    }
    return value.has_value();
}

BOOL Node::IsNodeHidden(BOOL /*hflagsOverride*/) {
    return hidden_ || (layer_ && layer_->IsHidden(true));
}

void Node::SetName(const MSTR& name) {
    PutUndo(&Node::name_, &Node::SetName);
    if (inScene_) scene_.LeaveName(*this);
    name_ = name;
    if (inScene_) scene_.EnterName(*this);
    Changed();
}

void Node::SetGroupHead(bool on) {
    PutUndo(&Node::groupHead_, &Node::SetGroupHead);
    groupHead_ = on;
}

void Node::SetGroupMember(bool on) {
    PutUndo(&Node::groupMember_, &Node::SetGroupMember);
    groupMember_ = on;
}

void Node::SetHidden(bool on) {
    PutUndo(&Node::hidden_, &Node::SetHidden);
    hidden_ = on;
    Changed();
}

void Node::SetKind(NodeKind kind) {
    PutUndo(&Node::kind_, &Node::SetKind);
    kind_ = kind;
    object_.reset(new ShownObject(kind));
    shown_.obj = object_.get();
    Changed();
}

void Node::Place(const std::optional<Matrix3>& transform) {
    PutUndo(&Node::transform_, &Node::Place);
    transform_ = transform;
    Changed();
}

void Node::SetTransform(const Matrix3& transform) {
    Place(transform);
}

void Node::SetLens(const std::optional<CameraLens>& lens) {
    PutUndo(&Node::lens_, &Node::SetLens);
    lens_ = lens;
    Changed();
}

void Node::SetObjectID(UWORD id) {
    PutUndo(&Node::objectID_, &Node::SetObjectID);
    objectID_ = id;
}

void Node::SetUserProperties(const MSTR& text) {
    PutUndo(&Node::userProperties_, &Node::SetUserProperties);
    userProperties_ = text;
}

bool Node::MayHangBelow(const Node* parent) const {
    if (parent && (&parent->scene_ != &scene_ || !parent->inScene_)) return false;
    // Nothing hangs below a node that is new, however deep the scene is.
    if (children_.empty()) return parent != this;
    for (; parent; parent = parent->parent_) {
        if (parent == this) return false;
    }
    return true;
}

void Node::HangBelow(Node* parent, std::size_t index) {
    if (parent_) std::erase(parent_->children_, this);
    parent_ = parent;
    if (parent) InsertAt(parent->children_, index, this);
    scene_.topNodes_.clear();
    Changed();
}

bool Node::SetParent(Node* parent) {
    if (!MayHangBelow(parent)) return false;
    if (scene_.Records()) theHold.Put(new ParentRestore<Node>(*this));
    HangBelow(parent, atTheEnd);
    return true;
}

void Node::PutInLayer(SceneLayer* layer, std::size_t index) {
    if (layer_) std::erase(layer_->nodes_, this);
    layer_ = layer;
    if (layer) InsertAt(layer->nodes_, index, this);
    Changed();
}

void Node::SetLayer(SceneLayer* layer) {
    if (scene_.Records()) theHold.Put(new NodeLayerRestore(*this));
    PutInLayer(layer, atTheEnd);
}

}  // namespace host
