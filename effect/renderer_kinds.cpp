#include "effect/renderer_kinds.h"

#include <iparamb2.h>

namespace effect {

IParamBlock2* VRayFrameBufferSettings(Renderer* renderer) {
    return IsClass(renderer, VRAY_CLASS_ID) ? renderer->GetParamBlock(vrayFrameBufferBlock)
                                            : nullptr;
}

bool UsesVRayFrameBuffer(Renderer* renderer) {
    IParamBlock2* settings = VRayFrameBufferSettings(renderer);
    return settings && settings->GetInt(vrayFrameBufferOn) > 0;
}

}  // namespace effect
