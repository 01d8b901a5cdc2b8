#include "ui/win32/output_combo.h"

#include <icolorman.h>

#include <algorithm>
#include <string>
#include <unordered_map>

#include "ui/output_as_groups.h"
#include "ui/output_combo_pictures.h"

namespace ui {
namespace {

// What each combo's messages went to before. The system's own way to keep it looks up a property
// for each message.
std::unordered_map<HWND, WNDPROC>& FormerProcedures() {
    static std::unordered_map<HWND, WNDPROC> procedures;
    return procedures;
}

LRESULT CALLBACK OutputComboProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) return 1;
    const auto found = FormerProcedures().find(window);
    if (found == FormerProcedures().end()) return DefWindowProcW(window, message, wParam, lParam);
    WNDPROC former = found->second;
    if (message == WM_NCDESTROY) FormerProcedures().erase(found);
    return CallWindowProcW(former, window, message, wParam, lParam);
}

void ListenTo(HWND combo) {
    if (FormerProcedures().contains(combo)) return;
    FormerProcedures()[combo] = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(combo, GWLP_WNDPROC));
    SetWindowLongPtrW(combo, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OutputComboProcedure));
}

bool IsOutputCombo(UINT control) {
    return std::ranges::any_of(OutputAsGroups(), [control](const OutputAsGroup& group) {
        return group.combo == static_cast<int>(control);
    });
}

std::wstring TextOfItem(HWND combo, int item) {
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(item), 0);
    if (length <= 0) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(item),
                 reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// In the middle of the item's height, at its left.
void DrawPicture(HDC target, const RECT& area, HBITMAP pictures, int picture) {
    HDC strip = CreateCompatibleDC(target);
    HGDIOBJ before = SelectObject(strip, pictures);
    const int top = area.top + (area.bottom - area.top - outputPictureHeight) / 2;
    BitBlt(target, area.left + 1, top, outputPictureWidth, outputPictureHeight, strip,
           OutputPictureLeft(picture), 0, SRCCOPY);
    SelectObject(strip, before);
    DeleteDC(strip);
}

}  // namespace

void SetUpOutputCombo(HWND combo) {
    if (!combo) return;
    ListenTo(combo);
    // Some systems measure the field that shows the selection by the dialog's font alone.
    constexpr auto field = static_cast<WPARAM>(-1);
    if (SendMessageW(combo, CB_GETITEMHEIGHT, field, 0) < lowestOutputItem) {
        SendMessageW(combo, CB_SETITEMHEIGHT, field, lowestOutputItem);
    }
}

void MeasureOutputItem(MEASUREITEMSTRUCT& item) {
    if (!IsOutputCombo(item.CtlID)) return;
    item.itemHeight = std::max(item.itemHeight, static_cast<UINT>(lowestOutputItem));
}

void DrawOutputItem(const DRAWITEMSTRUCT& item, HBITMAP pictures) {
    if (!IsOutputCombo(item.CtlID)) return;
    const bool disabled = item.itemState & ODS_DISABLED;
    const bool highlighted = item.itemState & ODS_SELECTED;
    IColorManager& colors = *GetColorManager();
    const int background = disabled ? COLOR_BTNFACE : highlighted ? COLOR_HIGHLIGHT : COLOR_WINDOW;
    FillRect(item.hDC, &item.rcItem, colors.CustSysColorBrush(background));
    const int number = static_cast<int>(item.itemID);
    const int picture = OutputPicture(number, disabled, highlighted);
    if (picture < 0) return;
    if (pictures) DrawPicture(item.hDC, item.rcItem, pictures, picture);
    constexpr int gap = 6;
    RECT place = item.rcItem;
    place.left += outputPictureWidth + gap;
    const std::wstring text = TextOfItem(item.hwndItem, number);
    const int mode = SetBkMode(item.hDC, TRANSPARENT);
    const COLORREF color =
        SetTextColor(item.hDC, colors.CustSysColor(disabled ? COLOR_BTNSHADOW : COLOR_WINDOWTEXT));
    DrawTextW(item.hDC, text.c_str(), static_cast<int>(text.size()), &place,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    SetTextColor(item.hDC, color);
    SetBkMode(item.hDC, mode);
}

}  // namespace ui
