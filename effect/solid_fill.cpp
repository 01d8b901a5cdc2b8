#include "effect/solid_fill.h"

#include <boost/make_shared.hpp>

#include "effect/adjustment_layer.h"
#include "psdfile/solid_color_adjustment_layer.h"

namespace effect {

void AddSolidFill(psdbuilder::PSDBuilder& builder, const LayerName& name, std::uint32_t blendKey,
                  double level, const psdfile::PSDChannelImageDataSourcePtr& mask) {
    const auto fill = boost::make_shared<psdfile::PSDSolidColorAdjustmentLayer>();
    fill->SetColor(level, level, level);
    AddAdjustment(builder, name.Ansi(), name.Wide(), blendKey, fill, mask);
}

}  // namespace effect
