// The about box: a modal dialog over the caller's window, with the texts that the caller gives.
#include <windows.h>

#include <algorithm>

#include "ui/about/about_layout.h"
#include "ui/about/about_resource.h"
#include "ui/about_texts.h"

namespace about {
namespace {

struct AboutBox {
    const ui::AboutText* texts;
    int count;
    HFONT labelFont = nullptr;
};

HINSTANCE ThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ThisModule), &module);
    return module;
}

HFONT FontOf(HWND dialog) {
    return reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
}

HFONT BoldFontOf(HWND dialog) {
    LOGFONTW font{};
    GetObjectW(FontOf(dialog), sizeof font, &font);
    font.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&font);
}

SIZE SizeOf(HDC context, HFONT font, const MCHAR* text) {
    HGDIOBJ before = SelectObject(context, font);
    SIZE size{};
    GetTextExtentPoint32W(context, text, lstrlenW(text), &size);
    SelectObject(context, before);
    return size;
}

Layout LayoutOf(HWND dialog, const AboutBox& box) {
    // In the dialog's own units.
    RECT units{0, 0, 8, 10};
    MapDialogRect(dialog, &units);
    Layout layout;
    layout.gap = units.right;
    layout.margin = units.bottom;
    HDC context = GetDC(dialog);
    for (int row = 0; row < box.count; ++row) {
        const SIZE label = SizeOf(context, box.labelFont, box.texts[row].label);
        const SIZE text = SizeOf(context, FontOf(dialog), box.texts[row].text);
        layout.labelWidth = std::max<int>(layout.labelWidth, label.cx);
        layout.textWidth = std::max<int>(layout.textWidth, text.cx);
        layout.lineHeight = std::max<int>(layout.lineHeight, std::max(label.cy, text.cy));
    }
    ReleaseDC(dialog, context);
    return layout;
}

void AddText(HWND dialog, const MCHAR* text, const RECT& place, HFONT font) {
    HWND control = CreateWindowExW(
        0, L"STATIC", text, WS_CHILD | WS_VISIBLE | SS_NOPREFIX, place.left, place.top,
        place.right - place.left, place.bottom - place.top, dialog, nullptr, ThisModule(), nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

// Around the texts, with the button below them, in the middle of the owner and on its screen.
void FitWindow(HWND dialog, SIZE content) {
    HWND button = GetDlgItem(dialog, IDOK);
    RECT place{};
    GetWindowRect(button, &place);
    const LONG buttonWidth = place.right - place.left;
    const LONG buttonHeight = place.bottom - place.top;
    const LONG width = std::max(content.cx, 2 * buttonWidth);
    RECT units{0, 0, 0, 10};
    MapDialogRect(dialog, &units);
    SetWindowPos(button, nullptr, (width - buttonWidth) / 2, content.cy, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
    RECT whole{0, 0, width, content.cy + buttonHeight + units.bottom};
    AdjustWindowRectEx(&whole, static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(dialog, GWL_EXSTYLE)));
    HWND owner = GetParent(dialog);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(owner ? owner : dialog, MONITOR_DEFAULTTONEAREST), &monitor);
    RECT around = monitor.rcWork;
    if (owner) GetWindowRect(owner, &around);
    const SIZE size{whole.right - whole.left, whole.bottom - whole.top};
    const LONG left = (around.left + around.right - size.cx) / 2;
    const LONG top = (around.top + around.bottom - size.cy) / 2;
    SetWindowPos(dialog, nullptr,
                 std::max(monitor.rcWork.left, std::min(left, monitor.rcWork.right - size.cx)),
                 std::max(monitor.rcWork.top, std::min(top, monitor.rcWork.bottom - size.cy)),
                 size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Initialise(HWND dialog, AboutBox& box) {
    box.labelFont = BoldFontOf(dialog);
    const Layout layout = LayoutOf(dialog, box);
    for (int row = 0; row < box.count; ++row) {
        const ui::AboutText& shown = box.texts[row];
        if (StartsGroup(box.texts, row)) {
            AddText(dialog, shown.label, LabelPlace(layout, box.texts, row), box.labelFont);
        }
        AddText(dialog, shown.text, TextPlace(layout, box.texts, row), FontOf(dialog));
    }
    FitWindow(dialog, ContentSize(layout, box.texts, box.count));
}

INT_PTR CALLBACK AboutProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        Initialise(dialog, *reinterpret_cast<AboutBox*>(lParam));
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

}  // namespace
}  // namespace about

extern "C" void ShowAbout(HWND parent, const ui::AboutText* texts, int count) {
    about::AboutBox box{texts, count};
    DialogBoxParamW(about::ThisModule(), MAKEINTRESOURCEW(IDD_ABOUT), parent, about::AboutProcedure,
                    reinterpret_cast<LPARAM>(&box));
    if (box.labelFont) DeleteObject(box.labelFont);
}
