#include "effect/progress_window.h"

#include <maxapi.h>
#include <windowtree.h>

#include <string_view>

namespace effect {
namespace {

struct ControlClass {
    int id;
    const MCHAR* className;
};

constexpr ControlClass knownControls[] = {
    {2, _M("Button")},
    {1345, _M("msctls_progress32")},
    {1346, _M("msctls_progress32")},
    {progressTextControl, _M("Static")},
    {1280, _M("RollupWindow")},
};

constexpr const MCHAR* dialogClass = _M("#32770");

bool HasClass(HWND window, const MCHAR* className) {
    MCHAR name[64] = {};
    return window && GetClassName(window, name, static_cast<int>(std::size(name))) > 0 &&
           std::basic_string_view<MCHAR>(name) == className;
}

bool IsRenderProgressWindow(HWND window) {
    if (!HasClass(window, dialogClass)) return false;
    if (GetParent(window) != GetCOREInterface()->GetMAXHWnd()) return false;
    for (const ControlClass& control : knownControls) {
        if (!HasClass(GetDlgItem(window, control.id), control.className)) return false;
    }
    return true;
}

}  // namespace

HWND FindRenderProgressWindow() {
    HWND window = FindWindow(dialogClass, _M("Rendering"));
    if (IsRenderProgressWindow(window)) return window;
    for (window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
        if (IsRenderProgressWindow(window)) return window;
    }
    return nullptr;
}

}  // namespace effect
