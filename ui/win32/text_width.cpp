#include "ui/win32/text_width.h"

namespace ui {

int TextWidthIn(HWND control, const MSTR& text) {
    HDC context = GetDC(control);
    auto* font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    HGDIOBJ before = font ? SelectObject(context, font) : nullptr;
    SIZE size{};
    GetTextExtentPoint32W(context, text.data(), text.Length(), &size);
    if (before) SelectObject(context, before);
    ReleaseDC(control, context);
    return static_cast<int>(size.cx);
}

}  // namespace ui
