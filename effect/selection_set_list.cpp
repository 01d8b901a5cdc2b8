#include "effect/selection_set_list.h"

#include <INamedSelectionSetManager.h>
#include <iparamb2.h>

#include "plugin/parameters.h"

namespace effect {
namespace {

constexpr ParamID setsThatAreOn = "namedSelectionSetsList"_param;

// -1 for a name that isn't in the list.
int IndexOfSet(IParamBlock2& pblock, const MSTR& name) {
    const int count = pblock.Count(setsThatAreOn);
    for (int i = 0; i < count; ++i) {
        if (MSTR(pblock.GetStr(setsThatAreOn, 0, i)) == name) return i;
    }
    return -1;
}

void AddSet(IParamBlock2& pblock, const MSTR& name) {
    const MCHAR* text = name.data();
    pblock.Append(setsThatAreOn, 1, &text);
}

}  // namespace

std::vector<SetName> SelectionSetsOfScene() {
    std::vector<SetName> names;
    INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance();
    const int count = sets ? sets->GetNumNamedSelSets() : 0;
    for (int i = 0; i < count; ++i) {
        MSTR name;
        if (sets->GetNamedSelSetName(i, name)) names.emplace_back(name.data());
    }
    return names;
}

SetNames ListedSelectionSets(IParamBlock2& pblock) {
    SetNames names;
    const int count = pblock.Count(setsThatAreOn);
    for (int i = 0; i < count; ++i)
        names.emplace(pblock.GetStr(setsThatAreOn, 0, i));
    return names;
}

bool IsSelectionSetOn(const SetNames& listed, const MSTR& name) {
    return listed.contains(name.data()) == listedIsOn;
}

void SwitchAllSelectionSetsOn(IParamBlock2& pblock) {
    if (newSetIsOn != listedIsOn) return;
    for (const SetName& name : SelectionSetsOfScene())
        AddSet(pblock, MSTR(name));
}

void SelectionSetCreated(IParamBlock2& pblock, const MSTR& name) {
    if (newSetIsOn != listedIsOn || name.isNull() || IndexOfSet(pblock, name) >= 0) return;
    AddSet(pblock, name);
}

void SelectionSetRenamed(IParamBlock2& pblock, const MSTR& oldName, const MSTR& newName) {
    const int index = IndexOfSet(pblock, oldName);
    // A set that was given its own name again is still there.
    if (index < 0 || oldName == newName) return;
    if (IndexOfSet(pblock, newName) >= 0) {
        pblock.Delete(setsThatAreOn, index, 1);
    } else {
        pblock.SetValue(setsThatAreOn, 0, newName.data(), index);
    }
}

}  // namespace effect
