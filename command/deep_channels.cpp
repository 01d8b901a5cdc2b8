#include "command/deep_channels.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/layer_names.h"

namespace command {
namespace {

bool IsCalledAnId(std::string_view suffix) {
    constexpr std::string_view names[] = {"id",     "objectid", "materialid", "mtlid",
                                          "nodeid", "renderid", "shapeid",    "instanceid"};
    return std::any_of(std::begin(names), std::end(names),
                       [&](std::string_view name) { return EqualIgnoringCase(suffix, name); });
}

// The channel of that suffix in the layer, else without a layer name in the part; empty for none.
// The Z of coordinates isn't a depth.
std::string FindChannel(const Description& file, const Layer& layer, std::string_view suffix) {
    const auto isX = [](const Channel& channel) { return EqualIgnoringCase(channel.suffix, "X"); };
    const bool hasX = std::any_of(layer.channels.begin(), layer.channels.end(), isX);
    for (const Channel& channel : layer.channels) {
        if (!hasX && EqualIgnoringCase(channel.suffix, suffix)) return channel.name;
    }
    for (const Layer& other : file.layers) {
        if (other.part != layer.part) continue;
        for (const Channel& channel : other.channels) {
            if (EqualIgnoringCase(channel.name, suffix)) return channel.name;
        }
    }
    return {};
}

std::vector<std::string> FindIds(const Description& file, const DeepChannels& channels) {
    std::vector<std::string> ids;
    for (const Layer& layer : file.layers) {
        if (layer.part != channels.part) continue;
        for (const Channel& channel : layer.channels) {
            const bool isNumber =
                channel.type == SampleType::Unsigned32 && !ColorComponent(channel.suffix);
            const bool isId = isNumber || IsCalledAnId(channel.suffix);
            const bool isElse = channel.name == channels.z || channel.name == channels.zBack ||
                                channel.name == channels.alpha;
            if (isId && !isElse && ids.size() < mostDeepIds) ids.push_back(channel.name);
        }
    }
    return ids;
}

}  // namespace

DeepChannels ChooseDeepChannels(const Description& file, const Beauty& beauty) {
    const Layer& layer = file.layers[beauty.layer];
    DeepChannels channels;
    channels.part = layer.part;
    channels.red = beauty.red;
    channels.green = beauty.green;
    channels.blue = beauty.blue;
    channels.alpha = beauty.alpha.empty() ? FindChannel(file, layer, "A") : beauty.alpha;
    channels.z = FindChannel(file, layer, "Z");
    channels.zBack = FindChannel(file, layer, "ZBack");
    if (channels.z.empty()) {
        throw InputError(file.path + ": layer \"" + layer.name +
                         "\" is deep and has no depth channel Z; render it with one or flat");
    }
    channels.ids = FindIds(file, channels);
    for (const std::string& color : {beauty.red, beauty.green, beauty.blue}) {
        const bool isId =
            std::find(channels.ids.begin(), channels.ids.end(), color) != channels.ids.end();
        if (color.empty() || !(isId || color == channels.z || color == channels.zBack)) continue;
        throw InputError(file.path + ": layer \"" + layer.name +
                         "\" says where deep samples are or of what, which is no picture; choose "
                         "another with --beauty");
    }
    return channels;
}

}  // namespace command
