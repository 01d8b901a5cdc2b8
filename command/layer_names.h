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

// 0 for X and U, 1 for Y and V, 2 for Z, 3 for W, in either case.
std::optional<std::size_t> AxisOf(std::string_view suffix);

// The layers of one part, in the order of their first channels. Channels without a layer name make
// one layer where they are colours, one where they are a vector (X Y Z, U V), and one for each
// vector whose axes stand behind a common stem ("N" of NX NY NZ, "vel" of velX velY); every other
// one is a layer of its own. `partName` is empty in a file of one part.
std::vector<Layer> SortIntoLayers(std::vector<Channel> channels, std::size_t part,
                                  std::string_view partName);

// Puts the part's name in front of layer names that are there more than once.
void QualifyDoubles(std::vector<Layer>& layers, const std::vector<Part>& parts);

}  // namespace command
