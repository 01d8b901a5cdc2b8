#include "host/win32/control_look.h"

#include <icolorman.h>

#include <algorithm>

#include "host/win32/color_manager.h"
#include "host/win32/ui_scale.h"

namespace host {
namespace {

// Parts of the highlight's colour in 100.
constexpr int HOT_TINT = 18;
constexpr int PRESSED_TINT = 45;
constexpr int CHECKED_TINT = 32;
constexpr int CHECKED_HOT_TINT = 40;

COLORREF LookColor(int which) {
    return GetColorManager()->CustSysColor(which);
}

void FillPlace(HDC dc, const RECT& place, COLORREF color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

int HighlightPercent(const FaceState& state) {
    if (!state.enabled) return state.checked ? CHECKED_TINT / 2 : 0;
    if (state.pressed) return PRESSED_TINT;
    if (state.checked) return state.hot ? CHECKED_HOT_TINT : CHECKED_TINT;
    return state.hot ? HOT_TINT : 0;
}

COLORREF FrameColor(const FaceState& state) {
    if (!state.enabled) return MixedColor(LookColor(COLOR_BTNFACE), LookColor(COLOR_BTNSHADOW), 50);
    if (state.pressed || state.checked || state.isDefault) return LookColor(COLOR_HIGHLIGHT);
    return LookColor(COLOR_BTNSHADOW);
}

}  // namespace

void PaintFace(HDC dc, const RECT& place, const FaceState& state) {
    const int tint = HighlightPercent(state);
    if (state.flat && tint == 0) {
        return;
    }
    const int width = std::max(1, UIScaled(1));
    FillPlace(dc, place, FrameColor(state));
    RECT inside = place;
    InflateRect(&inside, -width, -width);
    FillPlace(dc, inside, MixedColor(LookColor(COLOR_BTNFACE), LookColor(COLOR_HIGHLIGHT), tint));
}

COLORREF FaceTextColor(const FaceState& state) {
    return LookColor(state.enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
}

void PaintBackground(HWND control, HDC dc, const RECT& place) {
    auto* brush = reinterpret_cast<HBRUSH>(SendMessageW(GetParent(control), WM_CTLCOLORBTN,
                                                        reinterpret_cast<WPARAM>(dc),
                                                        reinterpret_cast<LPARAM>(control)));
    FillRect(dc, &place, brush ? brush : GetColorManager()->CustSysColorBrush(COLOR_BTNFACE));
}

void PaintWindow(HWND window, HDC given, const std::function<void(HDC, const RECT&)>& paint) {
    PAINTSTRUCT painting;
    HDC dc = given ? given : BeginPaint(window, &painting);
    RECT client;
    GetClientRect(window, &client);
    HDC picture = CreateCompatibleDC(dc);
    HBITMAP pixels =
        CreateCompatibleBitmap(dc, std::max(1L, client.right), std::max(1L, client.bottom));
    HGDIOBJ former = SelectObject(picture, pixels);
    paint(picture, client);
    BitBlt(dc, 0, 0, client.right, client.bottom, picture, 0, 0, SRCCOPY);
    SelectObject(picture, former);
    DeleteObject(pixels);
    DeleteDC(picture);
    if (!given) {
        EndPaint(window, &painting);
    }
}

}  // namespace host
