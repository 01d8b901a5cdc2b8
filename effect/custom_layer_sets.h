// Empty layer sets for the user's own work.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

void AddLayerSet1(psdbuilder::PSDBuilder& builder, const Frame& frame);
// Its mask may be the render's alpha.
void AddLayerSet2(psdbuilder::PSDBuilder& builder, const Frame& frame);
void AddLayerSet3(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
