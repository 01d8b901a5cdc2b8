// The renderers that the effect tells apart.
#pragma once

#include <render.h>
#include <rendererclasses.h>

namespace effect {

inline bool IsClass(Renderer* renderer, const Class_ID& id) {
    return renderer && renderer->ClassID() == id;
}

// V-Ray's own settings of its frame buffer: integers of its parameter block 15.
constexpr int vrayFrameBufferBlock = 15;
constexpr short vrayFrameBufferOn = 170;
constexpr short vrayFrameBufferWidth = 171;
constexpr short vrayFrameBufferHeight = 172;
constexpr short vrayMemoryFrameBuffer = 189;
constexpr short vrayTakeSizeFromHost = 228;

// Null for any other renderer, and for a V-Ray without the block.
IParamBlock2* VRayFrameBufferSettings(Renderer* renderer);

// V-Ray keeps the frame in a frame buffer of its own.
bool UsesVRayFrameBuffer(Renderer* renderer);

}  // namespace effect
