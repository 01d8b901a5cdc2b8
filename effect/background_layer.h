// A white fill behind it all.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

void AddBackgroundLayer(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
