// Which scene layers go into the document. The choice is kept on the scene layer itself, so that it
// survives its renaming, under a number that each effect draws for itself: two effects have their
// own choices on the same layer.
#pragma once

#include <ref.h>

namespace effect {

// `chunkID` is the effect's sceneLayerAppDataChunkId. A layer that was never touched is on, and so
// is null.
bool IsSceneLayerOn(Animatable* layer, DWORD chunkID);

// Does nothing for null, and when the host is out of memory.
void SetSceneLayerOn(Animatable* layer, DWORD chunkID, bool on);

}  // namespace effect
