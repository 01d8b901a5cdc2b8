#include "effect/solid_fill.h"

#include <boost/make_shared.hpp>

#include "psdfile/solid_color_adjustment_layer.h"

namespace effect {

void AddSolidFill(psdbuilder::PSDBuilder& builder, const LayerName& name, std::uint32_t blendKey,
                  double level, const psdfile::PSDChannelImageDataSourcePtr& mask) {
    const auto fill = boost::make_shared<psdfile::PSDSolidColorAdjustmentLayer>();
    fill->SetColor(level, level, level);
    constexpr std::uint8_t visible = 0;
    constexpr bool maskEnabled = true;
    constexpr bool clipping = false;
    builder.AddAdjustmentLayer(name.Ansi(), name.Wide(), blendKey, visible, fill, mask, maskEnabled,
                               clipping);
}

}  // namespace effect
