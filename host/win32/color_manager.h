// The colours of the host's windows: the system's own, unless the host is told others.
// icolorman.h's colour manager answers them: kWindow is the background of lists and edits
// (COLOR_WINDOW) and kWindowText what is written there (COLOR_WINDOWTEXT); any other number is
// black.
#pragma once

#include <windows.h>

#include <optional>

namespace host {

// In place of the system's colour of that number (COLOR_BTNFACE); nothing gives the system's back.
// Windows that show already take the colour when they are next painted.
void SetThemeColor(int which, std::optional<COLORREF> color);

// `percent` of 100 parts are the second's.
COLORREF MixedColor(COLORREF first, COLORREF second, int percent);

}  // namespace host
