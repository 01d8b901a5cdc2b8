#include "host/node_selection.h"

#include <algorithm>

#include <notify.h>

#include "host/application.h"

namespace host {

void NodeSelection::Set(const std::vector<Node*>& nodes) {
    const std::vector<Node*> before = Nodes();
    std::vector<Node*> wanted;
    for (Node* node : nodes) {
        const bool repeats = std::find(wanted.begin(), wanted.end(), node) != wanted.end();
        if (node && node->IsInScene() && !repeats) wanted.push_back(node);
    }
    nodes_.clear();
    for (Node* node : wanted)
        nodes_.push_back(std::make_unique<TargetReference>(node));
    if (wanted != before) Broadcast(NOTIFY_SELECTIONSET_CHANGED);
}

std::vector<Node*> NodeSelection::Nodes() const {
    std::vector<Node*> nodes;
    for (const auto& each : nodes_) {
        auto* node = static_cast<Node*>(each->Get());
        if (node && node->IsInScene()) nodes.push_back(node);
    }
    return nodes;
}

}  // namespace host
