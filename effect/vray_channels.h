// Which channel of V-Ray's frame buffer each render element's pixels are in, and what becomes of
// the channels that no element stands for.
#pragma once

#include <vrayframebuffer.h>

#include <map>

#include "effect/frame.h"
#include "psdbuilder/psdbuilder.h"

class IRenderElement;
class IRenderElementMgr;

namespace effect {

struct VRayChannels {
    std::map<const IRenderElement*, int> indices;
    // Of `indices`.
    int largest = -1;

    // -1 for an element without a channel.
    int IndexOf(const IRenderElement* element) const;
};

// Goes by class and name. `elements` may be null. The debug output lists the buffer's channels, and
// the elements that aren't found.
VRayChannels FindVRayChannels(IVRayPixelBuffer& buffer, IRenderElementMgr* elements);

// Puts the channels behind those of the elements into a set of their own, last channel first; those
// of the denoiser only if the user wants them.
void AddExtraChannels(psdbuilder::PSDBuilder& builder, const Frame& frame,
                      const VRayChannels& channels);

}  // namespace effect
