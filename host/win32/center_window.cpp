#include "host/win32/center_window.h"

#include <winutil.h>

#include <algorithm>

namespace host {
namespace {

LONG CenteredStart(LONG length, LONG aroundStart, LONG aroundEnd, LONG lowest, LONG end) {
    const LONG start = aroundStart + (aroundEnd - aroundStart - length) / 2;
    return std::max(lowest, std::min(start, end - length));
}

}  // namespace

POINT CenteredPlace(SIZE size, const RECT& around, const RECT& limits) {
    return {CenteredStart(size.cx, around.left, around.right, limits.left, limits.right),
            CenteredStart(size.cy, around.top, around.bottom, limits.top, limits.bottom)};
}

}  // namespace host

void CenterWindow(HWND window, HWND parent) {
    RECT own;
    if (!GetWindowRect(window, &own)) {
        return;
    }
    // A minimised window is kept far out of the screen.
    const bool hasPlace = IsWindow(parent) && !IsIconic(parent);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(hasPlace ? parent : window, MONITOR_DEFAULTTONEAREST),
                    &monitor);
    RECT around = monitor.rcWork;
    if (hasPlace) {
        GetWindowRect(parent, &around);
    }
    POINT place =
        host::CenteredPlace({own.right - own.left, own.bottom - own.top}, around, monitor.rcWork);
    if (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) {
        ScreenToClient(GetParent(window), &place);
    }
    SetWindowPos(window, nullptr, place.x, place.y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
