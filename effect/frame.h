// What the groups of the layer stack know of the frame that is being saved.
#pragma once

#include <bitmap.h>
#include <vrayframebuffer.h>

#include <memory>

#include "effect/color_decisions.h"
#include "psdfile/channel_source.h"

class IParamBlock2;
class RenderGlobalContext;

namespace effect {

class PSDOutput;

// Where the frame's pixels come from.
struct PSDFrameSources {
    // As given to Apply; may be null. Not owned; lives until the document is written.
    Bitmap* bitmap = nullptr;
    // Null unless V-Ray's frame buffer is in use; then pixels come from it. Lives as long.
    IVRayPixelBuffer* vfb = nullptr;
};

struct DeleteBitmap {
    void operator()(Bitmap* bitmap) const { bitmap->DeleteThis(); }
};
using OwnedBitmap = std::unique_ptr<Bitmap, DeleteBitmap>;

struct Frame {
    PSDFrameSources sources;
    PSDOutput& effect;
    // The effect's own.
    IParamBlock2& pblock;
    const RenderGlobalContext& gc;
    ColorDecisions colors;
    bool premultiply = true;
    // Pixels.
    int width = 0;
    int height = 0;
    // Solid 0 and 255 in the frame's width.
    psdfile::PSDChannelImageDataSourcePtr blackSource;
    psdfile::PSDChannelImageDataSourcePtr whiteSource;
    TimeValue time = 0;
    // An image that a group has loaded goes here, and lives until the document is written. Never
    // null while a group runs.
    OwnedBitmap* temporaryBitmap = nullptr;

    // Rows of another size than the document's can't be written.
    bool HasSize(int itsWidth, int itsHeight) const {
        return itsWidth == width && itsHeight == height;
    }
};

}  // namespace effect
