#include "ui/win32/list_control.h"

#include <icolorman.h>
#include <winutil.h>

#include <cmath>
#include <utility>

#include "plugin/string_table.h"

namespace ui {

void ColorList(HWND list) {
    IColorManager& colors = *GetColorManager();
    ListView_SetBkColor(list, colors.GetColor(kWindow));
    ListView_SetTextBkColor(list, colors.GetColor(kWindow));
    ListView_SetTextColor(list, colors.GetColor(kWindowText));
}

void SetUpList(HWND list, const ListView& kind, HIMAGELIST pictures) {
    ColorList(list);
    ListView_SetExtendedListViewStyle(list, kind.extendedStyle);
    // The style brings check boxes of the system's own, which nobody else would destroy.
    if (HIMAGELIST own = ListView_SetImageList(list, pictures, LVSIL_STATE)) ImageList_Destroy(own);
    ListView_SetCallbackMask(list, LVIS_STATEIMAGEMASK);
    int index = 0;
    for (const ListColumn& column : kind.columns) {
        MSTR title(plugin::GetString(column.title));
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT | LVCF_WIDTH;
        info.pszText = const_cast<MCHAR*>(title.data());
        info.cx = static_cast<int>(
            std::lround(static_cast<float>(column.width) * MaxSDK::GetUIScaleFactor()));
        ListView_InsertColumn(list, index++, &info);
    }
}

void DropListPictures(HWND list) {
    ListView_SetImageList(list, nullptr, LVSIL_STATE);
}

namespace {

// A list lets one row be selected.
void SelectNothing(HWND list) {
    for (const int row : {SelectedRow(list), ListView_GetNextItem(list, -1, LVNI_FOCUSED)}) {
        if (row >= 0) ListView_SetItemState(list, row, 0, LVIS_SELECTED | LVIS_FOCUSED);
    }
}

}  // namespace

// Rows are all alike but for their numbers, so those that are there stay, and with them what is
// scrolled to.
void FillList(HWND list, const ListView& kind, int rows) {
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    if (kind.renamesRows) ListView_CancelEditLabel(list);
    SelectNothing(list);
    if (rows == 0) ListView_DeleteAllItems(list);
    for (int row = RowCount(list) - 1; row >= rows; --row)
        ListView_DeleteItem(list, row);
    ListView_SetItemCount(list, rows);
    for (int row = RowCount(list); row < rows; ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = row;
        item.lParam = row;
        item.pszText = LPSTR_TEXTCALLBACKW;
        ListView_InsertItem(list, &item);
        for (int column = 1; column < static_cast<int>(kind.columns.size()); ++column)
            ListView_SetItemText(list, row, column, LPSTR_TEXTCALLBACKW);
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

// As all rows are alike it is the last that goes.
void RemoveRow(HWND list, int row) {
    const int selected = SelectedRow(list);
    if (selected >= row) SelectNothing(list);
    if (selected > row) SelectRow(list, selected - 1, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_DeleteItem(list, RowCount(list) - 1);
    RedrawList(list);
}

bool IsSwitchKey(WORD key) {
    return key == VK_SPACE && GetKeyState(VK_CONTROL) >= 0;
}

int RowCount(HWND list) {
    return ListView_GetItemCount(list);
}

// As a rule it has the focus too. To look for it elsewhere asks for the state of each row.
int SelectedRow(HWND list) {
    if (ListView_GetSelectedCount(list) == 0) return -1;
    const int focused = ListView_GetNextItem(list, -1, LVNI_FOCUSED);
    if (focused >= 0 && ListView_GetItemState(list, focused, LVIS_SELECTED)) return focused;
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

void SelectRow(HWND list, int row, UINT states) {
    ListView_SetItemState(list, row, states, states);
}

void RedrawList(HWND list) {
    InvalidateRect(list, nullptr, FALSE);
}

std::function<void()> RedrawOnce(HWND list) {
    return [list, done = false]() mutable {
        if (!std::exchange(done, true)) RedrawList(list);
    };
}

RowHit HitOf(const NMITEMACTIVATE& click) {
    LVHITTESTINFO hit{};
    hit.pt = click.ptAction;
    ListView_SubItemHitTest(click.hdr.hwndFrom, &hit);
    return {hit.iItem, hit.iSubItem, hit.flags};
}

POINT MousePlace() {
    POINT place{};
    GetCursorPos(&place);
    return place;
}

POINT RowPlace(HWND list, int row) {
    ListView_EnsureVisible(list, row, FALSE);
    RECT label{};
    ListView_GetItemRect(list, row, &label, LVIR_LABEL);
    POINT place{label.left, label.bottom};
    ClientToScreen(list, &place);
    return place;
}

int TrackRowMenu(HWND owner, const RowMenu& menu, POINT at) {
    HMENU popup = CreatePopupMenu();
    for (const MenuItem& item : menu)
        AppendMenuW(popup, MF_STRING, static_cast<UINT_PTR>(item.id), item.text.data());
    constexpr UINT flags = TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON;
    const int chosen = TrackPopupMenu(popup, flags, at.x, at.y, 0, owner, nullptr);
    DestroyMenu(popup);
    return chosen;
}

}  // namespace ui
