// Descriptions of render files that are on no disk.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "command/layer_names.h"
#include "command/render_file.h"

namespace descriptions {

struct Part {
    std::vector<command::Channel> channels{};
    std::string name{};
    std::vector<std::pair<std::string, command::AttributeValue>> attributes{};
    std::string compression = "zip";
    bool deep = false;
};

// Channels of one type: Channels({"R", "G"}, SampleType::Half).
inline std::vector<command::Channel> Channels(
    const std::vector<std::string>& names, command::SampleType type = command::SampleType::Float) {
    std::vector<command::Channel> channels;
    channels.reserve(names.size());
    for (const std::string& name : names)
        channels.push_back({.name = name, .type = type});
    return channels;
}

inline std::vector<command::Channel> Joined(std::vector<command::Channel> left,
                                            const std::vector<command::Channel>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// As the reader describes it; the path is "a.exr".
inline command::Description File(const std::vector<Part>& parts) {
    command::Description file;
    file.path = "a.exr";
    for (const Part& each : parts) {
        for (command::Layer& layer : command::SortIntoLayers(each.channels, file.parts.size(),
                                                             parts.size() > 1 ? each.name : "")) {
            file.layers.push_back(std::move(layer));
        }
        command::Part part;
        part.name = each.name;
        part.compression = each.compression;
        part.deep = each.deep;
        for (const auto& [name, value] : each.attributes)
            part.attributes.push_back({name, "string", value});
        file.parts.push_back(std::move(part));
    }
    command::QualifyDoubles(file.layers, file.parts);
    return file;
}

inline command::Description File(const Part& part) {
    return File(std::vector<Part>{part});
}

// "LAYER.SUFFIX" of a channel.
inline std::string NameOf(const command::Description& file, const command::ChannelRef& ref) {
    return file.layers.at(ref.layer).channels.at(ref.channel).name;
}

}  // namespace descriptions
