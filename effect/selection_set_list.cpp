#include "effect/selection_set_list.h"

#include <INamedSelectionSetManager.h>
#include <iparamb2.h>

#include "plugin/parameters.h"

namespace effect {

bool IsSelectionSetOn(IParamBlock2& pblock, const MSTR& name) {
    const int count = pblock.Count("namedSelectionSetsList"_param);
    for (int i = 0; i < count; ++i) {
        if (MSTR(pblock.GetStr("namedSelectionSetsList"_param, 0, i)) == name) return true;
    }
    return false;
}

void SwitchAllSelectionSetsOn(IParamBlock2& pblock) {
    INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance();
    const int count = sets ? sets->GetNumNamedSelSets() : 0;
    for (int i = 0; i < count; ++i) {
        MSTR name;
        if (!sets->GetNamedSelSetName(i, name)) continue;
        const MCHAR* text = name.data();
        pblock.Append("namedSelectionSetsList"_param, 1, &text);
    }
}

}  // namespace effect
