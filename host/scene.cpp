#include "host/scene.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include <INamedSelectionSetManager.h>
#include <maxapi.h>
#include <notify.h>

#include "host/application.h"
#include "host/user_properties.h"

namespace host {
namespace {

constexpr int MAX_RENDER_ID = 65533;
constexpr USHORT NO_RENDER_ID = 65535;

template <class T>
T* At(const std::vector<T*>& objects, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < objects.size()
               ? objects[static_cast<std::size_t>(index)]
               : nullptr;
}

template <class T>
bool HangsBelow(const T* object, const T* ancestor, T* (*parentOf)(const T*)) {
    for (; object; object = parentOf(object)) {
        if (object == ancestor) {
            return true;
        }
    }
    return false;
}

template <class T>
void MoveTo(T* object, T*& parent, std::vector<T*> T::*children, T* newParent) {
    if (parent) {
        std::erase(parent->*children, object);
    }
    parent = newParent;
    if (newParent) {
        (newParent->*children).push_back(object);
    }
}

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

// The root

class RootNode final : public INode {
  public:
    explicit RootNode(Scene& scene) : scene_(scene) {}
    ~RootNode() override = default;
    // It stays as long as its scene.
    void DeleteThis() override {}

    const MCHAR* GetName() override { return _M("Scene Root"); }
    USHORT GetRenderID() override { return NO_RENDER_ID; }
    INode* GetParentNode() override { return nullptr; }
    BOOL IsRootNode() override { return TRUE; }
    int NumberOfChildren() override { return static_cast<int>(scene_.TopNodes().size()); }
    INode* GetChildNode(int index) override { return At(scene_.TopNodes(), index); }
    BOOL IsGroupHead() override { return FALSE; }
    BOOL IsGroupMember() override { return FALSE; }
    BOOL IsNodeHidden(BOOL) override { return FALSE; }
    const ObjectState& EvalWorldState(TimeValue, BOOL) override { return shown_; }
    Matrix3 GetNodeTM(TimeValue, Interval*) override { return {}; }
    BOOL GetUserPropBool(const MSTR&, BOOL&) override { return FALSE; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

  private:
    Scene& scene_;
    ObjectState shown_;
};

// Nodes

Node::Node(Scene& scene, const MSTR& name)
    : scene_(scene),
      name_(name),
      object_(new ShownObject(NodeKind::Geometry)),
      shown_{object_.get()} {}

INode* Node::GetParentNode() {
    return parent_ ? static_cast<INode*>(parent_) : scene_.root_.get();
}

BOOL Node::GetUserPropBool(const MSTR& key, BOOL& b) {
    const std::optional<bool> value = FindUserPropertyBool(userProperties_, key);
    if (value) {
        b = *value;
    }
    return value.has_value();
}

void Node::SetKind(NodeKind kind) {
    object_.reset(new ShownObject(kind));
    shown_.obj = object_.get();
    Changed();
}

void Node::SetTransform(const Matrix3& transform) {
    transform_ = transform;
    Changed();
}

void Node::DeleteThis() {
    scene_.Remove(*this);
}

Node* Node::GetChildNode(int index) {
    return At(children_, index);
}

BOOL Node::IsNodeHidden(BOOL /*hflagsOverride*/) {
    return hidden_ || (layer_ && layer_->IsHidden(true));
}

void Node::SetName(const MSTR& name) {
    scene_.LeaveName(*this);
    name_ = name;
    scene_.EnterName(*this);
    Changed();
}

bool Node::SetParent(Node* parent) {
    const auto parentOf = [](const Node* node) { return node->parent_; };
    if (parent && (&parent->scene_ != &scene_ || HangsBelow<Node>(parent, this, parentOf))) {
        return false;
    }
    MoveTo(this, parent_, &Node::children_, parent);
    scene_.topNodes_.clear();
    Changed();
    return true;
}

void Node::SetHidden(bool on) {
    hidden_ = on;
    Changed();
}

void Node::SetLayer(SceneLayer* layer) {
    if (layer_) {
        std::erase(layer_->nodes_, this);
    }
    layer_ = layer;
    if (layer_) {
        layer_->nodes_.push_back(this);
    }
    Changed();
}

// Layers

void SceneLayer::DeleteThis() {
    scene_.Remove(*this);
}

bool SceneLayer::IsHidden(bool checkParents) const {
    return hidden_ || (checkParents && parent_ && parent_->IsHidden(true));
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
    name_ = name;
    scene_.sortedLayers_.clear();
    Changed();
}

bool SceneLayer::SetParent(SceneLayer* parent) {
    const auto parentOf = [](const SceneLayer* layer) { return layer->parent_; };
    if (parent && (&parent->scene_ != &scene_ || HangsBelow<SceneLayer>(parent, this, parentOf))) {
        return false;
    }
    MoveTo(this, parent_, &SceneLayer::children_, parent);
    scene_.sortedLayers_.clear();
    Changed();
    return true;
}

void SceneLayer::SetHidden(bool on) {
    hidden_ = on;
    Changed();
}

// The scene's nodes

Scene::Scene() : root_(std::make_unique<RootNode>(*this)) {}

Scene::~Scene() {
    Clear();
}

INode& Scene::Root() const {
    return *root_;
}

const std::vector<Node*>& Scene::TopNodes() {
    if (topNodes_.empty()) {
        for (const auto& node : nodes_) {
            if (!node->parent_) {
                topNodes_.push_back(node.get());
            }
        }
    }
    return topNodes_;
}

void Scene::EnterName(Node& node) {
    nodesByName_[node.name_.data()].push_back(&node);
}

void Scene::LeaveName(Node& node) {
    const auto entry = nodesByName_.find(node.name_.data());
    if (entry == nodesByName_.end()) {
        return;
    }
    std::erase(entry->second, &node);
    if (entry->second.empty()) {
        nodesByName_.erase(entry);
    }
}

Node& Scene::AddNode(const MSTR& name, Node* parent) {
    nodes_.push_back(std::unique_ptr<Node>(new Node(*this, name)));
    Node& node = *nodes_.back();
    EnterName(node);
    MoveTo(&node, node.parent_, &Node::children_, parent);
    topNodes_.clear();
    return node;
}

Node* Scene::FindNode(const MSTR& name) const {
    const auto entry = nodesByName_.find(name.data());
    return entry == nodesByName_.end() ? nullptr : entry->second.front();
}

Node* Scene::GetNode(int index) const {
    return index >= 0 && index < NumNodes() ? nodes_[static_cast<std::size_t>(index)].get()
                                            : nullptr;
}

void Scene::Remove(Node& node) {
    const auto found = std::find_if(nodes_.begin(), nodes_.end(),
                                    [&](const auto& other) { return other.get() == &node; });
    if (found == nodes_.end()) {
        return;
    }
    // Out of the scene first: those who are told then find it gone.
    const std::unique_ptr<Node> removed = std::move(*found);
    nodes_.erase(found);
    topNodes_.clear();
    LeaveName(node);
    for (SelectionSet& set : sets_) {
        std::erase(set.nodes, &node);
    }
    if (node.layer_) {
        std::erase(node.layer_->nodes_, &node);
    }
    const bool staysInGroup = node.parent_ && (node.parent_->groupHead_ || node.groupMember_);
    for (Node* child : std::vector<Node*>(node.children_)) {
        child->groupMember_ = child->groupMember_ && (!node.groupHead_ || staysInGroup);
        MoveTo(child, child->parent_, &Node::children_, node.parent_);
    }
    if (node.parent_) {
        std::erase(node.parent_->children_, &node);
    }
}

void Scene::AssignRenderIDs() {
    const auto wants = [](const auto& node) { return node->renderID_ == NO_RENDER_ID; };
    if (nextRenderID_ > MAX_RENDER_ID || std::none_of(nodes_.begin(), nodes_.end(), wants)) {
        return;
    }
    std::vector<bool> taken(std::size_t{NO_RENDER_ID} + 1);
    for (const auto& node : nodes_) {
        taken[node->renderID_] = true;
    }
    for (const auto& node : nodes_) {
        if (!wants(node)) {
            continue;
        }
        while (nextRenderID_ <= MAX_RENDER_ID && taken[static_cast<std::size_t>(nextRenderID_)]) {
            ++nextRenderID_;
        }
        if (nextRenderID_ > MAX_RENDER_ID) {
            return;
        }
        node->renderID_ = static_cast<USHORT>(nextRenderID_++);
    }
}

// The scene's layers

SceneLayer& Scene::AddLayer(const MSTR& name, SceneLayer* parent) {
    layers_.push_back(std::unique_ptr<SceneLayer>(new SceneLayer(*this, name)));
    SceneLayer& layer = *layers_.back();
    MoveTo(&layer, layer.parent_, &SceneLayer::children_, parent);
    sortedLayers_.clear();
    return layer;
}

SceneLayer* Scene::FindLayer(const MSTR& name) const {
    const auto found = std::find_if(layers_.begin(), layers_.end(),
                                    [&](const auto& layer) { return layer->name_ == name; });
    return found == layers_.end() ? nullptr : found->get();
}

void Scene::Remove(SceneLayer& layer) {
    const auto found = std::find_if(layers_.begin(), layers_.end(),
                                    [&](const auto& other) { return other.get() == &layer; });
    if (found == layers_.end()) {
        return;
    }
    const std::unique_ptr<SceneLayer> removed = std::move(*found);
    layers_.erase(found);
    sortedLayers_.clear();
    for (Node* node : std::vector<Node*>(layer.nodes_)) {
        node->SetLayer(layer.parent_);
    }
    for (SceneLayer* child : std::vector<SceneLayer*>(layer.children_)) {
        child->SetParent(layer.parent_);
    }
    if (layer.parent_) {
        std::erase(layer.parent_->children_, &layer);
    }
}

const std::vector<SceneLayer*>& Scene::Layers() const {
    if (!sortedLayers_.empty() || layers_.empty()) {
        return sortedLayers_;
    }
    const auto byName = [](const SceneLayer* left, const SceneLayer* right) {
        return MaxAlphaNumCompI(left->name_.data(), right->name_.data()) < 0;
    };
    // The next layer to be visited is the last of the list.
    std::vector<SceneLayer*> waiting;
    const auto wait = [&](std::vector<SceneLayer*> siblings) {
        std::stable_sort(siblings.begin(), siblings.end(), byName);
        waiting.insert(waiting.end(), siblings.rbegin(), siblings.rend());
    };
    std::vector<SceneLayer*> roots;
    for (const auto& layer : layers_) {
        if (!layer->parent_) {
            roots.push_back(layer.get());
        }
    }
    wait(std::move(roots));
    while (!waiting.empty()) {
        SceneLayer* layer = waiting.back();
        waiting.pop_back();
        sortedLayers_.push_back(layer);
        wait(layer->children_);
    }
    return sortedLayers_;
}

// The scene's selection sets

SelectionSet* Scene::FindSet(const MSTR& name) {
    const auto found = std::find_if(sets_.begin(), sets_.end(),
                                    [&](const SelectionSet& set) { return set.name == name; });
    return found == sets_.end() ? nullptr : &*found;
}

void Scene::AddSelectionSet(const MSTR& name, const std::vector<Node*>& nodes) {
    std::vector<Node*> members;
    std::unordered_set<Node*> seen;
    for (Node* node : nodes) {
        if (node && seen.insert(node).second) {
            members.push_back(node);
        }
    }
    // The name may be that of a set that goes.
    SelectionSet made{name, std::move(members)};
    const MSTR told = name;
    const auto tell = [&](int code) { Broadcast(code, const_cast<MCHAR*>(told.data())); };
    const SelectionSet* old = FindSet(name);
    if (!old) {
        sets_.push_back(std::move(made));
        tell(NOTIFY_NAMED_SEL_SET_CREATED);
        return;
    }
    const auto place = static_cast<std::size_t>(old - sets_.data());
    Broadcast(NOTIFY_NAMED_SEL_SET_PRE_MODIFY);
    std::erase_if(sets_, [&](const SelectionSet& set) { return set.name == told; });
    tell(NOTIFY_NAMED_SEL_SET_DELETED);
    sets_.insert(sets_.begin() + static_cast<std::ptrdiff_t>(std::min(place, sets_.size())),
                 std::move(made));
    tell(NOTIFY_NAMED_SEL_SET_CREATED);
    Broadcast(NOTIFY_NAMED_SEL_SET_POST_MODIFY);
}

bool Scene::RenameSelectionSet(const MSTR& name, const MSTR& newName) {
    SelectionSet* set = FindSet(name);
    if (!set || FindSet(newName)) {
        return false;
    }
    const MSTR oldName = std::exchange(set->name, newName);
    NameChange change{oldName.data(), newName.data()};
    Broadcast(NOTIFY_NAMED_SEL_SET_RENAMED, &change);
    return true;
}

bool Scene::RemoveSelectionSet(const MSTR& name) {
    if (!FindSet(name)) {
        return false;
    }
    const MSTR gone = name;
    std::erase_if(sets_, [&](const SelectionSet& set) { return set.name == gone; });
    Broadcast(NOTIFY_NAMED_SEL_SET_DELETED, const_cast<MCHAR*>(gone.data()));
    return true;
}

void Scene::Clear() {
    sets_.clear();
    sortedLayers_.clear();
    topNodes_.clear();
    nodesByName_.clear();
    nextRenderID_ = 0;
    // Out of the scene first, and out of each other: those who are told then find nothing there.
    const auto layers = std::move(layers_);
    const auto nodes = std::move(nodes_);
    layers_.clear();
    nodes_.clear();
    for (const auto& layer : layers) {
        layer->parent_ = nullptr;
        layer->children_.clear();
        layer->nodes_.clear();
    }
    for (const auto& node : nodes) {
        node->parent_ = nullptr;
        node->layer_ = nullptr;
        node->children_.clear();
    }
}

// What the host's interfaces look at

namespace {

class ApplicationLayers final : public ILayerManager {
  public:
    int GetLayerCount() override { return static_cast<int>(App().scene.Layers().size()); }
    ILayer* GetLayer(int index) override { return At(App().scene.Layers(), index); }
};

class ApplicationSelectionSets final : public INamedSelectionSetManager {
  public:
    int GetNumNamedSelSets() override {
        return static_cast<int>(App().scene.SelectionSets().size());
    }
    bool GetNamedSelSetName(int setIndex, MSTR& name) override {
        const SelectionSet* set = Find(setIndex);
        if (set) {
            name = set->name;
        }
        return set != nullptr;
    }
    int GetNamedSelSetItemCount(int setIndex) override {
        const SelectionSet* set = Find(setIndex);
        return set ? static_cast<int>(set->nodes.size()) : 0;
    }
    INode* GetNamedSelSetItem(int setIndex, int index) override {
        const SelectionSet* set = Find(setIndex);
        return set ? At(set->nodes, index) : nullptr;
    }

  private:
    const SelectionSet* Find(int index) {
        const auto& sets = App().scene.SelectionSets();
        return index >= 0 && index < GetNumNamedSelSets() ? &sets[static_cast<std::size_t>(index)]
                                                          : nullptr;
    }
};

}  // namespace

ILayerManager* TheLayerManager() {
    static ApplicationLayers layers;
    return &layers;
}

}  // namespace host

INamedSelectionSetManager* INamedSelectionSetManager::GetInstance() {
    static host::ApplicationSelectionSets sets;
    return &sets;
}
