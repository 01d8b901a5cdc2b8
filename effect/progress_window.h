// The host's window that shows how far a render is. It has no id of its own and is told by the
// controls that it holds.
#pragma once

#include <maxtypes.h>

namespace effect {

// The line of text in it.
constexpr int progressTextControl = 1348;

// Null when it isn't open.
HWND FindRenderProgressWindow();

}  // namespace effect
