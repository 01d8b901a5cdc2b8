// Names of channels, parts, views and Cryptomattes, and what is made of them. Each line is a
// channel of floats, or begins with "h:" (a half) or "i:" (an integer), "=" (a part, by its name),
// "~" (a deep part) or "@" (an attribute, NAME=TEXT).
#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "command/beauty.h"
#include "command/failure.h"
#include "command/layer_names.h"
#include "command/passes.h"

namespace {

struct PartInput {
    command::Part part;
    std::vector<command::Channel> channels;
};

void AddLine(std::vector<PartInput>& parts, std::string_view line) {
    const auto rest = [&](std::size_t count) { return std::string(line.substr(count)); };
    if (line.starts_with('=') || line.starts_with('~')) {
        parts.push_back({{.name = rest(1), .deep = line.front() == '~'}, {}});
    } else if (line.starts_with('@')) {
        const std::size_t equals = std::min(line.find('='), line.size());
        const std::string name(line.substr(1, std::max<std::size_t>(equals, 1) - 1));
        const std::string text(line.substr(std::min(equals + 1, line.size())));
        command::AttributeValue value = text;
        if (name == "multiView") value = std::vector<std::string>{text, "right"};
        parts.back().part.attributes.push_back({name, "string", value});
    } else if (line.starts_with("h:")) {
        parts.back().channels.push_back({.name = rest(2), .type = command::SampleType::Half});
    } else if (line.starts_with("i:")) {
        parts.back().channels.push_back({.name = rest(2), .type = command::SampleType::Unsigned32});
    } else {
        parts.back().channels.push_back(
            {.name = std::string(line), .type = command::SampleType::Float});
    }
}

std::vector<PartInput> ReadParts(std::string_view text) {
    std::vector<PartInput> parts(1);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        AddLine(parts, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

// No channel is lost, and no layer is empty.
void CheckLayers(const std::vector<command::Layer>& layers, std::size_t channelCount) {
    std::size_t count = 0;
    for (const command::Layer& layer : layers) {
        if (layer.channels.empty()) __builtin_trap();
        count += layer.channels.size();
    }
    if (count != channelCount) __builtin_trap();
}

void Check(const command::Description& file, const std::optional<command::ChannelRef>& ref) {
    const bool inside = !ref || (ref->layer < file.layers.size() &&
                                 ref->channel < file.layers[ref->layer].channels.size());
    if (!inside) __builtin_trap();
}

void CheckPlan(const command::Description& file, const command::PassPlan& plan) {
    if (plan.becomes.size() != file.layers.size()) __builtin_trap();
    for (const std::string& text : plan.becomes) {
        if (text.empty()) __builtin_trap();
    }
    std::set<std::string> names;
    for (const command::PassElement& each : plan.elements) {
        if (!names.insert(each.name).second) __builtin_trap();
        const command::PassChannels& channels = each.channels;
        const bool any = channels.red || channels.green || channels.blue;
        if (!any) __builtin_trap();
        for (const auto& ref : {channels.red, channels.green, channels.blue, channels.alpha})
            Check(file, ref);
    }
    for (const command::Cryptomatte& matte : plan.cryptomattes) {
        for (const command::CryptomatteRank& rank : matte.ranks) {
            Check(file, rank.id);
            Check(file, rank.coverage);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    std::vector<PartInput> parts = ReadParts(text);
    command::Description file;
    // A folder that isn't there, so that nothing is read beside it.
    file.path = "/no such folder/a.exr";
    for (PartInput& each : parts) {
        const std::size_t channels = each.channels.size();
        const std::vector<command::Layer> layers = command::SortIntoLayers(
            std::move(each.channels), file.parts.size(), parts.size() > 1 ? each.part.name : "");
        CheckLayers(layers, channels);
        file.layers.insert(file.layers.end(), layers.begin(), layers.end());
        file.parts.push_back(std::move(each.part));
    }
    command::QualifyDoubles(file.layers, file.parts);
    try {
        const command::Beauty beauty = command::ChooseBeauty(file);
        CheckPlan(file, command::PlanPasses(file, beauty));
        CheckPlan(file, command::PlanPasses(file, beauty, {.otherViews = false}));
    } catch (const command::InputError&) {
        // No picture among the layers, as it may be.
    }
    return 0;
}
