// The group of the render elements in the layer stack.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// Elements without pixels are left out.
void AddRenderElementsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);

// The body of the group, without the set around it.
void AddElementLayers(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
