// The document's merged image: what a program shows that doesn't read layers.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// The frame itself, corrected whenever gamma is active.
void BuildMergedImage(psdbuilder::PSDBuilder& builder, const Frame& frame);

// A white page, which takes next to no room.
void BuildBlankMergedImage(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
