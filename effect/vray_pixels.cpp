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

IVRayPixelBuffer* VRayPixels(Renderer* renderer) {
    IVRayImage* image = ImageOf(renderer);
    void* answer = image ? image->GetInterface(VRAY_PIXEL_BUFFER_INTERFACE) : nullptr;
    auto* pixels = static_cast<IVRayPixelBuffer*>(answer);
    if (pixels) pixels->Prepare();
    return UsesVRayFrameBuffer(renderer) ? pixels : nullptr;
}

}  // namespace effect
