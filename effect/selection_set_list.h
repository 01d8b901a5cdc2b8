// Which of the scene's named selection sets are on: those whose name stands in the effect's list.
#pragma once

#include <strclass.h>

class IParamBlock2;

namespace effect {

// Names are compared as a whole and by case.
bool IsSelectionSetOn(IParamBlock2& pblock, const MSTR& name);

// Adds all of the scene's named selection sets to the list.
void SwitchAllSelectionSetsOn(IParamBlock2& pblock);

}  // namespace effect
