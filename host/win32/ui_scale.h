// The scale at which the host's windows are drawn. MaxSDK::GetUIScaleFactor (winutil.h) answers it.
#pragma once

#include <optional>

namespace host {

// In place of the system's: 1.0 is 96 dots per inch. Nothing gives the system's back, as does a
// scale that isn't above 0. Windows that are there keep their places, and draw themselves in the
// new scale when they are next painted.
void SetUIScaleFactor(std::optional<float> scale);

// Pixels of the screen for pixels at 96 dots per inch, to the nearest whole.
int UIScaled(int pixels);

}  // namespace host
