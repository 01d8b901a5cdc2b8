// The button with which the user chooses the document's file.
#pragma once

#include "effect/psd_output.h"

namespace ui {

// Asks in the host's dialog over `parent`. The file that was chosen becomes `filename`, which is no
// longer derived from the render output then; nothing changes when the user cancels.
void ChooseFile(effect::PSDOutput& effect, HWND parent);

}  // namespace ui
