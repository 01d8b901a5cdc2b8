#include "ui/object_rows.h"

#include <iparamb2.h>
#include <maxapi.h>

#include <algorithm>
#include <set>
#include <unordered_set>

#include "effect/undo_step.h"
#include "plugin/parameters.h"

namespace ui {
namespace {

constexpr ParamID objectList = "objectList"_param;

std::set<int> RowsInList(IParamBlock2& pblock, std::span<const int> rows) {
    const int count = pblock.Count(objectList);
    std::set<int> found;
    for (const int row : rows) {
        if (row >= 0 && row < count) found.insert(row);
    }
    return found;
}

std::vector<ReferenceTarget*> SelectedNodesToAdd(IParamBlock2& pblock) {
    std::unordered_set<INode*> listed;
    const int entries = pblock.Count(objectList);
    for (int i = 0; i < entries; ++i)
        listed.insert(pblock.GetINode(objectList, 0, i));
    Interface* host = GetCOREInterface();
    std::vector<ReferenceTarget*> nodes;
    const int count = host->GetSelNodeCount();
    for (int i = 0; i < count; ++i) {
        INode* node = host->GetSelNode(i);
        if (node && !listed.contains(node)) nodes.push_back(node);
    }
    return nodes;
}

void SwapEntries(IParamBlock2& pblock, int row, int other) {
    ReferenceTarget* moving = pblock.GetINode(objectList, 0, row);
    ReferenceTarget* displaced = pblock.GetINode(objectList, 0, other);
    pblock.SetValue(objectList, 0, displaced, row);
    pblock.SetValue(objectList, 0, moving, other);
}

}  // namespace

bool IsInObjectList(IParamBlock2& pblock, INode* node) {
    const int count = pblock.Count(objectList);
    for (int i = 0; i < count; ++i) {
        if (pblock.GetINode(objectList, 0, i) == node) return true;
    }
    return false;
}

void AddSelectedObjects(IParamBlock2& pblock) {
    std::vector<ReferenceTarget*> nodes = SelectedNodesToAdd(pblock);
    if (nodes.empty()) return;
    effect::UndoStep step;
    // All at once: under the hold each change of the list's length keeps a copy of it.
    pblock.Append(objectList, static_cast<int>(nodes.size()), nodes.data());
    step.Accept(_M("Add Objects"));
}

void RemoveObjects(IParamBlock2& pblock, std::span<const int> rows) {
    const std::set<int> removed = RowsInList(pblock, rows);
    if (removed.empty()) return;
    effect::UndoStep step;
    // Rows that lie together go at once. From the last to the first, so that each row still holds
    // when its turn comes.
    for (auto last = removed.rbegin(); last != removed.rend();) {
        int first = *last;
        const int end = first + 1;
        while (++last != removed.rend() && *last == first - 1)
            --first;
        pblock.Delete(objectList, first, end - first);
    }
    step.Accept(_M("Remove Objects"));
}

std::vector<int> MoveObjects(IParamBlock2& pblock, std::span<const int> rows, int delta) {
    const std::set<int> moved = RowsInList(pblock, rows);
    if (moved.empty()) return {};
    const int count = pblock.Count(objectList);
    // From the side that they move to, so that neighbours don't collide.
    std::vector<int> order(moved.begin(), moved.end());
    if (delta > 0) std::reverse(order.begin(), order.end());
    std::set<int> places;
    effect::UndoStep step;
    for (const int row : order) {
        const int target = row + delta;
        // A neighbour that had to stay is in the way.
        const bool moves = target >= 0 && target < count && !places.count(target);
        if (moves) SwapEntries(pblock, row, target);
        places.insert(moves ? target : row);
    }
    step.Accept(_M("Move Objects"));
    return {places.begin(), places.end()};
}

}  // namespace ui
