// Where gamma and V-Ray's colour corrections go in this frame: into the pixels, and of which
// layers, or into an adjustment layer.
#pragma once

class IParamBlock2;

namespace effect {

// Values of gammaCorrectConfig and colorCorrectConfig.
enum CorrectionConfig : int {
    correctRenderOnly = 0,
    correctChosenElements = 1,
    correctAllElements = 2,
    correctByAdjustmentLayer = 3,
};

struct ColorDecisions {
    // The host's file gamma has an effect at all; never in 32-bit documents. The merged image is
    // corrected whenever this is set.
    bool gammaActive = false;
    bool gammaToRender = false;
    bool gammaToElements = false;
    // V-Ray's frame buffer corrections are wanted, and V-Ray's frame buffer is in use.
    bool ccActive = false;
    bool ccToElements = false;
};

ColorDecisions DecideColors(IParamBlock2& pblock);

}  // namespace effect
