#include "effect/render_output_layer.h"

#include <iparamb2.h>

#include "effect/layer_name.h"
#include "effect/render_channels.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"
#include "sources/pixel_rows.h"

namespace effect {
namespace {

struct RenderStyle {
    bool alphaIsTransparency;
    bool alphaIsMask;
    bool maskEnabled;
    bool alphaIsChannel;
};

// By the value of outputRenderAs.
constexpr RenderStyle renderStyles[] = {
    {.alphaIsTransparency = true,
     .alphaIsMask = false,
     .maskEnabled = false,
     .alphaIsChannel = false},
    {.alphaIsTransparency = false,
     .alphaIsMask = false,
     .maskEnabled = false,
     .alphaIsChannel = false},
    {.alphaIsTransparency = false,
     .alphaIsMask = true,
     .maskEnabled = true,
     .alphaIsChannel = false},
    {.alphaIsTransparency = false,
     .alphaIsMask = true,
     .maskEnabled = false,
     .alphaIsChannel = false},
    {.alphaIsTransparency = false,
     .alphaIsMask = false,
     .maskEnabled = false,
     .alphaIsChannel = true},
};

// A value that no list offers makes the plainest layer.
constexpr RenderStyle plainStyle = renderStyles[1];

RenderStyle RenderStyleOf(int outputRenderAs) {
    const bool known =
        outputRenderAs >= 0 && outputRenderAs < static_cast<int>(std::size(renderStyles));
    return known ? renderStyles[outputRenderAs] : plainStyle;
}

}  // namespace

void AddRenderOutputLayer(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    if (!frame.sources.bitmap && !frame.sources.vfb) return;
    const RenderStyle style = RenderStyleOf(frame.pblock.GetInt("outputRenderAs"_param));
    const bool gamma = frame.colors.gammaToRender;
    const auto alphaOrWhite = [&frame] {
        const auto alpha = RenderAlpha(frame);
        return alpha ? alpha : frame.whiteSource;
    };
    const LayerName name = NameOr(frame.pblock.GetStr("renderOutputLayerName"_param), _M("Render"));
    constexpr bool clipping = false;
    builder.AddRGBLayer(name.Ansi(), name.Wide(), psdfile::blendKeyNormal, 0,
                        RenderColor(frame, sources::selectRed, gamma),
                        RenderColor(frame, sources::selectGreen, gamma),
                        RenderColor(frame, sources::selectBlue, gamma),
                        style.alphaIsTransparency ? alphaOrWhite() : frame.whiteSource,
                        style.alphaIsMask ? RenderAlpha(frame) : nullptr, style.maskEnabled,
                        clipping);
    if (style.alphaIsChannel) builder.AddChannel("Render Alpha", u"Render Alpha", alphaOrWhite());
}

}  // namespace effect
