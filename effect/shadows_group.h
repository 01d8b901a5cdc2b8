// Shadows that were rendered to a file of their own.
#pragma once

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// The alpha of the image in `shadowPassSource`: the mask of a black fill that multiplies, or the
// transparency of a black layer. The image stays in frame.temporaryBitmap until the document is
// written. One that can't be read, or isn't of the frame's size, is an error in the host's log.
void AddShadowsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame);

}  // namespace effect
