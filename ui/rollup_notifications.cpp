#include "ui/rollup_notifications.h"

#include <ref.h>

namespace ui {
namespace {

constexpr int mainCodes[] = {NOTIFY_RENDERER_CHANGED, NOTIFY_RENDPARAM_CHANGED,
                             NOTIFY_GAMMA_CHANGED};
constexpr int objectsCodes[] = {NOTIFY_SELECTIONSET_CHANGED};
constexpr int sceneLayersCodes[] = {NOTIFY_LAYER_CREATED, NOTIFY_LAYER_DELETED,
                                    NOTIFY_LAYER_PARENT_CHANGED};
constexpr int selectionSetsCodes[] = {NOTIFY_NAMED_SEL_SET_CREATED, NOTIFY_NAMED_SEL_SET_DELETED,
                                      NOTIFY_NAMED_SEL_SET_RENAMED};

struct RollupCodes {
    MapID map;
    std::span<const int> codes;
};
constexpr RollupCodes rollupCodes[] = {
    {0, mainCodes}, {2, objectsCodes}, {5, sceneLayersCodes}, {7, selectionSetsCodes}};

struct CodeUpdate {
    int code;
    PanelUpdate update;
};
constexpr CodeUpdate codeUpdates[] = {
    {NOTIFY_RENDPARAM_CHANGED, PanelUpdate::FileName},
    {NOTIFY_GAMMA_CHANGED, PanelUpdate::LayerControls},
    {NOTIFY_RENDERER_CHANGED, PanelUpdate::DepthControls},
    {NOTIFY_SELECTIONSET_CHANGED, PanelUpdate::AddSelectedButton},
    {NOTIFY_LAYER_CREATED, PanelUpdate::SceneLayers},
    {NOTIFY_LAYER_DELETED, PanelUpdate::SceneLayerRow},
    {NOTIFY_LAYER_PARENT_CHANGED, PanelUpdate::SceneLayers},
    {NOTIFY_NAMED_SEL_SET_CREATED, PanelUpdate::SelectionSetRows},
    {NOTIFY_NAMED_SEL_SET_DELETED, PanelUpdate::SelectionSetRows},
    {NOTIFY_NAMED_SEL_SET_RENAMED, PanelUpdate::SelectionSetRows},
};

bool IsDepthRenderer(void* target) {
    return target && static_cast<ReferenceTarget*>(target)->ClassID() == depthRendererClassID;
}

}  // namespace

std::span<const int> RollupNotifications(MapID map) {
    for (const RollupCodes& rollup : rollupCodes) {
        if (rollup.map == map) return rollup.codes;
    }
    return {};
}

PanelUpdate UpdateFor(const NotifyInfo& info) {
    for (const CodeUpdate& row : codeUpdates) {
        if (row.code != info.intcode) continue;
        const bool concerns =
            info.intcode != NOTIFY_RENDERER_CHANGED || IsDepthRenderer(info.callParam);
        return concerns ? row.update : PanelUpdate::Nothing;
    }
    return PanelUpdate::Nothing;
}

}  // namespace ui
