// Whether there is anything in a picture's channels.
#pragma once

#include <span>

#include "psdfile/channel_source.h"

namespace effect {

// True when no 16-bit sample of `width` x `height` pixels is above 0. Empty pointers are passed
// over, and a source without a row has no more from there on.
bool AreSourcesEmpty(int width, int height,
                     std::span<const psdfile::PSDChannelImageDataSourcePtr> sources);

}  // namespace effect
