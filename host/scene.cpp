#include "host/scene.h"

#include <algorithm>
#include <utility>

#include <hold.h>
#include <maxapi.h>
#include <notify.h>

#include "host/application.h"
#include "host/edit_undo.h"
#include "host/scene_root.h"
#include "host/scene_tree.h"

namespace host {
namespace {

constexpr int MAX_RENDER_ID = 65533;
constexpr USHORT NO_RENDER_ID = 65535;

}  // namespace

class NodePresence final : public Presence {
  public:
    explicit NodePresence(Node& node) : node_(&node) {}

    ReferenceTarget* Target() const override { return node_.Get(); }
    void Leave() override {
        auto* node = static_cast<Node*>(node_.Get());
        if (!node || !node->inScene_) return;
        // An edit of its own moved those that hung below it when it was recorded.
        while (!node->children_.empty())
            node->children_.back()->HangBelow(node->parent_, atTheEnd);
        Node* parent = node->parent_;
        SceneLayer* layer = node->layer_;
        parent_.ReplaceReference(0, parent);
        layer_.ReplaceReference(0, layer);
        inParent_ = parent ? IndexOf(parent->children_, node) : 0;
        inLayer_ = layer ? IndexOf(layer->nodes_, node) : 0;
        inSets_.clear();
        for (SelectionSet& set : node->scene_.sets_) {
            const std::size_t index = IndexOf(set.nodes, node);
            if (index == set.nodes.size()) continue;
            inSets_.emplace_back(set.name, index);
            std::erase(set.nodes, node);
        }
        owned_ = node->scene_.Release(*node);
        if (parent) std::erase(parent->children_, node);
        if (layer) std::erase(layer->nodes_, node);
        node->parent_ = nullptr;
        node->layer_ = nullptr;
    }
    void Enter() override {
        if (!owned_) return;
        Node& node = *owned_;
        auto* parent = static_cast<Node*>(parent_.Get());
        auto* layer = static_cast<SceneLayer*>(layer_.Get());
        node.scene_.Insert(std::move(owned_));
        if (parent && parent->inScene_) node.HangBelow(parent, inParent_);
        if (layer && layer->inScene_) node.PutInLayer(layer, inLayer_);
        for (const auto& [name, index] : inSets_) {
            SelectionSet* set = node.scene_.FindSet(name);
            if (set) InsertAt(set->nodes, index, &node);
        }
    }

  private:
    std::unique_ptr<Node> owned_;
    TargetReference node_;
    TargetReference parent_;
    TargetReference layer_;
    std::size_t inParent_ = 0;
    std::size_t inLayer_ = 0;
    std::vector<std::pair<MSTR, std::size_t>> inSets_;
};

class LayerPresence final : public Presence {
  public:
    explicit LayerPresence(SceneLayer& layer) : layer_(&layer) {}

    ReferenceTarget* Target() const override { return layer_.Get(); }
    void Leave() override {
        auto* layer = static_cast<SceneLayer*>(layer_.Get());
        if (!layer || !layer->inScene_) return;
        // Edits of their own moved those that were in it when it was recorded.
        while (!layer->nodes_.empty())
            layer->nodes_.back()->PutInLayer(layer->parent_, atTheEnd);
        while (!layer->children_.empty())
            layer->children_.back()->HangBelow(layer->parent_, atTheEnd);
        parent_.ReplaceReference(0, layer->parent_);
        inParent_ = layer->parent_ ? IndexOf(layer->parent_->children_, layer) : 0;
        owned_ = layer->scene_.Release(*layer);
        layer->HangBelow(nullptr, 0);
        layer->scene_.Tell(NOTIFY_LAYER_DELETED, static_cast<ILayer*>(layer));
    }
    void Enter() override {
        if (!owned_) return;
        SceneLayer& layer = *owned_;
        auto* parent = static_cast<SceneLayer*>(parent_.Get());
        if (parent && parent->inScene_) layer.HangBelow(parent, inParent_);
        layer.scene_.Insert(std::move(owned_));
    }

  private:
    std::unique_ptr<SceneLayer> owned_;
    TargetReference layer_;
    TargetReference parent_;
    std::size_t inParent_ = 0;
};

Scene::Scene() : root_(std::make_unique<RootNode>(*this)) {}

Scene::~Scene() {
    Clear();
}

bool Scene::IsOpen() const {
    return this == &App().scene;
}

bool Scene::Records() const {
    return theHold.Holding() && IsOpen();
}

void Scene::Tell(int code, void* callParam) const {
    if (IsOpen()) Broadcast(code, callParam);
}

INode& Scene::Root() const {
    return *root_;
}

// Nodes

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
    std::vector<Node*>& same = nodesByName_[node.name_.data()];
    const auto later = std::upper_bound(
        same.begin(), same.end(), node.serial_,
        [](std::uint64_t serial, const Node* other) { return serial < other->serial_; });
    same.insert(later, &node);
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

template <class Objects>
auto Scene::PlaceOf(Objects& objects, std::uint64_t serial) {
    return std::lower_bound(
        objects.begin(), objects.end(), serial,
        [](const auto& object, std::uint64_t wanted) { return object->serial_ < wanted; });
}

void Scene::Insert(std::unique_ptr<Node> node) {
    Node& inserted = *node;
    nodes_.insert(PlaceOf(nodes_, inserted.serial_), std::move(node));
    inserted.inScene_ = true;
    EnterName(inserted);
    topNodes_.clear();
}

std::unique_ptr<Node> Scene::Release(Node& node) {
    const auto found = PlaceOf(nodes_, node.serial_);
    std::unique_ptr<Node> released = std::move(*found);
    nodes_.erase(found);
    goneRenderIDs_.insert(node.renderID_);
    LeaveName(node);
    node.inScene_ = false;
    topNodes_.clear();
    return released;
}

Node& Scene::AddNode(const MSTR& name, Node* parent) {
    std::unique_ptr<Node> made(new Node(*this, nextSerial_++, name));
    Node& node = *made;
    Insert(std::move(made));
    if (parent && node.MayHangBelow(parent)) node.HangBelow(parent, atTheEnd);
    if (Records()) PutComing(std::make_shared<NodePresence>(node));
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
    if (&node.scene_ != this || !node.inScene_) return;
    const bool staysInGroup = node.parent_ && (node.parent_->groupHead_ || node.groupMember_);
    const bool endsGroup = node.groupHead_ && !staysInGroup;
    for (Node* child : std::vector<Node*>(node.children_)) {
        if (endsGroup && child->groupMember_) child->SetGroupMember(false);
        child->SetParent(node.parent_);
    }
    Go(std::make_shared<NodePresence>(node), IsOpen());
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
    for (const int id : goneRenderIDs_) {
        taken[static_cast<std::size_t>(id)] = true;
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

// Layers

void Scene::Insert(std::unique_ptr<SceneLayer> layer) {
    SceneLayer& inserted = *layer;
    layers_.insert(PlaceOf(layers_, inserted.serial_), std::move(layer));
    inserted.inScene_ = true;
    sortedLayers_.clear();
    Tell(NOTIFY_LAYER_CREATED, static_cast<ILayer*>(&inserted));
}

std::unique_ptr<SceneLayer> Scene::Release(SceneLayer& layer) {
    const auto found = PlaceOf(layers_, layer.serial_);
    std::unique_ptr<SceneLayer> released = std::move(*found);
    layers_.erase(found);
    layer.inScene_ = false;
    sortedLayers_.clear();
    return released;
}

SceneLayer& Scene::AddLayer(const MSTR& name, SceneLayer* parent) {
    std::unique_ptr<SceneLayer> made(new SceneLayer(*this, nextSerial_++, name));
    SceneLayer& layer = *made;
    if (parent && layer.MayHangBelow(parent)) layer.HangBelow(parent, atTheEnd);
    Insert(std::move(made));
    if (Records()) PutComing(std::make_shared<LayerPresence>(layer));
    return layer;
}

SceneLayer* Scene::FindLayer(const MSTR& name) const {
    const auto found = std::find_if(layers_.begin(), layers_.end(),
                                    [&](const auto& layer) { return layer->name_ == name; });
    return found == layers_.end() ? nullptr : found->get();
}

void Scene::Remove(SceneLayer& layer) {
    if (&layer.scene_ != this || !layer.inScene_) return;
    for (Node* node : std::vector<Node*>(layer.nodes_)) {
        node->SetLayer(layer.parent_);
    }
    for (SceneLayer* child : std::vector<SceneLayer*>(layer.children_)) {
        child->SetParent(layer.parent_);
    }
    Go(std::make_shared<LayerPresence>(layer), IsOpen());
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

Scene::Contents Scene::TakeContents() {
    Contents taken;
    taken.layers = std::exchange(layers_, {});
    taken.nodes = std::exchange(nodes_, {});
    taken.sets = std::exchange(sets_, {});
    taken.nextRenderID = std::exchange(nextRenderID_, 0);
    taken.goneRenderIDs = std::exchange(goneRenderIDs_, {});
    for (const auto& layer : taken.layers)
        layer->inScene_ = false;
    for (const auto& node : taken.nodes)
        node->inScene_ = false;
    sortedLayers_.clear();
    topNodes_.clear();
    nodesByName_.clear();
    return taken;
}

void Scene::PutBack(Contents contents) {
    layers_ = std::exchange(contents.layers, {});
    nodes_ = std::exchange(contents.nodes, {});
    sets_ = std::exchange(contents.sets, {});
    nextRenderID_ = contents.nextRenderID;
    goneRenderIDs_ = std::exchange(contents.goneRenderIDs, {});
    for (const auto& layer : layers_)
        layer->inScene_ = true;
    for (const auto& node : nodes_) {
        node->inScene_ = true;
        EnterName(*node);
    }
    sortedLayers_.clear();
    topNodes_.clear();
}

// Out of each other first: those who are told then find nothing there.
Scene::Contents::~Contents() {
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

void Scene::Clear() {
    TakeContents();
}

}  // namespace host
