// Undo of what classes keep on objects that aren't theirs.
#pragma once

#include <ref.h>

namespace host {

// Before the chunk of these ids comes to the object or goes from it. Nothing is put for an object
// that is no target, nor without a hold.
void PutAppDataUndo(Animatable& object, Class_ID owner, SClass_ID ownerSuperClass, DWORD subID);

}  // namespace host
