#include "tests/command/pass_samples.h"

#include <bit>
#include <cstdio>

namespace pass_samples {
namespace {

std::string Hex(std::uint32_t id) {
    char digits[9] = {};
    std::snprintf(digits, sizeof digits, "%08x", id);
    return digits;
}

double AsFloat(std::uint32_t id) {
    return double{std::bit_cast<float>(id)};
}

}  // namespace

Ranks Only(std::function<std::uint32_t(int x, int y)> id) {
    return [id = std::move(id)](int x, int y) {
        const std::uint32_t own = id(x, y);
        return std::pair(MatteRank{own, own == 0 ? 0.0 : 1.0}, MatteRank{});
    };
}

Sample::Sample(int width, int height) {
    part.channels.clear();
    part.display = {0, 0, width - 1, height - 1};
    part.data = part.display;
}

Sample& Sample::Add(const std::string& channel, Imf::PixelType type, Value value) {
    part.channels.push_back({channel, type});
    values[channel] = std::move(value);
    return *this;
}

Sample& Sample::Half(const std::string& channel, Value value) {
    return Add(channel, Imf::HALF, std::move(value));
}

Sample& Sample::Float(const std::string& channel, Value value) {
    return Add(channel, Imf::FLOAT, std::move(value));
}

Sample& Sample::Unsigned(const std::string& channel, Value value) {
    return Add(channel, Imf::UINT, std::move(value));
}

Sample& Sample::Picture(double value) {
    for (const char* channel : {"R", "G", "B", "A"})
        Half(channel, Always(value));
    return *this;
}

Sample& Sample::Color(const std::string& layer, double red, double green, double blue) {
    Half(layer + ".R", Always(red));
    Half(layer + ".G", Always(green));
    return Half(layer + ".B", Always(blue));
}

Sample& Sample::Matte(const std::string& layer, const Names& names, const Ranks& ranks) {
    const std::string first = layer + "00";
    Float(first + ".R", [ranks](int x, int y) { return AsFloat(ranks(x, y).first.id); });
    Float(first + ".G", [ranks](int x, int y) { return ranks(x, y).first.coverage; });
    Float(first + ".B", [ranks](int x, int y) { return AsFloat(ranks(x, y).second.id); });
    Float(first + ".A", [ranks](int x, int y) { return ranks(x, y).second.coverage; });
    const std::string key = "cryptomatte/" + layer.substr(layer.size() - 7) + "/";
    Attribute(key + "name", layer);
    Attribute(key + "hash", "MurmurHash3_32");
    Attribute(key + "conversion", "uint32_to_float32");
    if (names.empty()) return *this;
    std::string manifest;
    for (const auto& [name, id] : names)
        manifest += (manifest.empty() ? "{\"" : ",\"") + name + "\":\"" + Hex(id) + "\"";
    return Attribute(key + "manifest", manifest + "}");
}

Sample& Sample::Attribute(const std::string& name, const std::string& text) {
    part.attributes.emplace_back(name, text);
    return *this;
}

exr_samples::Part Sample::ToPart() const {
    exr_samples::Part whole = part;
    whole.values = [values = values](const std::string& channel, int x, int y) {
        return values.at(channel)(x, y);
    };
    return whole;
}

}  // namespace pass_samples
