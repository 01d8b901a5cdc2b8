// A window of rollups in a window of its own, and a dialog procedure that keeps what it gets.
#pragma once

#include <custcont.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "host/win32/control_classes.h"
#include "tests/host/win32/sample_rollups_ids.h"

class RollupStage {
  public:
    explicit RollupStage(int height = 300) {
        host::RegisterControlClasses();
        // Without being activated, as ControlStage.
        window = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_POPUP, 50, 50, 500, height,
                                 nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ShowWindow(window, SW_SHOWNOACTIVATE);
        rollupWindow = CreateWindowExW(0, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0, 500,
                                       height, window, nullptr, GetModuleHandleW(nullptr), nullptr);
        rollups = GetIRollup(rollupWindow);
    }
    RollupStage(const RollupStage&) = delete;
    RollupStage& operator=(const RollupStage&) = delete;
    ~RollupStage() {
        ReleaseIRollup(rollups);
        if (IsWindow(window)) DestroyWindow(window);
    }

    int Append(int dlgTemplate, const MCHAR* title = _M("Title"), DWORD flags = 0,
               DLGPROC procedure = nullptr, LPARAM param = 0) const {
        return rollups->AppendRollup(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dlgTemplate),
                                     procedure, title, param, flags);
    }
    // Of the rollup of that number: the n-th title from above.
    HWND Title(int number) const {
        std::vector<HWND> titles;
        for (HWND child = GetWindow(rollupWindow, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t name[32] = {};
            GetClassNameW(child, name, 32);
            if (_wcsicmp(name, L"BUTTON") == 0) titles.push_back(child);
        }
        std::sort(titles.begin(), titles.end(),
                  [&](HWND one, HWND other) { return Place(one).top < Place(other).top; });
        return titles.at(static_cast<std::size_t>(number));
    }
    // In the rollup window's client area.
    RECT Place(HWND child) const {
        RECT place{};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, rollupWindow, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    void Click(HWND title) const {
        SendMessageW(title, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        SendMessageW(title, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    }

    HWND window = nullptr;
    HWND rollupWindow = nullptr;
    IRollupWindow* rollups = nullptr;
};
