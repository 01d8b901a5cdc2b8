#include "ui/win32/rollup.h"

#include "effect/psd_output.h"

namespace ui {

void Rollup::Open(IParamMap2& openedMap, effect::PSDOutput& editedEffect) {
    map = &openedMap;
    editing = &editedEffect;
    Opened();
}

void Rollup::Close() {
    if (!map) return;
    Closing();
    map = nullptr;
}

bool Rollup::IsOpen() const {
    return map && effect::PSDOutput::IsLiving(editing) && editing->pblock &&
           map->GetParamBlock() == editing->pblock;
}

void Rollup::Edit(effect::PSDOutput& editedEffect) {
    editing = &editedEffect;
    if (IsOpen()) OtherEffect();
}

}  // namespace ui
