// The rendered image's channels as sources: what the render output layer and the merged image have
// in common.
#pragma once

#include "effect/frame.h"

namespace effect {

// Whether the sRGB curve stands in for the host's gamma.
bool UsesSRGBVariant(const Frame& frame);

// All of these come from V-Ray's frame buffer when it is in use, and else from the bitmap.

// `selector` is one of sources::selectRed, selectGreen, selectBlue. Empty without an input.
psdfile::PSDChannelImageDataSourcePtr RenderColor(const Frame& frame, int selector,
                                                  bool gammaCorrect);

// The same without the sRGB curve, whatever the settings say. Never empty.
psdfile::PSDChannelImageDataSourcePtr PlainRenderColor(const Frame& frame, int selector,
                                                       bool premultiplied, bool gammaCorrect);

// Never gamma corrected. Empty when the render has no alpha.
psdfile::PSDChannelImageDataSourcePtr RenderAlpha(const Frame& frame);

// The alpha of the merged image, for which V-Ray's frame buffer has a channel of its own.
psdfile::PSDChannelImageDataSourcePtr MergedAlpha(const Frame& frame);

}  // namespace effect
