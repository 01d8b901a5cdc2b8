// The render camera and the scene's point helpers as data blocks of the document.
#pragma once

#include "effect/frame.h"
#include "effect/scene_snapshot.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// One block for the frame; in its second field a frame of fields has one a field that was seen.
void AddCameraBlock(psdbuilder::PSDBuilder& builder, const SceneSnapshots& snapshots,
                    const Frame& frame);

// One block for each point helper whose name fits `embedHelpersWildcard`, parents before their
// children.
void AddHelperBlock(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
