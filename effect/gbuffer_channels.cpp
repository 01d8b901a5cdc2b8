// Which G-Buffer channels the settings need.
#include <maxapi.h>

#include "effect/psd_output.h"
#include "effect/renderer_kinds.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

struct Need {
    ParamID enabled;
    DWORD channels;
};

constexpr Need layerNeeds[] = {
    {"createMtlIDLayer"_param, 0x0002},        {"createNodeIDLayer"_param, 0x0004},
    {"createNodeRenderIDLayer"_param, 0x0100}, {"createNormalLayer"_param, 0x1450},
    {"createZDepthChannel"_param, 0x1545},     {"depthLayer"_param, 0x1545},
};

struct MatteNeed {
    ParamID enabled;
    ParamID outputAs;
    DWORD channels;
};

constexpr MatteNeed matteNeeds[] = {
    {"outputSceneLayers"_param, "outputSceneLayersAs"_param, 0x1540},
    {"outputNamedSelectionSets"_param, "outputNamedSelectionSetsAs"_param, 0x1540},
    {"outputNodeIDs"_param, "outputNodeIDsAs"_param, 0x1544},
    {"outputMtlIDs"_param, "outputMtlIDsAs"_param, 0x1542},
    {"outputObjects"_param, "outputObjectsAs"_param, 0x1540},
};

constexpr DWORD nonClampedColorChannels = 0x1560;
constexpr DWORD coloredMatteChannel = 0x0200;
constexpr DWORD realPixelChannel = BMM_CHAN_REALPIX;

// The old styles of coloured mattes.
constexpr bool IsColored(int outputAs) {
    return outputAs == 2 || outputAs == 3;
}

}  // namespace

DWORD PSDOutput::GBufferChannelsRequired(TimeValue) {
    if (!pblock) return 0;
    const bool is32Bits = pblock->GetInt("bitDepth"_param) == 32;
    DWORD channels = 0;
    for (const Need& need : layerNeeds) {
        if (pblock->GetInt(need.enabled)) channels |= need.channels;
    }
    if (is32Bits && pblock->GetInt("createNonClampedColorLayer"_param)) {
        channels |= nonClampedColorChannels;
    }
    for (const MatteNeed& need : matteNeeds) {
        if (!pblock->GetInt(need.enabled)) continue;
        channels |= need.channels;
        if (!IsColored(pblock->GetInt(need.outputAs))) continue;
        channels |= coloredMatteChannel;
        if (is32Bits) channels |= realPixelChannel;
    }
    Renderer* renderer = GetCOREInterface()->GetCurrentRenderer();
    if (IsClass(renderer, RENDERER_A_CLASS_ID) || IsClass(renderer, RENDERER_B_CLASS_ID)) {
        // These renderers have no weights and transparencies; coverage stands in for them.
        if (channels >= BMM_CHAN_WEIGHT) channels |= BMM_CHAN_COVERAGE;
        channels &= ~(BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP);
    }
    return channels;
}

}  // namespace effect
