// The host's tool tips (custcont.h), over the system's tool tip window: one for each extender. A
// disabled control gets no mouse, and so shows no tip.
#include <custcont.h>

#include <commctrl.h>

#include <string>

#include "host/win32/ui_scale.h"

namespace host {
namespace {

// Beyond this width a line is broken. Without a limit the system would show "\n" as a blank.
constexpr int TIP_WIDTH = 400;

TTTOOLINFOW ToolOf(HWND control) {
    TTTOOLINFOW tool{};
    // Without the last field, which the older common controls don't know.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = GetParent(control);
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    return tool;
}

void TellTips(HWND tips, UINT message, TTTOOLINFOW& tool) {
    SendMessageW(tips, message, 0, reinterpret_cast<LPARAM>(&tool));
}

HWND NewTips(HWND control) {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    HWND tips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                                CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                GetAncestor(control, GA_ROOT), nullptr, nullptr, nullptr);
    SendMessageW(tips, TTM_SETMAXTIPWIDTH, 0, UIScaled(TIP_WIDTH));
    return tips;
}

}  // namespace
}  // namespace host

TooltipExtender::~TooltipExtender() {
    RemoveToolTips();
}

void TooltipExtender::SetToolTip(HWND control, const MSTR& text) {
    if (!IsWindow(control)) {
        return;
    }
    // The window goes with the one that owns it, which may be sooner than this object.
    if (!IsWindow(tips_)) {
        if (text.isNull()) {
            return;
        }
        tips_ = host::NewTips(control);
    }
    TTTOOLINFOW tool = host::ToolOf(control);
    host::TellTips(tips_, TTM_DELTOOLW, tool);
    if (!text.isNull()) {
        std::wstring copy = text.data();
        tool.lpszText = copy.data();
        host::TellTips(tips_, TTM_ADDTOOLW, tool);
    }
}

void TooltipExtender::RemoveToolTips() {
    if (IsWindow(tips_)) {
        DestroyWindow(tips_);
    }
    tips_ = nullptr;
}
