#include "ui/move_layer.h"

#include <iparamb2.h>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"

namespace ui {

int MoveLayer(effect::PSDOutput& effect, int row, int delta) {
    constexpr int list = effect::PSDOutput::productionLayers;
    const int target = row + delta;
    effect::PSDOutputLayer* moving = effect.Layer(list, row);
    if (!moving || target < 0 || target >= effect.LayerCount(list)) return row;
    const ParamID table = effect::PSDOutput::LayerList(list);
    ReferenceTarget* other = effect.pblock->GetReferenceTarget(table, 0, target);
    // In between nothing may refer to it, and the host destroys what nothing refers to.
    moving->SetAFlag(A_LOCK_TARGET);
    effect.pblock->SetValue(table, 0, other, row);
    effect.pblock->SetValue(table, 0, static_cast<ReferenceTarget*>(moving), target);
    moving->ClearAFlag(A_LOCK_TARGET);
    return target;
}

}  // namespace ui
