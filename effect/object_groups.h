// The mattes of the listed objects, of the scene layers, and of the named selection sets.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// Without the channels that the style needs none of them adds anything.

// One matte for each entry of the list of objects, in its order; an entry whose object was deleted
// is called "???". Hidden objects are left out unless hidden objects are rendered.
void AddObjectsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);

// One matte for each scene layer that is on for this effect, in the host's order. Hidden layers,
// and layers in hidden ones, are left out unless hidden objects are rendered.
void AddSceneLayersGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);

// One matte for each of the host's named selection sets that is on, in the host's order.
void AddSelectionSetsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
