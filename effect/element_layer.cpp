#include "effect/element_layer.h"

#include <iparamb2.h>
#include <renderelements.h>

#include <boost/make_shared.hpp>
#include <utility>

#include "effect/blend_modes.h"
#include "effect/empty_filters.h"
#include "effect/empty_sources.h"
#include "effect/layer_name.h"
#include "effect/multi_matte.h"
#include "effect/psd_output_layer.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"
#include "sources/pixel_rows.h"

namespace effect {
namespace {

using SourcePtr = psdfile::PSDChannelImageDataSourcePtr;

// Values of outputAs. Any other makes nothing.
constexpr int outputAsLayer = 0;
constexpr int asChannel = 1;

struct LayerSources {
    SourcePtr red;
    SourcePtr green;
    SourcePtr blue;
    SourcePtr alpha;
    SourcePtr mask;
};

bool IsOn(const PSDOutputLayer& layer, ParamID id) {
    return layer.pblock->GetInt(id) != 0;
}

bool IsLeftOut(const Frame& frame, const SourcePtr& source) {
    return IsFilterOn(frame.pblock, "filterEmptyRenderElements"_param, timeTypeOfHost) &&
           AreSourcesEmpty(frame.width, frame.height, {&source, 1});
}

// The layer's settings decide where `alpha` goes.
void PlaceAlpha(const PSDOutputLayer& layer, const Frame& frame, const SourcePtr& alpha,
                LayerSources& sources) {
    if (IsOn(layer, "transparency"_layerParam)) sources.alpha = alpha;
    if (IsOn(layer, "mask"_layerParam)) sources.mask = alpha;
    if (!sources.alpha) sources.alpha = frame.whiteSource;
}

void AddLayer(psdbuilder::PSDBuilder& builder, const PSDOutputLayer& layer, const LayerName& name,
              const LayerSources& sources) {
    constexpr std::uint8_t hidden = 2;
    constexpr bool maskEnabled = true;
    builder.AddRGBLayer(name.Ansi(), name.Wide(),
                        psdfile::BlendKey(layer.pblock->GetInt("blendingMode"_layerParam)),
                        IsOn(layer, "visible"_layerParam) ? std::uint8_t{0} : hidden, sources.red,
                        sources.green, sources.blue, sources.alpha, sources.mask, maskEnabled,
                        IsOn(layer, "groupWithPrevious"_layerParam));
}

LayerSources WholeSources(const Frame& frame, const PSDOutputLayer& layer,
                          const ElementPixels& pixels) {
    LayerSources sources{pixels.Channel(sources::selectRed),
                         pixels.Channel(sources::selectGreen),
                         pixels.Channel(sources::selectBlue),
                         {},
                         {}};
    PlaceAlpha(layer, frame,
               pixels.HasAlpha() ? pixels.Channel(sources::selectAlpha) : frame.whiteSource,
               sources);
    return sources;
}

void Append(PendingLayers& pending, const LayerSources& sources) {
    psdbuilder::AddCompositorLayer(pending, sources.red, sources.green, sources.blue, sources.alpha,
                                   sources.mask);
}

// What is pending, with the element's own sources on top. Leaves nothing pending.
LayerSources Merge(const Frame& frame, PendingLayers& pending, const LayerSources& own) {
    Append(pending, own);
    const auto stack = boost::make_shared<psdbuilder::Compositor>();
    stack->layers = std::exchange(pending, {});
    const auto channel = [&](int selector) {
        return boost::make_shared<psdbuilder::CompositorToPSDChannel>(stack, selector, frame.width);
    };
    return {channel(sources::selectRed),
            channel(sources::selectGreen),
            channel(sources::selectBlue),
            channel(sources::selectAlpha),
            {}};
}

// A component as a grey picture, or as the matte of black.
LayerSources ComponentSources(const Frame& frame, const PSDOutputLayer& layer,
                              const ElementPixels& pixels, const SourcePtr& component) {
    const bool isMatte = IsOn(layer, "transparency"_layerParam) || IsOn(layer, "mask"_layerParam);
    const SourcePtr& color = isMatte ? frame.blackSource : component;
    LayerSources sources{color, color, color, {}, {}};
    PlaceAlpha(layer, frame, pixels.HasAlpha() ? component : frame.whiteSource, sources);
    return sources;
}

}  // namespace

void AddWholeElement(psdbuilder::PSDBuilder& builder, const Frame& frame,
                     const PSDOutputLayer& layer, const ElementPixels& pixels,
                     PendingLayers& pending) {
    const bool mergesDown = IsOn(layer, "mergeDown"_layerParam);
    const SourcePtr luminance = pixels.Channel(sources::selectLuminance);
    if (pending.empty() && !mergesDown && IsLeftOut(frame, luminance)) return;
    const MSTR elementName = layer.ElementName();
    const LayerName name(elementName);
    const int outputAs = layer.pblock->GetInt("outputAs"_layerParam);
    if (outputAs == asChannel) builder.AddChannel(name.Ansi(), name.Wide(), luminance);
    if (outputAs != outputAsLayer) return;

    LayerSources sources = WholeSources(frame, layer, pixels);
    if (mergesDown && layer.pblock->GetInt("blendingMode"_layerParam) == linearDodgeMode) {
        if (IsOn(layer, "visible"_layerParam)) Append(pending, sources);
        return;
    }
    if (!pending.empty()) sources = Merge(frame, pending, sources);
    AddLayer(builder, layer, name, sources);
}

void AddSplitElement(psdbuilder::PSDBuilder& builder, const Frame& frame,
                     const PSDOutputLayer& layer, const ElementPixels& pixels) {
    const int outputAs = layer.pblock->GetInt("outputAs"_layerParam);
    for (int selector : {sources::selectRed, sources::selectGreen, sources::selectBlue}) {
        MSTR componentName = layer.ElementName();
        if (!SplitMultiMatte(*layer.Element(), componentName, selector)) continue;
        const SourcePtr component = pixels.Channel(selector);
        if (IsLeftOut(frame, component)) continue;
        const LayerName name(componentName);
        if (outputAs == asChannel) builder.AddChannel(name.Ansi(), name.Wide(), component);
        if (outputAs == outputAsLayer) {
            AddLayer(builder, layer, name, ComponentSources(frame, layer, pixels, component));
        }
    }
}

}  // namespace effect
