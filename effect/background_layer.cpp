#include "effect/background_layer.h"

#include <iparamb2.h>

#include "effect/layer_name.h"
#include "effect/solid_fill.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"

namespace effect {

void AddBackgroundLayer(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    const LayerName name =
        NameOr(frame.pblock.GetStr("backgroundLayerName"_param), _M("Background"));
    AddSolidFill(builder, name, psdfile::blendKeyNormal, whiteLevel);
}

}  // namespace effect
