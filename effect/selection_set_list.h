// Which of the scene's named selection sets are on: those whose name stands in the effect's list.
#pragma once

#include <strclass.h>

#include <string>
#include <unordered_set>
#include <vector>

class IParamBlock2;

namespace effect {

// What a name in the list means, and what a set is that the effect meets for the first time.
constexpr bool listedIsOn = true;
constexpr bool newSetIsOn = true;

using SetName = std::basic_string<MCHAR>;
using SetNames = std::unordered_set<SetName>;

// In the scene's order; a name may be there twice.
std::vector<SetName> SelectionSetsOfScene();

SetNames ListedSelectionSets(IParamBlock2& pblock);
// Names are compared as a whole and by case.
bool IsSelectionSetOn(const SetNames& listed, const MSTR& name);

// Adds all of the scene's named selection sets to the list.
void SwitchAllSelectionSetsOn(IParamBlock2& pblock);

// Adds the name unless it is there.
void SelectionSetCreated(IParamBlock2& pblock, const MSTR& name);

// A set that was on stays on under its new name, which stands in the list once then.
void SelectionSetRenamed(IParamBlock2& pblock, const MSTR& oldName, const MSTR& newName);

}  // namespace effect
