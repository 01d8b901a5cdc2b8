#include "command/layer_names.h"

#include <algorithm>
#include <map>
#include <set>
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

// Where a channel stands among those of its layer: R before G, X before Y, alpha last.
int Rank(std::string_view suffix) {
    const std::optional<std::size_t> axis = AxisOf(suffix);
    if (axis && !EqualIgnoringCase(suffix, "y")) return static_cast<int>(*axis);
    const std::optional<Component> component = ColorComponent(suffix);
    if (component == Component::Luminance) return 1;
    return !component || component == Component::Alpha ? 100 : static_cast<int>(*component);
}

// "RGBA" of R, G, B and A in whatever order the file has them.
std::string NameOfPlainLayer(const std::vector<Channel>& channels) {
    std::vector<std::string> suffixes;
    suffixes.reserve(channels.size());
    for (const Channel& channel : channels)
        suffixes.push_back(channel.suffix);
    std::stable_sort(
        suffixes.begin(), suffixes.end(),
        [](const std::string& left, const std::string& right) { return Rank(left) < Rank(right); });
    std::string name;
    for (const std::string& suffix : suffixes) {
        if (!name.empty() && suffix.size() > 1) name += ' ';
        name += suffix;
    }
    return name;
}

using Names = std::set<std::string, std::less<>>;

// Axes in the order that they have in a vector. W may come after them, and A after U and V.
constexpr std::string_view axes[] = {"XYZ", "xyz", "UV", "uv"};

// Channels of a vector without a layer name: X Y Z, U V, NX NY NZ, velX velY. Nothing for a channel
// that has not at least the first two axes beside it.
std::optional<ChannelName> SplitVectorName(const Names& names, std::string_view name) {
    if (name.empty()) return std::nullopt;
    const std::string_view stem = name.substr(0, name.size() - 1);
    const std::string_view last = name.substr(name.size() - 1);
    for (const std::string_view set : axes) {
        const bool isW = stem.empty() && (last == "W" || last == "w") && set.size() == 3;
        if (set.find(last) == std::string_view::npos && !isW) continue;
        // A small letter behind others ends a word.
        if (!stem.empty() && (set == "xyz" || set.size() < 3)) continue;
        const auto has = [&](char axis) { return names.contains(std::string(stem) + axis); };
        if (has(set[0]) && has(set[1])) return ChannelName{stem, last};
    }
    return std::nullopt;
}

Names PlainNames(const std::vector<Channel>& channels) {
    Names names;
    for (const Channel& channel : channels) {
        if (SplitChannelName(channel.name).layer.empty()) {
            names.emplace(SplitChannelName(channel.name).suffix);
        }
    }
    return names;
}

// What a layer is told from others by.
enum class Kind : std::uint8_t { Named, PlainColor, PlainVector, PlainTexture };
using Key = std::pair<Kind, std::string>;

Key KeyOf(const Names& plainNames, Channel& channel) {
    const ChannelName name = SplitChannelName(channel.name);
    channel.suffix = name.suffix;
    if (!name.layer.empty()) return {Kind::Named, std::string(name.layer)};
    const std::optional<ChannelName> vector = SplitVectorName(plainNames, name.suffix);
    if (vector && vector->layer.empty()) {
        const bool isTexture = AsciiLower(name.suffix.front()) < 'w';
        return {isTexture ? Kind::PlainTexture : Kind::PlainVector, ""};
    }
    if (vector) {
        channel.suffix = vector->suffix;
        return {Kind::Named, std::string(vector->layer)};
    }
    if (ColorComponent(name.suffix)) return {Kind::PlainColor, ""};
    return {Kind::Named, std::string(name.suffix)};
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

std::optional<std::size_t> AxisOf(std::string_view suffix) {
    for (const std::string_view set : {"xyzw", "uv"}) {
        if (suffix.size() != 1) return std::nullopt;
        const std::size_t axis = set.find(AsciiLower(suffix.front()));
        if (axis != std::string_view::npos) return axis;
    }
    return std::nullopt;
}

std::vector<Layer> SortIntoLayers(std::vector<Channel> channels, std::size_t part,
                                  std::string_view partName) {
    const Names plainNames = PlainNames(channels);
    std::vector<Layer> layers;
    std::map<Key, std::size_t> found;
    for (Channel& channel : channels) {
        const Key key = KeyOf(plainNames, channel);
        const auto [at, isNew] = found.try_emplace(key, layers.size());
        if (isNew) layers.push_back({key.second, key.first != Kind::Named, part, {}});
        layers[at->second].channels.push_back(std::move(channel));
    }
    // The part's name goes to the first of them; colours come before vectors.
    bool partNameTaken = partName.empty();
    for (const Kind kind : {Kind::PlainColor, Kind::PlainVector, Kind::PlainTexture}) {
        const auto at = found.find({kind, ""});
        if (at == found.end()) continue;
        Layer& layer = layers[at->second];
        layer.name = partNameTaken ? NameOfPlainLayer(layer.channels) : std::string(partName);
        partNameTaken = true;
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
