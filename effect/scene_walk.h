// The scene's nodes, parents before their children, and siblings in their order.
#pragma once

#include <inode.h>
#include <maxapi.h>

#include <vector>

namespace effect {

// Nothing in the scene may change meanwhile. No recursion: how deep a scene's hierarchy goes is up
// to its user.
class SceneWalk {
  public:
    SceneWalk() { AddChildren(GetCOREInterface()->GetRootNode()); }

    // Null after the last node. The root isn't among them.
    INode* Next() {
        if (pending.empty()) return nullptr;
        INode* node = pending.back();
        pending.pop_back();
        AddChildren(node);
        return node;
    }

  private:
    void AddChildren(INode* parent) {
        for (int i = parent->NumberOfChildren() - 1; i >= 0; --i) {
            if (INode* child = parent->GetChildNode(i)) pending.push_back(child);
        }
    }

    // The next one last.
    std::vector<INode*> pending;
};

}  // namespace effect
