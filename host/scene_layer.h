// The layers that the user sorts nodes into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <ilayermanager.h>

namespace host {

class Node;
class Scene;

// Owned as nodes are; DeleteThis is Scene::Remove. A change of its name, visibility or place is
// told to its dependents, a change of its parent to the listeners of NOTIFY_LAYER_PARENT_CHANGED
// too. All that is set here can be undone.
class SceneLayer final : public ILayer, public ILayerProperties {
  public:
    ~SceneLayer() override = default;
    void DeleteThis() override;

    MSTR GetName() const override { return name_; }
    bool IsHidden(bool checkParents = false) const override;
    SceneLayer* GetParentLayer() const override { return parent_; }
    int GetNumOfChildLayers() const override { return static_cast<int>(children_.size()); }
    // In the order in which they came to it, as all of a layer's lists.
    SceneLayer* GetChildLayer(int index) const override;
    using ILayer::GetInterface;
    BaseInterface* GetInterface(Interface_ID id) override;
    RefTargetHandle Clone(RemapDir&) override { return this; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    const MCHAR* getName() override { return name_.data(); }
    ILayerProperties* getParent() override { return parent_; }
    int getNumChildren() override { return GetNumOfChildLayers(); }
    ILayerProperties* getChild(int index) override { return GetChildLayer(index); }
    void Nodes(Tab<INode*>& nodes) override;

    // As Node::IsInScene.
    bool IsInScene() const { return inScene_; }
    void SetName(const MSTR& name);
    // As Node::SetParent.
    bool SetParent(SceneLayer* parent);
    void SetHidden(bool on);

  private:
    friend class LayerPresence;
    friend class Node;
    friend class NodeLayerRestore;
    friend class NodePresence;
    template <class T>
    friend class ParentRestore;
    friend class Scene;
    SceneLayer(Scene& scene, std::uint64_t serial, const MSTR& name)
        : scene_(scene), serial_(serial), name_(name) {}
    void Changed() { NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE); }
    template <class Value, class Argument>
    void PutUndo(Value SceneLayer::*field, void (SceneLayer::*setter)(Argument));
    bool MayHangBelow(const SceneLayer* parent) const;
    // `index` is the place among the parent's children.
    void HangBelow(SceneLayer* parent, std::size_t index);

    Scene& scene_;
    // Counts up in order of creation.
    std::uint64_t serial_;
    bool inScene_ = false;
    MSTR name_;
    SceneLayer* parent_ = nullptr;
    std::vector<SceneLayer*> children_;
    std::vector<Node*> nodes_;
    bool hidden_ = false;
};

// The running application's layers, as the host's interface gives them.
ILayerManager* TheLayerManager();

}  // namespace host
