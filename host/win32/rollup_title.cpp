#include "host/win32/rollup_title.h"

#include <icolorman.h>

#include <string>

#include "host/win32/ui_scale.h"

namespace host {
namespace {

// A button takes a single "&" for the mark of a key.
std::wstring WithoutKeys(const MCHAR* title) {
    std::wstring text;
    for (const MCHAR* unit = title ? title : L""; *unit; ++unit) {
        text += *unit;
        if (*unit == L'&') text += L'&';
    }
    return text;
}

// Points down for an open rollup, and to the right for a closed one.
void DrawArrow(HDC dc, const RECT& square, bool open) {
    const int size = square.bottom - square.top;
    const LONG left = square.left;
    const LONG top = square.top;
    const POINT down[] = {{left, top + size / 4},
                          {left + size, top + size / 4},
                          {left + size / 2, top + size * 3 / 4}};
    const POINT right[] = {{left + size / 4, top},
                           {left + size / 4, top + size},
                           {left + size * 3 / 4, top + size / 2}};
    HGDIOBJ pen = SelectObject(dc, GetStockObject(NULL_PEN));
    HGDIOBJ brush = SelectObject(dc, GetColorManager()->CustSysColorBrush(COLOR_BTNTEXT));
    Polygon(dc, open ? down : right, 3);
    SelectObject(dc, brush);
    SelectObject(dc, pen);
}

}  // namespace

HFONT CreateRollupTitleFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

int RollupTitleHeight(HFONT font) {
    HDC dc = GetDC(nullptr);
    HGDIOBJ before = SelectObject(dc, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, before);
    ReleaseDC(nullptr, dc);
    return static_cast<int>(metrics.tmHeight) + 2 * UIScaled(3);
}

HWND CreateRollupTitle(HWND parent, const MCHAR* title, HFONT font) {
    HWND bar = CreateWindowExW(0, L"BUTTON", WithoutKeys(title).c_str(),
                               WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | BS_OWNERDRAW,
                               0, 0, 0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(bar, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return bar;
}

void DrawRollupTitle(const DRAWITEMSTRUCT& item, bool open) {
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, GetColorManager()->CustSysColorBrush(COLOR_BTNFACE));
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    DrawEdge(item.hDC, &area, pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    const int inset = UIScaled(3);
    InflateRect(&area, -inset, -inset);
    if ((item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT)) {
        RECT frame = area;
        InflateRect(&frame, 1, 1);
        DrawFocusRect(item.hDC, &frame);
    }
    const LONG arrow = UIScaled(8);
    const LONG middle = (area.top + area.bottom) / 2;
    area.left += inset;
    DrawArrow(item.hDC,
              {area.left, middle - arrow / 2, area.left + arrow, middle - arrow / 2 + arrow}, open);
    area.left += arrow + 2 * inset;

    wchar_t text[256] = {};
    GetWindowTextW(item.hwndItem, text, 256);
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetColorManager()->CustSysColor(COLOR_BTNTEXT));
    DrawTextW(item.hDC, text, -1, &area, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
}

}  // namespace host
