#include "ui/rollup_timers.h"

#include <utility>

#include "effect/sync_render_elements.h"
#include "plugin/parameters.h"

namespace ui {

// An effect that was loaded has a data version of 0 from the start.
bool TakeNewMark(effect::PSDOutput& effect) {
    return std::exchange(effect.dataVersion, 0) != 0;
}

bool FileNameTick(bool& fileNameDirty, const effect::PSDOutput& effect) {
    return std::exchange(fileNameDirty, false) && effect.pblock &&
           effect.pblock->GetInt("matchRenderOutputFilename"_param);
}

ListTick RenderElementsTick(bool& elementsDirty, effect::PSDOutput& effect) {
    return std::exchange(elementsDirty, false) ? UpdateRenderElements(effect) : ListTick::Nothing;
}

ListTick UpdateRenderElements(effect::PSDOutput& effect) {
    const bool changed = effect::SyncRenderElements(effect, effect::PSDOutput::productionLayers);
    return changed ? ListTick::Rebuild : ListTick::Redraw;
}

bool SceneLayersTick(bool& layersDirty) {
    return std::exchange(layersDirty, false);
}

}  // namespace ui
