// Whole G-Buffer channels as layers of false colours.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// A hidden layer for each channel that is switched on and that the frame has, in a layer set if the
// user wants one. Colours above white need a 32-bit document.
void AddGBufferLayers(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
