#include "effect/matte_layer.h"

#include <iparamb2.h>

#include <boost/make_shared.hpp>
#include <iterator>

#include "effect/active_channels.h"
#include "effect/empty_filters.h"
#include "effect/layer_set.h"
#include "effect/render_channels.h"
#include "plugin/parameters.h"
#include "psdbuilder/composer_channel.h"
#include "psdfile/blend_keys.h"

namespace effect {

namespace {

// One identity in one style.
struct Matte {
    const Frame& frame;
    const MatteSource& source;
    bool premultiplied;
};

using Channel = psdfile::PSDChannelImageDataSourcePtr;
using MakeChannel = Channel(const Matte& matte, int component);

Channel Coverage(const Matte& matte, int) {
    return matte.source(coverageComponent, matte.premultiplied);
}

Channel FragmentColor(const Matte& matte, int component) {
    return matte.source(component, matte.premultiplied);
}

// The render wherever there is coverage, else 0.
Channel CutOut(const Matte& matte, int component) {
    const Frame& frame = matte.frame;
    return boost::make_shared<psdbuilder::ComposerChannelImageSource>(
        PlainRenderColor(frame, component, matte.premultiplied, frame.colors.gammaToRender),
        Coverage(matte, component), frame.width);
}

Channel Black(const Matte& matte, int) {
    return matte.frame.blackSource;
}

Channel White(const Matte& matte, int) {
    return matte.frame.whiteSource;
}

enum class Premultiplied : std::uint8_t { No, Yes, AsRender };

}  // namespace

struct MatteStyle {
    Premultiplied premultiplied;
    // Null makes a spare channel of the alpha in place of a layer.
    MakeChannel* color;
    MakeChannel* alpha;
};

namespace {

// By the value of the group's style parameter.
constexpr MatteStyle styles[] = {
    {Premultiplied::Yes, nullptr, Coverage},      {Premultiplied::Yes, Black, Coverage},
    {Premultiplied::No, FragmentColor, Coverage}, {Premultiplied::Yes, FragmentColor, Coverage},
    {Premultiplied::Yes, Coverage, White},        {Premultiplied::AsRender, CutOut, Coverage},
};

// A value that no list offers makes the plain matte.
const MatteStyle& StyleOf(int outputAs) {
    const bool known = outputAs >= 0 && outputAs < static_cast<int>(std::size(styles));
    return styles[known ? outputAs : 1];
}

DWORD ChannelsOf(const MatteStyle& style, DWORD identity) {
    return style.color == FragmentColor ? identity | BMM_CHAN_COLOR : identity;
}

bool IsPremultiplied(const MatteStyle& style, const Frame& frame) {
    if (style.premultiplied == Premultiplied::AsRender) return frame.premultiply;
    return style.premultiplied == Premultiplied::Yes;
}

}  // namespace

MatteGroup::MatteGroup(psdbuilder::PSDBuilder& document, const Frame& ofFrame,
                       const MatteGroupSettings& settings)
    : builder(document),
      frame(ofFrame),
      style(StyleOf(frame.pblock.GetInt(settings.outputAs))),
      hasItsChannels(
          HasGBufferChannels(frame.sources.bitmap, ChannelsOf(style, settings.channels))),
      leavesOutEmpty(IsFilterOn(frame.pblock, "filterEmptyMattes"_param, timeTypeOfHost)),
      premultiplied(IsPremultiplied(style, frame)),
      flags(frame.pblock.GetInt("matteLayersVisible"_param) ? 0 : 2) {
    if (!hasItsChannels || !style.color || !frame.pblock.GetInt(settings.ownLayerSet)) return;
    BeginGroupSet(builder,
                  NameOr(frame.pblock.GetStr(settings.layerSetName), settings.defaultLayerSetName));
    inLayerSet = true;
}

MatteGroup::~MatteGroup() {
    if (inLayerSet) builder.EndLayerSet();
}

void MatteGroup::Add(const LayerName& name, const MatteSource& source) {
    const Matte matte{frame, source, premultiplied};
    const Channel alpha = style.alpha(matte, coverageComponent);
    if (!style.color) {
        builder.AddChannel(name.Ansi(), name.Wide(), alpha);
        return;
    }
    constexpr bool maskEnabled = true;
    constexpr bool clipping = false;
    builder.AddRGBLayer(name.Ansi(), name.Wide(), psdfile::blendKeyNormal, flags,
                        style.color(matte, 0), style.color(matte, 1), style.color(matte, 2), alpha,
                        nullptr, maskEnabled, clipping);
}

}  // namespace effect
