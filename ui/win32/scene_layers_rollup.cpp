#include "ui/win32/scene_layers_rollup.h"

#include <commctrl.h>

#include "plugin/parameters.h"
#include "plugin/scene_file_state.h"
#include "ui/resource.h"
#include "ui/rollup_notifications.h"
#include "ui/rollup_timers.h"
#include "ui/win32/list_control.h"
#include "ui/win32/rollup_controls.h"

namespace ui {

void SceneLayersRollup::Opened() {
    SetUpControls(IDC_SCENE_LAYERS_AS);
    RefreshSceneLayerRows();
    rows.onChange = [this] { RedrawList(List()); };
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
    rows.onChange = nullptr;
    rows.Clear();
    MatteListRollup::Closing();
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
    Fill(rows.Count());
}

void SceneLayersRollup::DeleteRow(const ILayer* layer) {
    const int row = rows.Delete(layer);
    if (row >= 0) RemoveRow(List(), row);
}

void SceneLayersRollup::Redraw() {
    if (IsOpen()) RedrawList(List());
}

void SceneLayersRollup::RefreshControls() {
    if (IsOpen()) ShowOutputGroup(Map(), *OutputAsGroupOf("outputSceneLayers"_param));
}

void SceneLayersRollup::Command(int control, int code) {
    if (control != IDC_UPDATE_SCENE_LAYERS || code != BN_CLICKED) return;
    RefreshSceneLayerRows();
    RedrawList(List());
}

bool SceneLayersRollup::Click(const RowHit& hit, int /*x*/) {
    return hit.flags == LVHT_ONITEMSTATEICON && hit.column == 0 && rows.Toggle(Effect(), hit.row);
}

void SceneLayersRollup::ChooseMenu(int item, const std::function<void()>& redraw) {
    ChooseSceneLayerMenu(Effect(), item, redraw);
}

void SceneLayersRollup::Tick(UINT_PTR timer) {
    if (timer != sceneLayersTimer.id || !SceneLayersTick(layersDirty)) return;
    RefreshSceneLayerRows();
    RedrawList(List());
}

}  // namespace ui
