#include "effect/gbuffer_layers.h"

#include <gbuf.h>
#include <iparamb2.h>

#include <boost/make_shared.hpp>
#include <optional>

#include "effect/active_channels.h"
#include "effect/layer_name.h"
#include "effect/layer_set.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"
#include "sources/gbuffer_channel.h"

namespace effect {
namespace {

struct GBufferLayer {
    ParamID enabling;
    DWORD channel;
    // Of the channel, as the host counts them; its name is the layer's by default.
    int index;
    std::optional<ParamID> name;
    // Colours that only floats hold. The layer then has the fragments' coverage as its alpha.
    bool isNonClamped = false;
};

// From the top of the layer stack.
constexpr GBufferLayer layers[] = {
    {"createNodeIDLayer"_param, BMM_CHAN_NODE_ID, GB_NODE_ID, "gbufferObjectIdLayerName"_param},
    {"createNodeRenderIDLayer"_param, BMM_CHAN_NODE_RENDER_ID, GB_NODE_RENDER_ID, {}},
    {"createMtlIDLayer"_param, BMM_CHAN_MTL_ID, GB_MTL_ID, "gbufferMaterialIdLayerName"_param},
    {"createNormalLayer"_param, BMM_CHAN_NORMAL, GB_NORMAL, {}},
    {"createNonClampedColorLayer"_param, BMM_CHAN_REALPIX, GB_REALPIX, {}, true},
};

bool IsWanted(const GBufferLayer& layer, const Frame& frame) {
    if (!frame.pblock.GetInt(layer.enabling)) return false;
    if (layer.isNonClamped && frame.pblock.GetInt("bitDepth"_param) != 32) return false;
    return HasGBufferChannels(frame.sources.bitmap, layer.channel);
}

void AddGBufferLayer(psdbuilder::PSDBuilder& builder, const Frame& frame,
                     const GBufferLayer& layer) {
    const auto component = [&](int number) {
        return boost::make_shared<sources::GBufferToPSDChannel>(frame.sources.bitmap, layer.channel,
                                                                number, frame.premultiply);
    };
    const LayerName name =
        NameOr(layer.name ? frame.pblock.GetStr(*layer.name) : nullptr, GBChannelName(layer.index));
    constexpr std::uint8_t hidden = 2;
    constexpr bool maskEnabled = true;
    constexpr bool clipping = false;
    psdfile::PSDChannelImageDataSourcePtr alpha = frame.whiteSource;
    if (layer.isNonClamped) alpha = component(3);
    builder.AddRGBLayer(name.Ansi(), name.Wide(), psdfile::blendKeyNormal, hidden, component(0),
                        component(1), component(2), alpha, nullptr, maskEnabled, clipping);
}

}  // namespace

void AddGBufferLayers(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    const bool inLayerSet = frame.pblock.GetInt("createGBufferLayerSet"_param) != 0;
    if (inLayerSet) {
        BeginGroupSet(builder,
                      NameOr(frame.pblock.GetStr("gbufferLayerSetName"_param), _M("G-Buffer")));
    }
    for (const GBufferLayer& layer : layers) {
        if (IsWanted(layer, frame)) AddGBufferLayer(builder, frame, layer);
    }
    if (inLayerSet) builder.EndLayerSet();
}

}  // namespace effect
