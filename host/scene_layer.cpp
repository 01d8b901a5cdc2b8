#include "host/scene_layer.h"

#include <notify.h>

#include "host/application.h"
#include "host/edit_undo.h"
#include "host/parent_restore.h"
#include "host/scene.h"
#include "host/scene_tree.h"

namespace host {

template <class Value, class Argument>
void SceneLayer::PutUndo(Value SceneLayer::*field, void (SceneLayer::*setter)(Argument)) {
    if (scene_.Records()) PutFieldUndo(*this, field, setter);
}

void SceneLayer::DeleteThis() {
    scene_.Remove(*this);
}

bool SceneLayer::IsHidden(bool checkParents) const {
    const SceneLayer* layer = this;
    while (checkParents && !layer->hidden_ && layer->parent_)
        layer = layer->parent_;
    return layer->hidden_;
}

SceneLayer* SceneLayer::GetChildLayer(int index) const {
    return At(children_, index);
}

BaseInterface* SceneLayer::GetInterface(Interface_ID id) {
    return id == LAYERPROPERTIES_INTERFACE ? static_cast<ILayerProperties*>(this) : nullptr;
}

void SceneLayer::Nodes(Tab<INode*>& nodes) {
    nodes.SetCount(static_cast<int>(nodes_.size()));
    for (int index = 0; index < nodes.Count(); ++index) {
        nodes[index] = At(nodes_, index);
    }
}

void SceneLayer::SetName(const MSTR& name) {
    PutUndo(&SceneLayer::name_, &SceneLayer::SetName);
    name_ = name;
    scene_.sortedLayers_.clear();
    Changed();
}

void SceneLayer::SetHidden(bool on) {
    PutUndo(&SceneLayer::hidden_, &SceneLayer::SetHidden);
    hidden_ = on;
    Changed();
}

bool SceneLayer::MayHangBelow(const SceneLayer* parent) const {
    if (parent && (&parent->scene_ != &scene_ || !parent->inScene_)) return false;
    // As in Node::MayHangBelow.
    if (children_.empty()) return parent != this;
    for (; parent; parent = parent->parent_) {
        if (parent == this) return false;
    }
    return true;
}

void SceneLayer::HangBelow(SceneLayer* parent, std::size_t index) {
    const bool moves = parent_ != parent;
    if (parent_) std::erase(parent_->children_, this);
    parent_ = parent;
    if (parent) InsertAt(parent->children_, index, this);
    scene_.sortedLayers_.clear();
    if (!inScene_) return;
    Changed();
    if (moves) scene_.Tell(NOTIFY_LAYER_PARENT_CHANGED, static_cast<ILayer*>(this));
}

bool SceneLayer::SetParent(SceneLayer* parent) {
    if (!MayHangBelow(parent)) return false;
    if (scene_.Records()) theHold.Put(new ParentRestore<SceneLayer>(*this));
    HangBelow(parent, atTheEnd);
    return true;
}

namespace {

class ApplicationLayers final : public ILayerManager {
  public:
    int GetLayerCount() override { return static_cast<int>(App().scene.Layers().size()); }
    ILayer* GetLayer(int index) override { return At(App().scene.Layers(), index); }
};

}  // namespace

ILayerManager* TheLayerManager() {
    static ApplicationLayers layers;
    return &layers;
}

}  // namespace host
