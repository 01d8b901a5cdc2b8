#include "effect/layer_set.h"

#include "psdfile/blend_keys.h"

namespace effect {

void BeginGroupSet(psdbuilder::PSDBuilder& builder, const LayerName& name,
                   const psdfile::PSDChannelImageDataSourcePtr& mask) {
    constexpr std::uint8_t visible = 0;
    constexpr bool open = false;
    constexpr bool maskEnabled = true;
    builder.BeginLayerSet(name.Ansi(), name.Wide(), psdfile::blendKeyPassThrough, visible, open,
                          mask, maskEnabled);
}

}  // namespace effect
