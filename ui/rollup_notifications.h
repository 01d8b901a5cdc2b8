// What the host's notifications mean to the rollups that are open.
#pragma once

#include <iparamb2_types.h>
#include <notify.h>
#include <plugapi.h>

#include <span>

namespace ui {

// The renderer whose choice changes what the controls of the depth show.
inline constexpr Class_ID depthRendererClassID{0x16d416fb, 0x1cdd4da5};

// The codes that a rollup listens to while it is open, in the order in which it registers them;
// none for a rollup without. That of the scene layers also lets plugin/scene_file_state.h listen.
std::span<const int> RollupNotifications(MapID map);

// What is to be done, by whoever shows it.
enum class PanelUpdate {
    Nothing,
    // The field of the file name, at once and, since the host may not be through with its change,
    // at the next tick too.
    FileName,
    LayerControls,
    DepthControls,
    AddSelectedButton,
    // The rows of the scene layers at the next tick.
    SceneLayers,
    // The row of the layer that is gone, an ILayer* that callParam is.
    SceneLayerRow,
    SelectionSetRows,
};
PanelUpdate UpdateFor(const NotifyInfo& info);

}  // namespace ui
