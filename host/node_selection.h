// The nodes that the user selected.
#pragma once

#include <memory>
#include <vector>

#include "host/node.h"
#include "host/target_reference.h"

namespace host {

class NodeSelection {
  public:
    // Of the scene; nulls and repetitions are left out. Broadcasts NOTIFY_SELECTIONSET_CHANGED when
    // it is another selection than before. No step of undo.
    void Set(const std::vector<Node*>& nodes);
    // Those that are in the scene, in the order in which they were given.
    std::vector<Node*> Nodes() const;
    // The number of them, and one; null for one that isn't there.
    std::size_t Count() const;
    Node* At(std::size_t index) const;

  private:
    std::vector<std::unique_ptr<TargetReference>> nodes_;
};

}  // namespace host
