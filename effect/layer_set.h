// A layer set as the groups of the layer stack open it.
#pragma once

#include "effect/layer_name.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

// Visible, closed and passing through; `mask` may be empty. To be ended with EndLayerSet.
void BeginGroupSet(psdbuilder::PSDBuilder& builder, const LayerName& name,
                   const psdfile::PSDChannelImageDataSourcePtr& mask = {});

}  // namespace effect
