#include "command/layer_names.h"

#include <algorithm>
#include <map>
#include <utility>

#include "command/ascii_case.h"

namespace command {
namespace {

struct SuffixName {
    std::string_view suffix;
    Component component;
};

constexpr SuffixName suffixNames[] = {
    {"r", Component::Red},        {"red", Component::Red},       {"g", Component::Green},
    {"green", Component::Green},  {"b", Component::Blue},        {"blue", Component::Blue},
    {"a", Component::Alpha},      {"alpha", Component::Alpha},   {"y", Component::Luminance},
    {"ry", Component::RedChroma}, {"by", Component::BlueChroma},
};

// "RGBA" of R, G, B and A in whatever order the file has them.
std::string NameOfPlainLayer(const std::vector<Channel>& channels) {
    std::vector<std::pair<Component, std::string>> suffixes;
    suffixes.reserve(channels.size());
    for (const Channel& channel : channels) {
        suffixes.emplace_back(*ColorComponent(channel.suffix), channel.suffix);
    }
    const auto rank = [](Component component) {
        return component == Component::Alpha ? 100 : static_cast<int>(component);
    };
    std::stable_sort(suffixes.begin(), suffixes.end(), [&](const auto& left, const auto& right) {
        return rank(left.first) < rank(right.first);
    });
    std::string name;
    for (const auto& [component, suffix] : suffixes) {
        if (!name.empty() && suffix.size() > 1) name += ' ';
        name += suffix;
    }
    return name;
}

}  // namespace

std::optional<Component> ColorComponent(std::string_view suffix) {
    for (const SuffixName& each : suffixNames) {
        if (EqualIgnoringCase(each.suffix, suffix)) return each.component;
    }
    return std::nullopt;
}

ChannelName SplitChannelName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) return {{}, name};
    return {name.substr(0, dot), name.substr(dot + 1)};
}

std::vector<Layer> SortIntoLayers(std::vector<Channel> channels, std::size_t part,
                                  std::string_view partName) {
    std::vector<Layer> layers;
    // By the channels' common name; "." stands for the colours that have none.
    std::map<std::string, std::size_t, std::less<>> found;
    for (Channel& channel : channels) {
        const ChannelName name = SplitChannelName(channel.name);
        channel.suffix = name.suffix;
        const bool plain = name.layer.empty();
        const bool plainColor = plain && ColorComponent(name.suffix);
        const std::string key(plainColor ? "." : plain ? name.suffix : name.layer);
        const auto [at, isNew] = found.try_emplace(key, layers.size());
        if (isNew) layers.push_back({plainColor ? "" : key, plainColor, part, {}});
        layers[at->second].channels.push_back(std::move(channel));
    }
    for (Layer& layer : layers) {
        if (!layer.plain) continue;
        layer.name = partName.empty() ? NameOfPlainLayer(layer.channels) : std::string(partName);
    }
    return layers;
}

void QualifyDoubles(std::vector<Layer>& layers, const std::vector<Part>& parts) {
    std::map<std::string, int> count;
    for (const Layer& layer : layers)
        ++count[layer.name];
    for (Layer& layer : layers) {
        const std::string& part = parts[layer.part].name;
        if (count[layer.name] > 1 && !part.empty() && part != layer.name) {
            layer.name.insert(0, part + ".");
        }
    }
}

}  // namespace command
