// The about box, which a library of its own draws.
#pragma once

#include <windows.h>

namespace ui {

// Nothing opens where that library isn't.
void OpenAboutBox(HWND parent);

}  // namespace ui
