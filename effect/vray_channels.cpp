#include "effect/vray_channels.h"

#include <iparamb2.h>
#include <log.h>
#include <renderelements.h>
#include <vrayelements.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "effect/element_corrections.h"
#include "effect/element_pixels.h"
#include "effect/layer_name.h"
#include "effect/layer_set.h"
#include "effect/utf8.h"
#include "plugin/parameters.h"
#include "sources/pixel_rows.h"

namespace effect {
namespace {

using Text = std::basic_string<MCHAR>;

// What the denoiser adds to the frame buffer for its own use.
constexpr std::string_view denoiserChannels[] = {
    "refraction",   "specular",       "reflection",       "globalIllumination", "lighting",
    "background",   "atmosphere",     "refractionFilter", "reflectionFilter",   "diffuseFilter",
    "worldNormals", "worldPositions", "defocusAmount",    "noiseLevel"};

// By VRayChannelType.
constexpr const MCHAR* typeNames[] = {_M("RDCT_FLOAT"), _M("RDCT_3FLOAT"),        _M("RDCT_2FLOAT"),
                                      _M("RDCT_INT"),   _M("RDCT_3FLOAT_SIGNED"), _M("RDCT_LAST")};

const MCHAR* NameOfType(VRayChannelType type) {
    return typeNames[type >= 0 && type < RDCT_LAST ? type : RDCT_LAST];
}

struct Channel {
    int index;
    int alias;
    Text name;
};

std::vector<Channel> ListChannels(IVRayPixelBuffer& buffer) {
    const int count = buffer.GetNumChannels();
    DebugPrint(_M("VRay PixelBuffer: Channels=%d Width=%d: Height=%d\n"), count, buffer.GetWidth(),
               buffer.GetHeight());
    std::vector<Channel> channels;
    for (int i = 0; i < count; ++i) {
        VRayChannelDescription description;
        if (!buffer.DescribeChannel(i, description)) continue;
        channels.push_back({i, description.alias, FromUtf8(description.name)});
        DebugPrint(_M("ChannelInfo: Index=%d Alias=%d Type=%s Name=%s\n"), i, description.alias,
                   NameOfType(description.type), channels.back().name.c_str());
    }
    return channels;
}

constexpr int unknownType = -1;

int ChannelTypeOf(const Class_ID& id) {
    for (const VRayElementClass& element : VRAY_ELEMENT_CLASSES) {
        if (element.id == id) return element.channel;
    }
    return unknownType;
}

// Elements that have no channel and aren't missed.
bool HasNoChannel(IRenderElement& element) {
    // Below this the denoiser gives its result to the picture itself.
    constexpr ParamID denoiserMode = 42;
    constexpr int ownChannel = 2;
    if (element.ClassID() == VRAY_OPTIONS_ELEMENT) return true;
    if (element.ClassID() != VRAY_DENOISER_ELEMENT) return false;
    IParamBlock2* block = element.GetParamBlock(0);
    return !block || block->GetInt(denoiserMode) < ownChannel;
}

template <class Predicate>
int FirstIndex(const std::vector<Channel>& channels, Predicate matches) {
    const auto found = std::find_if(channels.begin(), channels.end(), matches);
    return found == channels.end() ? -1 : found->index;
}

int FindChannel(IVRayPixelBuffer& buffer, const std::vector<Channel>& channels,
                IRenderElement& element) {
    const int type = ChannelTypeOf(element.ClassID());
    if (type == VRAY_CHANNEL_ALPHA) return buffer.FindChannel(type);
    const Text name = element.ElementName();
    const int named = FirstIndex(channels, [&](const Channel& channel) {
        return channel.name == name && (type == unknownType || channel.alias == type);
    });
    if (named >= 0 || type == unknownType || type == VRAY_CHANNEL_OF_NAME) return named;
    // Two elements of a class are told apart by name, but one may have been renamed since.
    return FirstIndex(channels, [type](const Channel& channel) { return channel.alias == type; });
}

bool IsDenoiserChannel(std::string_view name) {
    return std::find(std::begin(denoiserChannels), std::end(denoiserChannels), name) !=
           std::end(denoiserChannels);
}

}  // namespace

int VRayChannels::IndexOf(const IRenderElement* element) const {
    const auto found = indices.find(element);
    return found == indices.end() ? -1 : found->second;
}

VRayChannels FindVRayChannels(IVRayPixelBuffer& buffer, IRenderElementMgr* elements) {
    const std::vector<Channel> channels = ListChannels(buffer);
    VRayChannels found;
    const int count = elements ? elements->NumRenderElements() : 0;
    for (int i = 0; i < count; ++i) {
        IRenderElement* element = elements->GetRenderElement(i);
        if (!element || HasNoChannel(*element)) continue;
        const int index = FindChannel(buffer, channels, *element);
        if (index < 0) {
            DebugPrint(_M("Error: Could not find VRay channel corresponding to render element %s."),
                       element->ElementName());
            continue;
        }
        found.indices[element] = index;
        found.largest = std::max(found.largest, index);
    }
    return found;
}

void AddExtraChannels(psdbuilder::PSDBuilder& builder, const Frame& frame,
                      const VRayChannels& channels) {
    IVRayPixelBuffer& buffer = *frame.sources.vfb;
    const int count = buffer.GetNumChannels();
    // Nothing but the picture and its alpha.
    if (count < 3) return;
    const bool keepDenoiserChannels = frame.pblock.GetInt("saveDenoiserExtraChannels"_param) != 0;
    const int lowest = channels.indices.empty() ? 1 : channels.largest;
    bool begun = false;
    for (int i = count - 1; i > lowest; --i) {
        VRayChannelDescription description;
        if (!buffer.DescribeChannel(i, description)) continue;
        if (description.alias > VRAY_CHANNEL_LAST_ALIAS) continue;
        if (!keepDenoiserChannels && IsDenoiserChannel(description.name)) continue;
        if (!begun) {
            BeginGroupSet(builder, LayerName(_M("Extra")));
            begun = true;
        }
        // Without settings of its own a channel is corrected only where all elements are.
        const ElementPixels pixels{.vfb = &buffer,
                                   .vfbChannel = i,
                                   .gammaCorrect = CorrectsGamma(frame, false),
                                   .colorCorrect = CorrectsColors(frame, false)};
        const Text text = FromUtf8(description.name);
        const LayerName name(text.c_str());
        builder.AddChannel(name.Ansi(), name.Wide(), pixels.Channel(sources::selectLuminance));
    }
    if (begun) builder.EndLayerSet();
}

}  // namespace effect
