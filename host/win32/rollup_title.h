// The bar above a rollup's dialog: a button, so that the keyboard reaches it, which the rollup
// window draws.
#pragma once

#include <maxtypes.h>

namespace host {

// A bold font of the system's own size; the caller's to delete.
HFONT CreateRollupTitleFont();
// Pixels.
int RollupTitleHeight(HFONT font);

// Below all other children of `parent`, which gets its BN_CLICKED and draws it. The font isn't
// owned. Null when the system refuses it.
HWND CreateRollupTitle(HWND parent, const MCHAR* title, HFONT font);

// What WM_DRAWITEM asks for.
void DrawRollupTitle(const DRAWITEMSTRUCT& item, bool open);

}  // namespace host
