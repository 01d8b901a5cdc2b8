// Message boxes over the host's main window.
#pragma once

#include "maxtypes.h"

#ifdef _WIN32
#include <windows.h>
#else
constexpr UINT MB_OK = 0x0000;
constexpr UINT MB_YESNO = 0x0004;
constexpr UINT MB_ICONQUESTION = 0x0020;
constexpr UINT MB_ICONEXCLAMATION = 0x0030;
constexpr int IDOK = 1;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
#endif

// `exType` bit: offers a check box with which the user wants no further box of this kind; bit of
// `exReturn`: it was ticked.
constexpr UINT MAX_MB_DONTSHOWAGAIN = 0x0001;
constexpr DWORD MAX_DONTSHOWAGAIN = 0x0001;

// The button that was pressed. The caller asks only when the host isn't quiet.
int MaxMsgBox(HWND owner, const MCHAR* text, const MCHAR* caption, UINT type, UINT exType = 0,
              DWORD* exReturn = nullptr);
