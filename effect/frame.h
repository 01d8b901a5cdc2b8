// What the groups of the layer stack know of the frame that is being saved.
#pragma once

#include <bitmap.h>

#include "effect/color_decisions.h"
#include "psdfile/channel_source.h"

class IParamBlock2;

namespace effect {

// Where the frame's pixels come from.
struct PSDFrameSources {
    // As given to Apply; may be null. Not owned; lives until the document is written.
    Bitmap* bitmap = nullptr;
};

struct Frame {
    PSDFrameSources sources;
    IParamBlock2& pblock;
    ColorDecisions colors;
    bool premultiply = true;
    // Pixels.
    int width = 0;
    int height = 0;
    // Solid 0 and 255 in the frame's width.
    psdfile::PSDChannelImageDataSourcePtr blackSource;
    psdfile::PSDChannelImageDataSourcePtr whiteSource;
};

}  // namespace effect
