#include "effect/vray_pixels.h"

#include "effect/renderer_kinds.h"

namespace effect {
namespace {

IVRayImage* ImageOf(Renderer* renderer) {
    if (!renderer) return nullptr;
    auto* frameBuffer =
        static_cast<IVRayFrameBuffer*>(renderer->GetInterface(VRAY_FRAME_BUFFER_INTERFACE));
    return frameBuffer ? frameBuffer->GetImage() : nullptr;
}

}  // namespace

VRayState FindVRayState(Renderer* renderer) {
    IVRayImage* image = ImageOf(renderer);
    if (!image) return {};
    VRayState state;
    state.corrections =
        static_cast<IVRayColorCorrections*>(image->GetInterface(VRAY_COLOR_CORRECTIONS_INTERFACE));
    state.buffer = static_cast<IVRayPixelBuffer*>(image->GetInterface(VRAY_PIXEL_BUFFER_INTERFACE));
    state.isInUse = UsesVRayFrameBuffer(renderer);
    return state;
}

IVRayPixelBuffer* PreparePixels(const VRayState& state) {
    if (state.buffer) state.buffer->Prepare();
    return state.isInUse ? state.buffer : nullptr;
}

}  // namespace effect
