// The rendered image's channels as sources: what the render output layer and the merged image have
// in common.
#pragma once

#include "effect/frame.h"

namespace effect {

// Whether the sRGB curve stands in for the host's gamma.
bool UsesSRGBVariant(const Frame& frame);

// `selector` is one of sources::selectRed, selectGreen, selectBlue. Empty without an input.
psdfile::PSDChannelImageDataSourcePtr RenderColor(const Frame& frame, int selector,
                                                  bool gammaCorrect);

// Never gamma corrected. Empty when the render has no alpha.
psdfile::PSDChannelImageDataSourcePtr RenderAlpha(const Frame& frame);

}  // namespace effect
