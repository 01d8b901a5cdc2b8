#include "host/node_selection.h"

#include <algorithm>
#include <unordered_set>

#include <notify.h>

#include "host/application.h"

namespace host {
namespace {

// Null for one that left the scene.
Node* NodeIn(const std::unique_ptr<TargetReference>& reference) {
    auto* node = static_cast<Node*>(reference->Get());
    return node && node->IsInScene() ? node : nullptr;
}

}  // namespace

void NodeSelection::Set(const std::vector<Node*>& nodes) {
    const std::vector<Node*> before = Nodes();
    std::vector<Node*> wanted;
    std::unordered_set<Node*> met;
    for (Node* node : nodes) {
        if (node && node->IsInScene() && met.insert(node).second) wanted.push_back(node);
    }
    nodes_.clear();
    for (Node* node : wanted)
        nodes_.push_back(std::make_unique<TargetReference>(node));
    if (wanted != before) Broadcast(NOTIFY_SELECTIONSET_CHANGED);
}

std::vector<Node*> NodeSelection::Nodes() const {
    std::vector<Node*> nodes;
    for (const auto& each : nodes_) {
        if (Node* node = NodeIn(each)) nodes.push_back(node);
    }
    return nodes;
}

std::size_t NodeSelection::Count() const {
    return static_cast<std::size_t>(std::count_if(nodes_.begin(), nodes_.end(), NodeIn));
}

Node* NodeSelection::At(std::size_t index) const {
    for (const auto& each : nodes_) {
        Node* node = NodeIn(each);
        if (node && index-- == 0) return node;
    }
    return nullptr;
}

}  // namespace host
