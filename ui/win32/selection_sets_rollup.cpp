#include "ui/win32/selection_sets_rollup.h"

#include <commctrl.h>

#include "effect/psd_output.h"
#include "effect/scene_sync.h"
#include "plugin/parameters.h"
#include "ui/list_views.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/win32/list_control.h"
#include "ui/win32/list_splitter.h"
#include "ui/win32/output_combo.h"
#include "ui/win32/panel_pictures.h"
#include "ui/win32/rollup_controls.h"

namespace ui {
namespace {

constexpr MapID selectionSetsMap = 7;

}  // namespace

HWND SelectionSetsRollup::List() const {
    return Control(IDC_SELECTION_SET_LIST);
}

void SelectionSetsRollup::Opened() {
    effect::SyncSelectionSets(*Effect().pblock);
    SetUpList(List(), selectionSetList, CheckPictures());
    RefreshSelectionSetRows();
    SetUpButtons(Map());
    SetUpOutputCombo(Control(IDC_SELECTION_SETS_AS));
    SetUpSplitter(Map(), selectionSetList);
    for (int code : RollupNotifications(selectionSetsMap))
        RegisterNotification(Hear, this, code);
    RefreshControls();
}

void SelectionSetsRollup::Closing() {
    for (int code : RollupNotifications(selectionSetsMap))
        UnRegisterNotification(Hear, this, code);
}

void SelectionSetsRollup::OtherEffect() {
    effect::SyncSelectionSets(*Effect().pblock);
    Update();
    RefreshControls();
}

void SelectionSetsRollup::Hear(void* rollup, NotifyInfo*) {
    static_cast<SelectionSetsRollup*>(rollup)->Update();
}

void SelectionSetsRollup::Update() {
    RefreshSelectionSetRows();
    Redraw();
}

void SelectionSetsRollup::RefreshSelectionSetRows() {
    FillList(List(), selectionSetList, rows.Count());
}

void SelectionSetsRollup::Redraw() {
    rows.ListChanged();
    if (IsOpen()) RedrawList(List());
}

void SelectionSetsRollup::RefreshControls() {
    if (IsOpen()) ShowOutputGroup(Map(), *OutputAsGroupOf("outputNamedSelectionSets"_param));
}

void SelectionSetsRollup::Command(int control, int code) {
    if (control == IDC_UPDATE_SELECTION_SETS && code == BN_CLICKED) Update();
}

void SelectionSetsRollup::Click(int row, int column, int x) {
    if (rows.Click(Effect(), row, column, x)) RedrawList(List());
}

LRESULT SelectionSetsRollup::Notify(NMHDR& notification) {
    if (notification.idFrom != IDC_SELECTION_SET_LIST) return 0;
    switch (notification.code) {
        case LVN_GETDISPINFOW:
            GiveRow(
                reinterpret_cast<NMLVDISPINFOW&>(notification),
                [this](int row, int) { return rows.Text(row); },
                [this](int row) { return rows.CheckImage(Effect(), row); });
            return 0;
        case NM_CLICK: {
            const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(notification);
            const RowHit hit = HitOf(click);
            Click(hit.row, hit.column, click.ptAction.x);
            return 0;
        }
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN&>(notification).wVKey == VK_SPACE) {
                Click(SelectedRow(List()), 0, 0);
            }
            return 0;
        case NM_RCLICK: {
            if (HitOf(reinterpret_cast<NMITEMACTIVATE&>(notification)).row < 0) return 0;
            const int item = TrackRowMenu(Dialog(), rows.Menu());
            rows.ChooseMenu(Effect(), item, [this] { RedrawList(List()); });
            return 0;
        }
        default:
            return 0;
    }
}

void SelectionSetsRollup::Measure(MEASUREITEMSTRUCT& item) {
    MeasureOutputItem(item);
}

void SelectionSetsRollup::Draw(const DRAWITEMSTRUCT& item) {
    DrawOutputItem(item, OutputKindPictures());
}

}  // namespace ui
