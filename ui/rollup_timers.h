// The timers of the open rollups. Notifications reach the effect deep inside the host and only
// leave marks; what they ask for is done when a timer ticks.
#pragma once

#include <cstdint>

#include "effect/psd_output.h"

namespace ui {

struct RollupTimer {
    std::uintptr_t id;
    unsigned milliseconds;
    // The rollup that it runs with.
    MapID map;
    // Stops when it has ticked.
    bool once = false;
};

inline constexpr RollupTimer fileNameTimer{16685, 200, 0};
inline constexpr RollupTimer newEffectTimer{564534, 10, 0, true};
inline constexpr RollupTimer renderElementsTimer{2343, 50, 1};
inline constexpr RollupTimer sceneLayersTimer{98918, 100, 5};

// Whether the effect was made by the user and never shown; it no longer is new then. Such an
// effect's timer runs, and clicks the button that asks for a file.
bool TakeNewMark(effect::PSDOutput& effect);

// These take the mark that they are given.

// Whether the field of the file name is to be shown anew.
bool FileNameTick(bool& fileNameDirty, const effect::PSDOutput& effect);

// What becomes of a list.
enum class ListTick {
    Nothing,
    // Its rows are drawn anew.
    Redraw,
    // Its rows are made anew, and the controls of the selected one show it.
    Rebuild,
};
// Brings the effect's list of render elements up to date.
ListTick RenderElementsTick(bool& elementsDirty, effect::PSDOutput& effect);
// The same without a mark, when the user asks for it.
ListTick UpdateRenderElements(effect::PSDOutput& effect);

// Whether the rows of the scene layers are to be made anew.
bool SceneLayersTick(bool& layersDirty);

}  // namespace ui
