#include "ui/win32/rollup_controls.h"

#include <custcont.h>
#include <string>

#include "ui/rollup_buttons.h"

namespace ui {
namespace {

// A control that was got of a window, released at the end of the scope; null for another window.
template <class Control, Control* (*get)(HWND), void (*release)(Control*)>
class Got {
  public:
    explicit Got(HWND window) : control(window ? get(window) : nullptr) {}
    ~Got() {
        if (control) release(control);
    }
    Got(const Got&) = delete;
    Got& operator=(const Got&) = delete;

    explicit operator bool() const { return control != nullptr; }
    Control* operator->() const { return control; }

  private:
    Control* control;
};
using GotButton = Got<ICustButton, GetICustButton, ReleaseICustButton>;
using GotEdit = Got<ICustEdit, GetICustEdit, ReleaseICustEdit>;

void SetUpButton(HWND window, const RollupButton& look) {
    const GotButton button(window);
    if (!button) return;
    button->SetType(look.isCheckButton ? CBT_CHECK : CBT_PUSH);
    button->Execute(flatButton);
    button->SetTooltip(true, look.toolTip);
    if (!look.picture) return;
    button->SetIconByName(MSTR(look.picture), buttonPictureSize, buttonPictureSize);
}

}  // namespace

void SetUpButtons(IParamMap2& map) {
    for (const RollupButton& look : RollupButtons()) {
        if (look.map == map.GetMapID()) SetUpButton(GetDlgItem(map.GetHWnd(), look.control), look);
    }
}

void EnableControl(HWND control, bool on) {
    if (!control || on == (IsWindowEnabled(control) != FALSE)) return;
    if (!on && HasKeyboard(control)) SendMessageW(GetParent(control), WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(control, on);
}

// The system does a lot with a window that is to stay as it is.
void ShowControl(HWND control, bool on) {
    const bool isShown = (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0;
    if (on != isShown) ShowWindow(control, on ? SW_SHOWNA : SW_HIDE);
}

bool HasKeyboard(HWND control) {
    HWND focus = GetFocus();
    return control && focus && (focus == control || IsChild(control, focus));
}

RECT PlaceInDialog(HWND control) {
    RECT area{};
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&area), 2);
    return area;
}

MSTR EditText(HWND control) {
    const GotEdit edit(control);
    if (!edit) return {};
    std::wstring text(static_cast<std::size_t>(edit->GetTextLength()) + 1, L'\0');
    edit->GetText(text.data(), static_cast<int>(text.size()));
    return MSTR(text.c_str());
}

void SetEditText(HWND control, const MSTR& text) {
    const GotEdit edit(control);
    if (edit) edit->SetText(text.data());
}

void NotifyOnEachKey(HWND control) {
    const GotEdit edit(control);
    if (edit) edit->SetNotifyOnEachKey(TRUE);
}

void MakeCheckButton(HWND control) {
    const GotButton button(control);
    if (button) button->SetType(CBT_CHECK);
}

void CheckButton(HWND control, bool on) {
    const GotButton button(control);
    if (button) button->SetCheck(on);
}

void ShowOutputGroup(IParamMap2& map, const OutputAsGroup& group) {
    const OutputAsControls shown = ShowOutputAs(*map.GetParamBlock(), group);
    HWND dialog = map.GetHWnd();
    EnableControl(GetDlgItem(dialog, group.label), shown.enabled);
    map.Enable(group.outputAs, shown.enabled);
    ShowControl(GetDlgItem(dialog, group.folder), shown.folderShown);
}

}  // namespace ui
