// The depth image, near objects light, in a range that stray fragments don't decide.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// As the mask of a white fill, or as a spare channel. Without depth in the G-Buffer nothing is
// added.
void AddDepthGroup(psdbuilder::PSDBuilder& builder, const Frame& frame, bool asLayer);

}  // namespace effect
