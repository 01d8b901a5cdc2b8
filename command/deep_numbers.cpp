#include "command/deep_numbers.h"

#include <algorithm>

namespace command {
namespace {

bool IsFloat(const Description& file, std::size_t part, const std::string& channelName) {
    for (const Layer& layer : file.layers) {
        if (layer.part != part) continue;
        const auto found =
            std::find_if(layer.channels.begin(), layer.channels.end(),
                         [&](const Channel& each) { return each.name == channelName; });
        if (found != layer.channels.end()) return found->type != SampleType::Unsigned32;
    }
    return false;
}

}  // namespace

DeepNumbers::DeepNumbers(const Description& file, std::size_t part, const DeepPass& deep) {
    const auto sourceOf = [&](std::optional<std::size_t> place) -> std::optional<Source> {
        if (!place) return std::nullopt;
        return Source{*place, IsFloat(file, part, deep.channels.ids[*place])};
    };
    object = sourceOf(deep.objectID);
    material = sourceOf(deep.materialID);
}

std::uint32_t DeepNumbers::Number(const DeepSample& sample, const std::optional<Source>& source) {
    if (!source) return 0;
    const std::uint32_t value = sample.ids[source->place];
    return source->isFloat ? WholeNumber(std::bit_cast<float>(value)) : value;
}

DeepFragment DeepNumbers::FragmentOf(const DeepSample& sample) const {
    DeepFragment fragment;
    fragment.z = sample.z;
    fragment.alpha = sample.alpha;
    fragment.color = sample.color;
    fragment.objectID = Number(sample, object);
    fragment.materialID = Number(sample, material);
    return fragment;
}

}  // namespace command
