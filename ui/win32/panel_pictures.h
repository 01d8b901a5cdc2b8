// The pictures that the rollups share.
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace ui {

// What a matte becomes, pictures side by side (IDB_OUTPUT_KINDS). Loaded when it is asked for; null
// where it can't be had.
HBITMAP OutputKindPictures();
// A rollup closes: whoever draws next loads the pictures again.
void DropOutputKindPictures();

// Check boxes of the lists. The lists use the pictures and don't own them, so they go when all
// rollups are closed.
HIMAGELIST CheckPictures();
void DropCheckPictures();

}  // namespace ui
