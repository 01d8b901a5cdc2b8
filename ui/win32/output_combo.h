// The combos that choose what a matte becomes: each item with a picture in front of its text.
#pragma once

#include <windows.h>

namespace ui {

// Takes the combo's background painting, so that it doesn't flicker, and makes room for a picture
// in the field that shows the selection. Goes with the window.
void SetUpOutputCombo(HWND combo);

void MeasureOutputItem(MEASUREITEMSTRUCT& item);
// `pictures` is the strip of bitmap IDB_OUTPUT_KINDS; null draws the text alone.
void DrawOutputItem(const DRAWITEMSTRUCT& item, HBITMAP pictures);

}  // namespace ui
