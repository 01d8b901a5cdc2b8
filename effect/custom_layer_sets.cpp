#include "effect/custom_layer_sets.h"

#include <iparamb2.h>

#include "effect/layer_name.h"
#include "effect/render_channels.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"

namespace effect {
namespace {

struct CustomSet {
    ParamID name;
    const MCHAR* defaultName;
    ParamID open;
    ParamID visible;
};

constexpr CustomSet set1{"customLayerSet1Name"_param, _M("Layer Set 1"),
                         "customLayerSet1OpenInUI"_param, "customLayerSet1Visible"_param};
constexpr CustomSet set2{"customLayerSet2Name"_param, _M("Layer Set 2"),
                         "customLayerSet2OpenInUI"_param, "customLayerSet2Visible"_param};
constexpr CustomSet set3{"customLayerSet3Name"_param, _M("Layer Set 3"),
                         "customLayerSet3OpenInUI"_param, "customLayerSet3Visible"_param};

void AddEmptySet(psdbuilder::PSDBuilder& builder, const Frame& frame, const CustomSet& set,
                 const psdfile::PSDChannelImageDataSourcePtr& mask = {}) {
    const LayerName name = NameOr(frame.pblock.GetStr(set.name), set.defaultName);
    const std::uint8_t flags = frame.pblock.GetInt(set.visible) ? 0 : 2;
    const bool open = frame.pblock.GetInt(set.open) != 0;
    constexpr bool maskEnabled = true;
    builder.BeginLayerSet(name.Ansi(), name.Wide(), psdfile::blendKeyPassThrough, flags, open, mask,
                          maskEnabled);
    builder.EndLayerSet();
}

}  // namespace

void AddLayerSet1(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    AddEmptySet(builder, frame, set1);
}

void AddLayerSet2(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    const bool masked = frame.pblock.GetInt("customLayerSet2MaskFromRenderAlpha"_param) != 0;
    AddEmptySet(builder, frame, set2, masked ? RenderAlpha(frame) : nullptr);
}

void AddLayerSet3(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    AddEmptySet(builder, frame, set3);
}

}  // namespace effect
