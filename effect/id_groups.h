// The mattes of the object IDs and of the material IDs that the user listed.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// One matte for each ID of the list, in its order. Without the channels that the style needs
// neither adds anything.
void AddObjectIDGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);
void AddMaterialIDGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
