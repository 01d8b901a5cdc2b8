#include "effect/scene_sync.h"

#include <INamedSelectionSetManager.h>
#include <iparamb2.h>

#include <vector>

#include "effect/selection_set_list.h"
#include "effect/undo_step.h"
#include "plugin/parameters.h"

namespace effect {

void SyncSelectionSets(IParamBlock2& pblock) {
    constexpr ParamID list = "namedSelectionSetsList"_param;
    if (!INamedSelectionSetManager::GetInstance()) return;
    const std::vector<SetName> sets = SelectionSetsOfScene();
    const SetNames inScene(sets.begin(), sets.end());
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
