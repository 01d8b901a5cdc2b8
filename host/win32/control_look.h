// How the host's controls look: the face of a button or of a spinner's arrow in each of its states,
// in the colour manager's colours and at the scale of the host's windows.
#pragma once

#include <windows.h>

#include <functional>

namespace host {

struct FaceState {
    bool enabled = true;
    // The pointer is over it.
    bool hot = false;
    bool pressed = false;
    bool checked = false;
    // What the enter key presses.
    bool isDefault = false;
    // Without a frame and with the parent's background, until something of the above holds.
    bool flat = false;
};

// Fills the rectangle.
void PaintFace(HDC dc, const RECT& place, const FaceState& state);
// Of a text or a picture on such a face.
COLORREF FaceTextColor(const FaceState& state);

// Fills with what lies behind a control, which its parent says (WM_CTLCOLORBTN).
void PaintBackground(HWND control, HDC dc, const RECT& place);

// A window's answer to WM_PAINT (`given` null) or WM_PRINTCLIENT (into `given`): calls `paint` with
// a picture of the client area that is shown as a whole, so that nothing flickers.
void PaintWindow(HWND window, HDC given, const std::function<void(HDC, const RECT&)>& paint);

}  // namespace host
