// V-Ray's own frame buffer as the effect uses it: the frame's pixels, and the colour corrections
// that they are read with.
#pragma once

#include <render.h>
#include <vrayframebuffer.h>

namespace effect {

// Both live as long as the frame.
struct VRayState {
    // Ready to be read; null where the frame goes to the host's bitmap.
    IVRayPixelBuffer* pixels = nullptr;
    // Null when the frame buffer has none. Given whether or not the pixels are.
    IVRayColorCorrections* corrections = nullptr;
};

// Nothing of either for other renderers.
VRayState FindVRayState(Renderer* renderer);

}  // namespace effect
