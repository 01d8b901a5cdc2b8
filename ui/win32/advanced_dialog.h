// The dialog "Advanced Options".
#pragma once

#include <windows.h>

namespace effect {
class PSDOutput;
}

namespace ui {

// Modal over `parent`. The block has the new settings when the user presses OK.
void OpenAdvancedOptions(effect::PSDOutput& effect, HWND parent);

}  // namespace ui
