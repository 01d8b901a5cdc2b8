#include "effect/merged_image.h"

#include <boost/make_shared.hpp>

#include "effect/correction_layers.h"
#include "effect/render_channels.h"
#include "sources/pixel_rows.h"
#include "sources/srgb_filter.h"

namespace effect {
namespace {

// The curves layer brightens the elements below it; the merged image follows by the same curve.
bool FollowsCurvesLayer(const Frame& frame) {
    return !UsesSRGBVariant(frame) && HasCurvesLayer(frame) && frame.sources.bitmap;
}

psdfile::PSDChannelImageDataSourcePtr MergedColor(const Frame& frame, int selector) {
    auto color = RenderColor(frame, selector, frame.colors.gammaActive);
    if (!color) return frame.blackSource;
    if (!FollowsCurvesLayer(frame)) return color;
    return boost::make_shared<sources::SRGBFilterIDS>(color, frame.width);
}

}  // namespace

void BuildMergedImage(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    builder.SetMergedImage(true, MergedColor(frame, sources::selectRed),
                           MergedColor(frame, sources::selectGreen),
                           MergedColor(frame, sources::selectBlue), MergedAlpha(frame));
}

void BuildBlankMergedImage(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    builder.SetMergedImage(false, frame.whiteSource, frame.whiteSource, frame.whiteSource, nullptr);
}

}  // namespace effect
