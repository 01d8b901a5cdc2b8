#include "sources/node_render_ids.h"

#include <INamedSelectionSetManager.h>
#include <ilayerproperties.h>
#include <inode.h>

#include <vector>

#include "sources/fragment_weight.h"

namespace sources {
namespace {

void AddOwnRenderID(INode* node, RenderIDSet& ids) {
    const USHORT id = node->GetRenderID();
    if (id != noRenderID) ids.Add(id);
}

// No recursion, here or below: how deep a scene's hierarchy goes is up to its user.
void AddGroupMembers(INode* head, RenderIDSet& ids) {
    std::vector<INode*> pending{head};
    while (!pending.empty()) {
        INode* parent = pending.back();
        pending.pop_back();
        for (int i = 0; i < parent->NumberOfChildren(); ++i) {
            INode* child = parent->GetChildNode(i);
            if (!child) continue;
            if (child->IsGroupMember()) AddOwnRenderID(child, ids);
            pending.push_back(child);
        }
    }
}

}  // namespace

void AddRenderIDs(INode* node, RenderIDSet& ids) {
    if (!node) return;
    if (node->IsGroupHead()) {
        AddGroupMembers(node, ids);
    } else {
        AddOwnRenderID(node, ids);
    }
}

void AddRenderIDs(ILayerProperties* layer, RenderIDSet& ids) {
    std::vector<ILayerProperties*> pending;
    if (layer) pending.push_back(layer);
    while (!pending.empty()) {
        ILayerProperties* next = pending.back();
        pending.pop_back();
        for (int i = 0; i < next->getNumChildren(); ++i) {
            if (ILayerProperties* child = next->getChild(i)) pending.push_back(child);
        }
        Tab<INode*> nodes;
        next->Nodes(nodes);
        for (int i = 0; i < nodes.Count(); ++i)
            AddRenderIDs(nodes[i], ids);
    }
}

void AddRenderIDs(INamedSelectionSetManager& sets, int setIndex, RenderIDSet& ids) {
    if (setIndex < 0 || setIndex >= sets.GetNumNamedSelSets()) return;
    for (int i = 0; i < sets.GetNamedSelSetItemCount(setIndex); ++i)
        AddRenderIDs(sets.GetNamedSelSetItem(setIndex, i), ids);
}

}  // namespace sources
