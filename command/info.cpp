#include "command/info.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>

#include "command/beauty.h"
#include "command/expectation.h"
#include "command/failure.h"
#include "command/half_ids.h"
#include "command/number_text.h"
#include "command/printable.h"
#include "command/size_text.h"

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

std::size_t FramePartOf(const RenderInfo& info) {
    return info.plan ? info.file.layers[info.plan->beauty.layer].part : 0;
}

const Part& FrameOf(const RenderInfo& info) {
    return info.file.parts[FramePartOf(info)];
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

Json ToJson(const Layer& layer, const std::string& becomes) {
    Json channels = Json::array();
    for (const Channel& channel : layer.channels) {
        channels.push_back({{"name", channel.name},
                            {"type", NameOf(channel.type)},
                            {"sampling", {channel.xSampling, channel.ySampling}}});
    }
    return {
        {"name", layer.name}, {"channels", std::move(channels)}, {"becomes", NameOrNull(becomes)}};
}

Json ToJson(const RenderInfo& info, std::size_t index) {
    const Description& file = info.file;
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
    for (std::size_t i = 0; i < file.layers.size(); ++i) {
        if (file.layers[i].part != index) continue;
        json["layers"].push_back(
            ToJson(file.layers[i], info.plan ? info.plan->becomes[i] : std::string()));
    }
    for (const Attribute& attribute : part.attributes) {
        json["attributes"].push_back({{"name", attribute.name},
                                      {"type", attribute.type},
                                      {"value", ToJson(attribute.value)}});
    }
    return json;
}

// Null without one.
const RenderCamera* CameraOf(const RenderInfo& info) {
    return command::CameraOf(info.file, FramePartOf(info));
}

std::string_view ProjectionOf(const CameraLens& lens) {
    if (lens.width > 0.0) return "parallel";
    return lens.fieldOfView > 0.0 ? "perspective" : "";
}

std::string CameraText(const RenderCamera& camera) {
    std::string text = "camera: ";
    if (camera.lens.width > 0.0) {
        text += "parallel, " + NumberText(camera.lens.width, 2) + " across, ";
    } else if (camera.lens.fieldOfView > 0.0) {
        text += "perspective, " + NumberText(camera.lens.fieldOfView, 2) + " degrees across, ";
    }
    text += "at";
    for (const std::size_t place : {3U, 7U, 11U})
        text += " " + NumberText(camera.transform[place], 2);
    return text + " with z up; from " + camera.attribute + ", whose world has " +
           (camera.up == UpAxis::Y ? "y" : "z") + " up";
}

Json NumberOrNull(double number) {
    return number > 0.0 ? Json(number) : Json(nullptr);
}

Json ToJson(const RenderCamera& camera) {
    Json rows = Json::array();
    for (auto row = camera.transform.begin(); row != camera.transform.end(); row += 4)
        rows.push_back(std::vector<double>(row, row + 4));
    return {{"attribute", camera.attribute},
            {"up", camera.up == UpAxis::Y ? "y" : "z"},
            {"transform", std::move(rows)},
            {"projection", NameOrNull(std::string(ProjectionOf(camera.lens)))},
            {"fov", NumberOrNull(camera.lens.fieldOfView)},
            {"width", NumberOrNull(camera.lens.width)},
            {"near", NumberOrNull(camera.lens.nearRange)},
            {"far", NumberOrNull(camera.lens.farRange)}};
}

// Those of the file, then those of what becomes of it.
std::vector<std::string> WarningsOf(const RenderInfo& info) {
    std::vector<std::string> warnings = info.file.warnings;
    if (!info.plan) return warnings;
    for (const auto* more : {&info.plan->warnings, &info.plan->unknown})
        warnings.insert(warnings.end(), more->begin(), more->end());
    return warnings;
}

std::string CryptomatteText(const Cryptomatte& matte) {
    return "cryptomatte: " + matte.name + ", " + std::string(command::NameOf(matte.kind)) + "s, " +
           std::to_string(matte.ranks.size()) + " ranks, " +
           std::to_string(matte.manifest.entries.size()) + " names";
}

std::string ExpectationText(const Expectation& expected) {
    return "with --all: " + std::to_string(expected.elements) + " render elements, " +
           std::to_string(expected.objects) + " objects, " + std::to_string(expected.materials) +
           " materials" + (expected.depthImage ? ", a depth image; " : "; ") +
           SizeText(expected.memory) + " of memory for pixels, and at most " +
           SizeText(expected.DocumentBytes(16)) + " of document at 16 bits";
}

void AddPlan(const RenderInfo& info, Json& json) {
    const PassPlan& plan = *info.plan;
    const Layer& layer = info.file.layers[plan.beauty.layer];
    json["beauty"] = {{"layer", layer.name},
                      {"part", layer.part},
                      {"why", plan.beauty.why},
                      {"red", plan.beauty.red},
                      {"green", plan.beauty.green},
                      {"blue", NameOrNull(plan.beauty.blue)},
                      {"alpha", NameOrNull(plan.beauty.alpha)}};
    json["renderer"] = NameOrNull(std::string(command::NameOf(plan.renderer)));
    for (const PassElement& element : plan.elements) {
        json["elements"].push_back({{"name", element.name},
                                    {"layer", info.file.layers[element.layer].name},
                                    {"kind", command::NameOf(element.kind)},
                                    {"data", element.isData}});
    }
    for (const Cryptomatte& matte : plan.cryptomattes) {
        Json names = Json::array();
        for (const ManifestEntry& entry : matte.manifest.entries)
            names.push_back(entry.name);
        json["cryptomattes"].push_back({{"name", matte.name},
                                        {"kind", command::NameOf(matte.kind)},
                                        {"ranks", matte.ranks.size()},
                                        {"names", std::move(names)}});
    }
    const Expectation expected = Expect(info.file, plan);
    json["expect"] = {{"elements", expected.elements},
                      {"objects", expected.objects},
                      {"materials", expected.materials},
                      {"depthImage", expected.depthImage},
                      {"memoryBytes", expected.memory},
                      {"mostDocumentBytes",
                       {{"8", expected.DocumentBytes(8)},
                        {"16", expected.DocumentBytes(16)},
                        {"32", expected.DocumentBytes(32)}}}};
}

std::string WithoutPath(const InputError& error, const Description& file) {
    return std::string(std::string_view(error.what()).substr(file.path.size() + 2));
}

}  // namespace

RenderInfo Inform(const Description& file) {
    RenderInfo info{file, std::nullopt, {}};
    try {
        info.plan = PlanPasses(file, ChooseBeauty(file));
    } catch (const InputError& error) {
        info.fault = WithoutPath(error, file);
    }
    return info;
}

RenderInfo Inform(RenderFile& file) {
    RenderInfo info = Inform(file.GetDescription());
    if (!info.plan) return info;
    try {
        DropHalfIDs(file, *info.plan);
    } catch (const InputError& error) {
        info.plan->warnings.push_back(WithoutPath(error, info.file));
    }
    return info;
}

std::string DescribeAsText(const RenderInfo& info) {
    const Description& file = info.file;
    const Part& frame = FrameOf(info);
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
        for (std::size_t layer = 0; layer < file.layers.size(); ++layer) {
            if (file.layers[layer].part != i) continue;
            inner("layer " + LayerText(file.layers[layer]) +
                  (info.plan ? "; becomes " + info.plan->becomes[layer] : ""));
        }
        for (const Attribute& attribute : part.attributes) {
            inner(attribute.name + " (" + attribute.type +
                  "): " + Shortened(std::visit(ValueText(), attribute.value)));
        }
    }
    if (info.plan) {
        const Beauty& beauty = info.plan->beauty;
        line("beauty: " + file.layers[beauty.layer].name + ", because " + beauty.why + "; " +
             AlphaText(beauty));
        for (const Cryptomatte& matte : info.plan->cryptomattes)
            line(CryptomatteText(matte));
        line(ExpectationText(Expect(file, *info.plan)));
    } else {
        line("beauty: none; " + info.fault);
    }
    if (const RenderCamera* camera = CameraOf(info)) line(CameraText(*camera));
    for (const std::string& warning : WarningsOf(info))
        line("warning: " + warning);
    return text;
}

std::string DescribeAsJson(const RenderInfo& info) {
    const Description& file = info.file;
    const Part& frame = FrameOf(info);
    Json json{{"file", file.path},
              {"format", file.format},
              {"width", frame.displayWindow.Width()},
              {"height", frame.displayWindow.Height()},
              {"pixelAspectRatio", frame.pixelAspect},
              {"parts", Json::array()},
              {"beauty", nullptr},
              {"renderer", nullptr},
              {"camera", nullptr},
              {"elements", Json::array()},
              {"cryptomattes", Json::array()},
              {"expect", nullptr},
              {"warnings", WarningsOf(info)}};
    for (std::size_t i = 0; i < file.parts.size(); ++i) {
        json["parts"].push_back(ToJson(info, i));
    }
    if (info.plan) AddPlan(info, json);
    if (const RenderCamera* camera = CameraOf(info)) json["camera"] = ToJson(*camera);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace command
