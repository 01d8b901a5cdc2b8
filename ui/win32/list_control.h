// A list view of a rollup. It holds no texts and no check marks; as it draws a row it asks for
// them, and the rollup answers from the rules.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <strclass.h>

#include <functional>

#include "ui/cell_text.h"
#include "ui/element_row_clicks.h"
#include "ui/list_views.h"

namespace ui {

// Colours of the host, styles, columns with their titles, and the pictures of the check boxes,
// which stay the caller's.
void SetUpList(HWND list, const ListView& kind, HIMAGELIST pictures);
// The colours alone, when the host's have changed.
void ColorList(HWND list);

// The rollup closes: the pictures may go before the list does.
void DropListPictures(HWND list);

// As many rows, row i with `i` as its parameter. Nothing is selected then, and no row is being
// renamed.
void FillList(HWND list, const ListView& kind, int rows);

// The rows below that one move up; their parameters fall by one, and the selection goes with its
// row.
void RemoveRow(HWND list, int row);

int RowCount(HWND list);
// Switches the selected row: the space bar, but for the one that selects.
bool IsSwitchKey(WORD key);
// -1 for none.
int SelectedRow(HWND list);
// `states` are the bits of LVIS_SELECTED and LVIS_FOCUSED that the row gets.
void SelectRow(HWND list, int row, UINT states);
void RedrawList(HWND list);
// For a run of changes in which nothing is drawn: the first call redraws the list, which is enough
// for all.
std::function<void()> RedrawOnce(HWND list);

RowHit HitOf(const NMITEMACTIVATE& click);
// As of a click on the row's check box.
constexpr RowHit CheckBoxOf(int row) {
    return {row, 0, LVHT_ONITEMSTATEICON};
}

// Answers LVN_GETDISPINFO by `text(row, column)` and `image(row)`, the state image.
template <class Text, class Image>
void GiveRow(NMLVDISPINFOW& asked, const Text& text, const Image& image) {
    LVITEMW& item = asked.item;
    const int row = static_cast<int>(item.lParam);
    if (item.mask & LVIF_TEXT) PutCellText(text(row, item.iSubItem), item.pszText, item.cchTextMax);
    if (item.mask & LVIF_STATE) {
        item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(image(row)));
        item.stateMask = LVIS_STATEIMAGEMASK;
    }
}

// In the screen's pixels: where a menu opens that the mouse asked for, and one of the keyboard's
// for that row, which comes into view.
POINT MousePlace();
POINT RowPlace(HWND list, int row);
// Lets the user choose. 0 for nothing. Whatever the panel shows may be gone then.
int TrackRowMenu(HWND owner, const RowMenu& menu, POINT at);

}  // namespace ui
