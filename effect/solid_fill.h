// A layer of one grey, wherever its mask lets it through.
#pragma once

#include <cstdint>

#include "effect/layer_name.h"
#include "psdbuilder/psdbuilder.h"

namespace effect {

constexpr double blackLevel = 0.0;
constexpr double whiteLevel = 255.0;

// Visible. `blendKey`: see psdfile/blend_keys.h. `mask` may be empty.
void AddSolidFill(psdbuilder::PSDBuilder& builder, const LayerName& name, std::uint32_t blendKey,
                  double level, const psdfile::PSDChannelImageDataSourcePtr& mask = {});

}  // namespace effect
