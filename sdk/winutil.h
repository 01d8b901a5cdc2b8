// Small services of the host for dialogs.
#pragma once

#include "maxtypes.h"

// While a text is typed the host's keyboard commands are to be off. Calls are counted: each
// disabling wants an enabling.
void DisableAccelerators();
void EnableAccelerators();

// In the middle of `parent`, or of the screen without one, and never out of it.
void CenterWindow(HWND window, HWND parent);

namespace MaxSDK {

// 1.0 is 96 dots per inch.
float GetUIScaleFactor();

}  // namespace MaxSDK
