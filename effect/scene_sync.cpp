#include "effect/scene_sync.h"

#include <INamedSelectionSetManager.h>
#include <iparamb2.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "effect/undo_step.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

using SetName = std::basic_string<MCHAR>;

std::unordered_set<SetName> NamesInScene(INamedSelectionSetManager& sets) {
    std::unordered_set<SetName> names;
    const int count = sets.GetNumNamedSelSets();
    for (int i = 0; i < count; ++i) {
        MSTR name;
        if (sets.GetNamedSelSetName(i, name)) names.emplace(name.data());
    }
    return names;
}

}  // namespace

void SyncSelectionSets(IParamBlock2& pblock) {
    constexpr ParamID list = "namedSelectionSetsList"_param;
    INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance();
    if (!sets) return;
    const std::unordered_set<SetName> inScene = NamesInScene(*sets);
    // From the last to the first, so that each index still holds when its turn comes.
    std::vector<int> gone;
    for (int i = pblock.Count(list) - 1; i >= 0; --i) {
        if (inScene.count(pblock.GetStr(list, 0, i)) == 0) gone.push_back(i);
    }
    if (gone.empty()) return;
    UndoStep step;
    for (const int index : gone)
        pblock.Delete(list, index, 1);
    step.Accept(_M("Sync Sel. Sets"));
}

void CleanupDeletedObjects(IParamBlock2& pblock) {
    constexpr ParamID list = "objectList"_param;
    for (int i = pblock.Count(list) - 1; i >= 0; --i) {
        if (pblock.GetINode(list, 0, i)) continue;
        UndoStep step;
        pblock.Delete(list, i, 1);
        step.Accept(_M("Cleanup deleted objects"));
    }
}

}  // namespace effect
