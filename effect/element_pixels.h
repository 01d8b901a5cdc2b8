// Where one render element's pixels are, and how its channels become sources.
#pragma once

#include <bitmap.h>
#include <vrayframebuffer.h>

#include "psdfile/channel_source.h"

namespace effect {

struct ElementPixels {
    // The element's own bitmap; null for a channel of V-Ray's frame buffer. Not owned; as for
    // `vfb`, lives until the document is written.
    Bitmap* bitmap = nullptr;
    IVRayPixelBuffer* vfb = nullptr;
    int vfbChannel = -1;
    bool premultiplied = true;
    bool gammaCorrect = false;
    // V-Ray's frame buffer only: with its colour corrections.
    bool colorCorrect = false;

    bool HasAlpha() const;
    // `selector` is a sources::Selector.
    psdfile::PSDChannelImageDataSourcePtr Channel(int selector) const;
};

}  // namespace effect
