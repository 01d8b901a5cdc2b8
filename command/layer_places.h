// Where a layer stands in a file of several view layers and views: "ViewLayer.DiffDir.left" is the
// pass DiffDir of the view layer ViewLayer as the left eye sees it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "command/render_file.h"

namespace command {

struct LayerPlace {
    // Empty where the renderer has no view layers.
    std::string viewLayer{};
    // Empty for the colours of a view that have no name but the view's.
    std::string pass{};
    // Of a stereo picture or another one of several views; empty where there is one view. Layers
    // without the name of a view are of the file's first view.
    std::string view{};

    friend bool operator==(const LayerPlace&, const LayerPlace&) = default;
};

// Tells view layers, whose names may hold dots themselves, by passes that renderers are known to
// make.
class LayerPlaces {
  public:
    // Refers to nothing of `file` afterwards.
    explicit LayerPlaces(const Description& file);

    // One for each of the description's layers.
    [[nodiscard]] const std::vector<LayerPlace>& All() const { return places; }
    // Of a name that may have no layer, such as the one in metadata.
    [[nodiscard]] LayerPlace PlaceOf(std::string_view name) const;

  private:
    std::vector<std::string> views;
    // Sorted.
    std::vector<std::string> viewLayers;
    std::vector<LayerPlace> places;
};

}  // namespace command
