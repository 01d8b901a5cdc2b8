// The dialog "File Exists".
#pragma once

#include "effect/library_services.h"

namespace ui {

// Modal over `parent`. A dialog that can't be made answers no, so that nothing is lost.
effect::OverwriteAnswer ShowOverwriteDialog(HWND parent, const MSTR& text);

}  // namespace ui
