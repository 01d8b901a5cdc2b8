// What the panel shows of the document's depth.
#pragma once

class IParamBlock2;

namespace ui {

// Which of the three choices is on; none for a depth that isn't among them.
struct DepthControls {
    bool is8Bits = false;
    bool is16Bits = false;
    bool is32Bits = false;
    // Colours above white are of use in 32 bits alone.
    bool nonClampedColorEnabled = false;
};

DepthControls ShowDepth(IParamBlock2& pblock);

}  // namespace ui
