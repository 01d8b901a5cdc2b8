// The windows of the desktop, as far as an effect looks at them: the system's own calls on Windows,
// under their names; the host's elsewhere.
#pragma once

#include "maxtypes.h"

#ifdef _WIN32
#include <windows.h>
#else
constexpr UINT GW_HWNDNEXT = 2;

// Each gives null when there is no such window; a null class or title fits any.
HWND FindWindow(const MCHAR* className, const MCHAR* title);
HWND GetTopWindow(HWND parent);
HWND GetWindow(HWND window, UINT relation);
HWND GetParent(HWND window);
HWND GetDlgItem(HWND dialog, int id);
// Units copied to `name` without the terminator; 0 on failure.
int GetClassName(HWND window, MCHAR* name, int size);
BOOL SetWindowText(HWND window, const MCHAR* text);
#endif
