// V-Ray's own frame buffer as a source of the frame's pixels.
#pragma once

#include <render.h>
#include <vrayframebuffer.h>

namespace effect {

// Ready to be read; null for other renderers, and where the frame goes to the host's bitmap. Lives
// as long as the frame.
IVRayPixelBuffer* VRayPixels(Renderer* renderer);

}  // namespace effect
