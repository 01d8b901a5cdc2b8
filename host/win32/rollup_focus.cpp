#include "host/win32/rollup_focus.h"

#include "host/win32/rollup_window.h"

namespace host {
namespace {

HHOOK focusHook = nullptr;
int rollupWindows = 0;

LRESULT CALLBACK OnFocusChange(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_SETFOCUS && wParam && GetKeyState(VK_LBUTTON) >= 0) {
        ShowInRollups(reinterpret_cast<HWND>(wParam));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

void StartFollowingFocus() {
    if (rollupWindows++ != 0) return;
    focusHook = SetWindowsHookExW(WH_CBT, OnFocusChange, nullptr, GetCurrentThreadId());
}

void StopFollowingFocus() {
    if (--rollupWindows > 0 || !focusHook) return;
    UnhookWindowsHookEx(focusHook);
    focusHook = nullptr;
}

}  // namespace host
