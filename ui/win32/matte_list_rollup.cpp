#include "ui/win32/matte_list_rollup.h"

#include <commctrl.h>

#include "ui/win32/list_splitter.h"
#include "ui/win32/output_combo.h"
#include "ui/win32/panel_pictures.h"
#include "ui/win32/rollup_controls.h"

namespace ui {

void MatteListRollup::SetUpControls(int outputAs) {
    SetUpList(List(), kind, CheckPictures());
    SetUpButtons(Map());
    SetUpOutputCombo(Control(outputAs));
    SetUpSplitter(Map(), kind);
}

void MatteListRollup::Switch(const RowHit& hit, int x) {
    if (Click(hit, x)) RedrawList(List());
}

// The rollup may close while its menu is up.
void MatteListRollup::TrackMenu(POINT at) {
    const int item = TrackRowMenu(Dialog(), Menu(), at);
    if (item != 0 && IsOpen()) ChooseMenu(item, RedrawOnce(List()));
}

bool MatteListRollup::ContextMenu(HWND control) {
    if (control != List()) return false;
    if (const int row = SelectedRow(List()); row >= 0) TrackMenu(RowPlace(List(), row));
    return true;
}

LRESULT MatteListRollup::Notify(NMHDR& notification) {
    if (notification.idFrom != static_cast<UINT_PTR>(kind.control)) return 0;
    switch (notification.code) {
        case LVN_GETDISPINFOW:
            GiveRow(
                reinterpret_cast<NMLVDISPINFOW&>(notification),
                [this](int row, int) { return RowText(row); },
                [this](int row) { return RowImage(row); });
            return 0;
        case NM_CLICK: {
            const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(notification);
            Switch(HitOf(click), static_cast<int>(click.ptAction.x));
            return 0;
        }
        case LVN_KEYDOWN: {
            const WORD key = reinterpret_cast<const NMLVKEYDOWN&>(notification).wVKey;
            if (IsSwitchKey(key)) Switch(CheckBoxOf(SelectedRow(List())), 0);
            if (key == VK_APPS) ContextMenu(List());
            return 0;
        }
        case NM_RCLICK:
            if (HitOf(reinterpret_cast<const NMITEMACTIVATE&>(notification)).row >= 0) {
                TrackMenu(MousePlace());
            }
            // There is no other menu.
            return 1;
        default:
            return 0;
    }
}

void MatteListRollup::Measure(MEASUREITEMSTRUCT& item) {
    MeasureOutputItem(item);
}

void MatteListRollup::Draw(const DRAWITEMSTRUCT& item) {
    DrawOutputItem(item, OutputKindPictures());
}

}  // namespace ui
