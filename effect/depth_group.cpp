#include "effect/depth_group.h"

#include <iparamb2.h>
#include <log.h>

#include <boost/make_shared.hpp>

#include "effect/active_channels.h"
#include "effect/depth_range.h"
#include "effect/layer_name.h"
#include "effect/scene_walk.h"
#include "effect/solid_fill.h"
#include "plugin/parameters.h"
#include "psdfile/blend_keys.h"
#include "sources/bitmap_parts.h"
#include "sources/fragment_weight.h"
#include "sources/zdepth_gbuffer_channel.h"

namespace effect {
namespace {

// By a user property the first node of the scene that has it counts as opaque.
UWORD OpaqueRenderID() {
    const MSTR property(_M("PSDZDepthMakeOpaque"));
    for (SceneWalk walk; INode* node = walk.Next();) {
        BOOL isOpaque = FALSE;
        if (node->GetUserPropBool(property, isOpaque) && isOpaque) return node->GetRenderID();
    }
    return sources::noRenderID;
}

void PrintOwnRange(GBuffer* gbuffer) {
    float min = 0.0F;
    float max = 0.0F;
    gbuffer->GetChannelMin(GB_Z, &min);
    gbuffer->GetChannelMax(GB_Z, &max);
    DebugPrint(_M("Z-DEPTH: Min=%.3f Max=%.3f - ORIGINAL\n"), min, max);
}

psdfile::PSDChannelImageDataSourcePtr DepthSource(const Frame& frame) {
    using Source = sources::ZDepthGBufferToPSDChannel;
    Bitmap* bitmap = frame.sources.bitmap;
    PrintOwnRange(sources::GBufferOf(bitmap));
    const UWORD opaque = OpaqueRenderID();
    DepthRange range =
        ScanDepthRange(bitmap, frame.pblock.GetFloat("zDepthCoverageThreshold"_param), opaque);
    float min = Source::noMin;
    float max = Source::noMax;
    if (range.isThere) {
        ExtendToBack(range, frame.pblock.GetFloat("zDepthExtendToBack"_param));
        min = range.min.z;
        max = range.max.z;
        DebugPrint(_M("Z-DEPTH ###: Min(%d, %d)=%.3f Max(%d, %d)=%.3f - - CUSTOM\n"), range.min.x,
                   range.min.y, min, range.max.x, range.max.y, max);
    }
    constexpr int component = 0;
    constexpr bool premultiplied = true;
    return boost::make_shared<Source>(bitmap, component, premultiplied, min, max, opaque);
}

}  // namespace

void AddDepthGroup(psdbuilder::PSDBuilder& builder, const Frame& frame, bool asLayer) {
    if (!HasGBufferChannels(frame.sources.bitmap, BMM_CHAN_Z)) return;
    const auto depth = DepthSource(frame);
    if (asLayer) {
        const LayerName name = NameOr(frame.pblock.GetStr("depthLayerName"_param), _M("Depth"));
        AddSolidFill(builder, name, psdfile::blendKeyNormal, whiteLevel, depth);
        return;
    }
    const LayerName name =
        NameOr(frame.pblock.GetStr("zDepthChannelName"_param), GBChannelName(GB_Z));
    builder.AddChannel(name.Ansi(), name.Wide(), depth);
}

}  // namespace effect
