// The tool tips that a thread's windows have.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

inline BOOL CALLBACK KeepTips(HWND window, LPARAM list) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    if (std::wstring(name) == TOOLTIPS_CLASSW) {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    }
    return TRUE;
}

inline std::vector<HWND> TipWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), &KeepTips, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Once the mouse is over it. Nothing for a control without a tip.
inline std::optional<std::wstring> TipOf(HWND control) {
    SendMessageW(control, WM_SETCURSOR, reinterpret_cast<WPARAM>(control),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    for (HWND tips : TipWindows()) {
        wchar_t text[512] = {};
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V2_SIZE;
        tool.uFlags = TTF_IDISHWND;
        tool.hwnd = GetParent(control);
        tool.uId = reinterpret_cast<UINT_PTR>(control);
        if (!SendMessageW(tips, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool))) {
            continue;
        }
        tool.lpszText = text;
        SendMessageW(tips, TTM_GETTEXTW, 512, reinterpret_cast<LPARAM>(&tool));
        return text;
    }
    return std::nullopt;
}
