// How wide a text is in a control's font.
#pragma once

#include <strclass.h>
#include <windows.h>

namespace ui {

// Pixels, of one line.
int TextWidthIn(HWND control, const MSTR& text);

}  // namespace ui
