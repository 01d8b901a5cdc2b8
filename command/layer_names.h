// Channels sorted into layers by their names.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/render_file.h"

namespace command {

// Which component of a colour a suffix names: R, red, X... are not told apart from their lower
// case.
enum class Component : std::uint8_t { Red, Green, Blue, Alpha, Luminance, RedChroma, BlueChroma };
std::optional<Component> ColorComponent(std::string_view suffix);

// "ViewLayer.Combined.R" gives "ViewLayer.Combined" and "R"; a name without a dot is all suffix.
struct ChannelName {
    std::string_view layer;
    std::string_view suffix;
};
ChannelName SplitChannelName(std::string_view name);

// The layers of one part, in the order of their first channels. Colour channels without a layer
// name make one layer together; every other channel without one is a layer of its own.
// `partName` is empty in a file of one part.
std::vector<Layer> SortIntoLayers(std::vector<Channel> channels, std::size_t part,
                                  std::string_view partName);

// Puts the part's name in front of layer names that are there more than once.
void QualifyDoubles(std::vector<Layer>& layers, const std::vector<Part>& parts);

}  // namespace command
