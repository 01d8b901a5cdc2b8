#include "effect/adjustment_layer.h"

#include <utility>

namespace effect {

void AddAdjustment(psdbuilder::PSDBuilder& builder, const char* name, const char16_t* unicodeName,
                   std::uint32_t blendKey,
                   boost::shared_ptr<psdfile::PSDLayerRecordExtraDataResourceBlock> adjustment,
                   const psdfile::PSDChannelImageDataSourcePtr& mask) {
    constexpr std::uint8_t visible = 0;
    constexpr bool maskEnabled = true;
    constexpr bool clipping = false;
    builder.AddAdjustmentLayer(name, unicodeName, blendKey, visible, std::move(adjustment), mask,
                               maskEnabled, clipping);
}

}  // namespace effect
