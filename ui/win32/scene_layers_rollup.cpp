#include "ui/win32/scene_layers_rollup.h"

#include <commctrl.h>

#include "plugin/parameters.h"
#include "plugin/scene_file_state.h"
#include "ui/list_views.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/rollup_timers.h"
#include "ui/win32/list_control.h"
#include "ui/win32/list_splitter.h"
#include "ui/win32/output_combo.h"
#include "ui/win32/panel_pictures.h"
#include "ui/win32/rollup_controls.h"

namespace ui {

HWND SceneLayersRollup::List() const {
    return Control(IDC_SCENE_LAYER_LIST);
}

void SceneLayersRollup::Opened() {
    SetUpList(List(), sceneLayerList, CheckPictures());
    RefreshSceneLayerRows();
    SetUpButtons(Map());
    SetUpOutputCombo(Control(IDC_SCENE_LAYERS_AS));
    SetUpSplitter(Map(), sceneLayerList);
    plugin::ListenToSceneFiles(this);
    for (int code : RollupNotifications(sceneLayersTimer.map))
        RegisterNotification(Hear, this, code);
    RefreshControls();
    layersDirty = false;
    SetTimer(Dialog(), sceneLayersTimer.id, sceneLayersTimer.milliseconds, nullptr);
}

void SceneLayersRollup::Closing() {
    KillTimer(Dialog(), sceneLayersTimer.id);
    for (int code : RollupNotifications(sceneLayersTimer.map))
        UnRegisterNotification(Hear, this, code);
    plugin::StopListeningToSceneFiles(this);
    rows.Clear();
}

void SceneLayersRollup::OtherEffect() {
    RefreshControls();
    RedrawList(List());
}

void SceneLayersRollup::Hear(void* rollup, NotifyInfo* info) {
    auto& self = *static_cast<SceneLayersRollup*>(rollup);
    const PanelUpdate update = UpdateFor(*info);
    if (update == PanelUpdate::SceneLayers) self.layersDirty = true;
    if (update == PanelUpdate::SceneLayerRow) {
        self.DeleteRow(static_cast<const ILayer*>(info->callParam));
    }
}

void SceneLayersRollup::RefreshSceneLayerRows() {
    rows.Refresh();
    FillList(List(), sceneLayerList, rows.Count());
}

void SceneLayersRollup::DeleteRow(const ILayer* layer) {
    const int row = rows.Delete(layer);
    if (row < 0) return;
    ListView_DeleteItem(List(), row);
    for (int below = row; below < rows.Count(); ++below) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = below;
        item.lParam = below;
        ListView_SetItem(List(), &item);
    }
}

void SceneLayersRollup::RefreshControls() {
    if (IsOpen()) ShowOutputGroup(Map(), *OutputAsGroupOf("outputSceneLayers"_param));
}

void SceneLayersRollup::Command(int control, int code) {
    if (control != IDC_UPDATE_SCENE_LAYERS || code != BN_CLICKED) return;
    RefreshSceneLayerRows();
    RedrawList(List());
}

LRESULT SceneLayersRollup::Notify(NMHDR& notification) {
    if (notification.idFrom != IDC_SCENE_LAYER_LIST) return 0;
    switch (notification.code) {
        case LVN_GETDISPINFOW:
            GiveRow(
                reinterpret_cast<NMLVDISPINFOW&>(notification),
                [this](int row, int) { return rows.Text(row); },
                [this](int row) { return rows.CheckImage(Effect(), row); });
            return 0;
        case NM_CLICK: {
            const RowHit hit = HitOf(reinterpret_cast<NMITEMACTIVATE&>(notification));
            if (!(hit.flags & LVHT_ONITEMSTATEICON) || hit.column != 0) return 0;
            if (rows.Toggle(Effect(), hit.row)) RedrawList(List());
            return 0;
        }
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN&>(notification).wVKey == VK_SPACE &&
                rows.Toggle(Effect(), SelectedRow(List()))) {
                RedrawList(List());
            }
            return 0;
        case NM_RCLICK: {
            if (HitOf(reinterpret_cast<NMITEMACTIVATE&>(notification)).row < 0) return 0;
            const int item = TrackRowMenu(Dialog(), SceneLayerMenu());
            ChooseSceneLayerMenu(Effect(), item, [this] { RedrawList(List()); });
            return 0;
        }
        default:
            return 0;
    }
}

void SceneLayersRollup::Tick(UINT_PTR timer) {
    if (timer != sceneLayersTimer.id || !SceneLayersTick(layersDirty)) return;
    RefreshSceneLayerRows();
    RedrawList(List());
}

void SceneLayersRollup::Measure(MEASUREITEMSTRUCT& item) {
    MeasureOutputItem(item);
}

void SceneLayersRollup::Draw(const DRAWITEMSTRUCT& item) {
    DrawOutputItem(item, OutputKindPictures());
}

}  // namespace ui
