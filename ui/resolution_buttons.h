// The buttons of usual resolutions.
#pragma once

class IParamBlock2;

namespace ui {

struct ResolutionButton {
    int control;
    // Dots per inch.
    float resolution;
};

inline constexpr ResolutionButton resolutionButtons[] = {
    {1146, 72.0F}, {1147, 150.0F}, {1148, 300.0F}};

// A click. Does nothing for another control.
void ClickResolution(IParamBlock2& pblock, int control);

}  // namespace ui
