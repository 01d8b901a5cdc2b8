#include "command/info.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>

#include "command/beauty.h"
#include "command/failure.h"
#include "command/number_text.h"
#include "command/printable.h"

namespace command {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t longestValueShown = 60;

std::string_view NameOf(SampleType type) {
    switch (type) {
        case SampleType::Half:
            return "half";
        case SampleType::Float:
            return "float";
        case SampleType::Unsigned32:
            return "uint32";
        case SampleType::Unsigned16:
            return "uint16";
        case SampleType::Unsigned8:
            return "uint8";
    }
    return "";
}

// Nothing when the file has no picture; `fault` then says why.
std::optional<Beauty> BeautyOf(const Description& file, std::string& fault) {
    try {
        return ChooseBeauty(file);
    } catch (const InputError& error) {
        fault = std::string_view(error.what()).substr(file.path.size() + 2);
        return std::nullopt;
    }
}

const Part& FrameOf(const Description& file, const std::optional<Beauty>& beauty) {
    return file.parts[beauty ? file.layers[beauty->layer].part : 0];
}

std::string Text(const Window& window) {
    const auto point = [](int x, int y) {
        return "(" + std::to_string(x) + ", " + std::to_string(y) + ")";
    };
    return std::to_string(window.Width()) + "x" + std::to_string(window.Height()) + " from " +
           point(window.left, window.top) + " to " + point(window.right, window.bottom);
}

struct ValueText {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(double number) const { return NumberText(number); }
    template <class Value>
    std::string operator()(const std::vector<Value>& values) const {
        std::string list;
        for (const Value& value : values)
            list += (list.empty() ? "" : " ") + (*this)(value);
        return list;
    }
};

std::string Shortened(std::string text) {
    if (text.size() <= longestValueShown) return text;
    std::size_t end = longestValueShown;
    // Not inside a character of several bytes.
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80)
        --end;
    return text.substr(0, end) + "... (" + std::to_string(text.size()) + " bytes)";
}

// "half", or each channel's type where they differ.
std::string ChannelTypes(const Layer& layer) {
    const bool same =
        std::all_of(layer.channels.begin(), layer.channels.end(),
                    [&](const Channel& each) { return each.type == layer.channels.front().type; });
    if (same) return std::string(NameOf(layer.channels.front().type));
    std::string types;
    for (const Channel& channel : layer.channels) {
        types += (types.empty() ? "" : " ") + std::string(NameOf(channel.type));
    }
    return types;
}

std::string LayerText(const Layer& layer) {
    std::string suffixes;
    bool subsampled = false;
    for (const Channel& channel : layer.channels) {
        suffixes += " " + channel.suffix;
        subsampled = subsampled || channel.xSampling != 1 || channel.ySampling != 1;
    }
    return layer.name + ":" + suffixes + ", " + ChannelTypes(layer) +
           (subsampled ? ", with fewer samples than pixels" : "");
}

std::string AlphaText(const Beauty& beauty) {
    return beauty.alpha.empty() ? "no alpha" : "alpha in " + beauty.alpha;
}

Json ToJson(const Window& window) {
    return {{"min", {window.left, window.top}}, {"max", {window.right, window.bottom}}};
}

Json ToJson(const AttributeValue& value) {
    return std::visit(
        [](const auto& each) -> Json {
            if constexpr (std::is_same_v<std::decay_t<decltype(each)>, std::monostate>) {
                return nullptr;
            } else {
                return each;
            }
        },
        value);
}

Json NameOrNull(const std::string& name) {
    return name.empty() ? Json(nullptr) : Json(name);
}

Json ToJson(const Layer& layer) {
    Json channels = Json::array();
    for (const Channel& channel : layer.channels) {
        channels.push_back({{"name", channel.name},
                            {"type", NameOf(channel.type)},
                            {"sampling", {channel.xSampling, channel.ySampling}}});
    }
    return {{"name", layer.name}, {"channels", std::move(channels)}};
}

Json ToJson(const Description& file, std::size_t index) {
    const Part& part = file.parts[index];
    Json json{{"name", NameOrNull(part.name)},
              {"storage", part.storage},
              {"compression", NameOrNull(part.compression)},
              {"dataWindow", ToJson(part.dataWindow)},
              {"displayWindow", ToJson(part.displayWindow)},
              {"pixelAspectRatio", part.pixelAspect},
              {"deep", part.deep},
              {"complete", part.complete},
              {"layers", Json::array()},
              {"attributes", Json::array()}};
    for (const Layer& layer : file.layers) {
        if (layer.part == index) json["layers"].push_back(ToJson(layer));
    }
    for (const Attribute& attribute : part.attributes) {
        json["attributes"].push_back({{"name", attribute.name},
                                      {"type", attribute.type},
                                      {"value", ToJson(attribute.value)}});
    }
    return json;
}

}  // namespace

std::string DescribeAsText(const Description& file) {
    std::string fault;
    const std::optional<Beauty> beauty = BeautyOf(file, fault);
    const Part& frame = FrameOf(file, beauty);
    std::string text;
    const auto line = [&](const std::string& what) { text += Printable(what) + "\n"; };
    const auto inner = [&](const std::string& what) { text += "    " + Printable(what) + "\n"; };

    line(file.path + ": " + file.format + ", " + std::to_string(frame.displayWindow.Width()) + "x" +
         std::to_string(frame.displayWindow.Height()));
    for (std::size_t i = 0; i < file.parts.size(); ++i) {
        const Part& part = file.parts[i];
        line("part " + std::to_string(i + 1) + (part.name.empty() ? "" : " \"" + part.name + "\"") +
             ": " + part.storage +
             (part.compression.empty() ? "" : ", compression " + part.compression));
        inner("display window " + Text(part.displayWindow));
        inner("data window " + Text(part.dataWindow));
        if (part.pixelAspect != 1.0F) {
            inner("pixel aspect ratio " + NumberText(double{part.pixelAspect}, 4));
        }
        for (const Layer& layer : file.layers) {
            if (layer.part == i) inner("layer " + LayerText(layer));
        }
        for (const Attribute& attribute : part.attributes) {
            inner(attribute.name + " (" + attribute.type +
                  "): " + Shortened(std::visit(ValueText(), attribute.value)));
        }
    }
    if (beauty) {
        line("beauty: " + file.layers[beauty->layer].name + ", because " + beauty->why + "; " +
             AlphaText(*beauty));
    } else {
        line("beauty: none; " + fault);
    }
    for (const std::string& warning : file.warnings)
        line("warning: " + warning);
    return text;
}

std::string DescribeAsJson(const Description& file) {
    std::string fault;
    const std::optional<Beauty> beauty = BeautyOf(file, fault);
    const Part& frame = FrameOf(file, beauty);
    Json json{{"file", file.path},
              {"format", file.format},
              {"width", frame.displayWindow.Width()},
              {"height", frame.displayWindow.Height()},
              {"pixelAspectRatio", frame.pixelAspect},
              {"parts", Json::array()},
              {"beauty", nullptr},
              {"warnings", file.warnings}};
    for (std::size_t i = 0; i < file.parts.size(); ++i) {
        json["parts"].push_back(ToJson(file, i));
    }
    if (beauty) {
        const Layer& layer = file.layers[beauty->layer];
        json["beauty"] = {{"layer", layer.name},
                          {"part", layer.part},
                          {"why", beauty->why},
                          {"red", beauty->red},
                          {"green", beauty->green},
                          {"blue", NameOrNull(beauty->blue)},
                          {"alpha", NameOrNull(beauty->alpha)}};
    }
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace command
