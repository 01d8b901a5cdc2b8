// The user's own defaults for new layers, one a class of render elements, in the configuration
// file.
#pragma once

namespace effect {
class PSDOutputLayer;
}

namespace plugin {

// Does nothing for null and for a layer without an element.
void SaveLayerPreset(effect::PSDOutputLayer* layer);

// 0, with the layer as it was, for null, without an element, and without a preset of its class.
int LoadLayerPreset(effect::PSDOutputLayer* layer);

}  // namespace plugin
