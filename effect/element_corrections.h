// Whether a render element is corrected in its pixels.
#pragma once

#include "effect/frame.h"

namespace effect {

// By the host's file gamma. `chosen` is the element's own setting, which counts where the user
// chooses the elements.
bool CorrectsGamma(const Frame& frame, bool chosen);

// By V-Ray's colour corrections.
bool CorrectsColors(const Frame& frame, bool chosen);

}  // namespace effect
