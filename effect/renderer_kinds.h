// The renderers that the effect tells apart.
#pragma once

#include <render.h>

namespace effect {

constexpr Class_ID vrayClassID{0x73bab286, 0x77f8fd0c};
// Doesn't call effects by itself: RenderBegin, Apply and RenderEnd come from notifications.
constexpr Class_ID coronaClassID{0x62a85dcc, 0x523c3604};
// Renders fields, and hands over to class B for the length of Apply.
constexpr Class_ID rendererClassA{0x58f67d6c, 0x4fcf3bc3};
constexpr Class_ID rendererClassB{0x3e7d7eba, 0x14c036ab};
// Never saved.
constexpr Class_ID rendererClassC{0x0cf12ab7, 0x03762873};

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
