#include "ui/sort_once.h"

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "effect/sort_layers.h"

namespace ui {

int SortOnce(effect::PSDOutput& effect, int row) {
    constexpr int list = effect::PSDOutput::productionLayers;
    const effect::PSDOutputLayer* selected = effect.Layer(list, row);
    effect::SortLayers(effect, list);
    int found = selected ? effect.LayerCount(list) - 1 : -1;
    while (found >= 0 && effect.Layer(list, found) != selected)
        --found;
    return found;
}

}  // namespace ui
