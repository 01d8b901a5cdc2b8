// Keeps the effect's lists in step with a scene that changes under it.
#pragma once

class IParamBlock2;

namespace effect {

// Takes the names of selection sets that the scene no longer has out of the list, as one step that
// the user can undo.
void SyncSelectionSets(IParamBlock2& pblock);

// Takes the entries whose object was deleted out of the list of objects, each as a step of its own.
void CleanupDeletedObjects(IParamBlock2& pblock);

}  // namespace effect
