#include "ui/depth_controls.h"

#include <iparamb2.h>

#include "plugin/parameters.h"

namespace ui {

DepthControls ShowDepth(IParamBlock2& pblock) {
    const int depth = pblock.GetInt("bitDepth"_param);
    return {.is8Bits = depth == 8,
            .is16Bits = depth == 16,
            .is32Bits = depth == 32,
            .nonClampedColorEnabled = depth == 32};
}

}  // namespace ui
