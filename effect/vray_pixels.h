// V-Ray's own frame buffer as the effect uses it: the frame's pixels, and the colour corrections
// that they are read with.
#pragma once

#include <render.h>
#include <vrayframebuffer.h>

namespace effect {

// Both live as long as the frame; null when there is none.
struct VRayState {
    IVRayPixelBuffer* buffer = nullptr;
    // The frame goes there, and not to the host's bitmap.
    bool isInUse = false;
    IVRayColorCorrections* corrections = nullptr;
};

// Nothing of either for other renderers.
VRayState FindVRayState(Renderer* renderer);

// The frame's pixels, ready to be read with the corrections that are set by now; null where the
// frame goes to the host's bitmap.
IVRayPixelBuffer* PreparePixels(const VRayState& state);

}  // namespace effect
