#include "ui/win32/selection_sets_rollup.h"

#include <commctrl.h>

#include "effect/psd_output.h"
#include "effect/scene_sync.h"
#include "plugin/parameters.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/win32/list_control.h"
#include "ui/win32/rollup_controls.h"

namespace ui {
namespace {

constexpr MapID selectionSetsMap = 7;

}  // namespace

void SelectionSetsRollup::Opened() {
    // Nobody told of changes while the rollup was closed.
    rows.ListChanged();
    effect::SyncSelectionSets(*Effect().pblock);
    SetUpControls(IDC_SELECTION_SETS_AS);
    RefreshSelectionSetRows();
    for (int code : RollupNotifications(selectionSetsMap))
        RegisterNotification(Hear, this, code);
    RefreshControls();
}

void SelectionSetsRollup::Closing() {
    for (int code : RollupNotifications(selectionSetsMap))
        UnRegisterNotification(Hear, this, code);
    MatteListRollup::Closing();
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
    Fill(rows.Count());
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

bool SelectionSetsRollup::Click(const RowHit& hit, int x) {
    return rows.Click(Effect(), hit.row, hit.column, x);
}

void SelectionSetsRollup::ChooseMenu(int item, const std::function<void()>& redraw) {
    rows.ChooseMenu(Effect(), item, redraw);
}

}  // namespace ui
