#include "plugin/layer_presets.h"

namespace plugin {

void SaveLayerPreset(effect::PSDOutputLayer*) {}

int LoadLayerPreset(effect::PSDOutputLayer*) {
    return 0;
}

}  // namespace plugin
