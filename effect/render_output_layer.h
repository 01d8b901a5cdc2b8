// The render itself as a layer, in one of five styles.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// Adds nothing without an input.
void AddRenderOutputLayer(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
