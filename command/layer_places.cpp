#include "command/layer_places.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <utility>
#include <variant>

#include "command/ascii_case.h"
#include "command/layer_names.h"
#include "command/pass_names.h"

namespace command {
namespace {

const Attribute* FindAttribute(const Part& part, std::string_view name) {
    const auto found = std::find_if(part.attributes.begin(), part.attributes.end(),
                                    [&](const Attribute& each) { return each.name == name; });
    return found == part.attributes.end() ? nullptr : &*found;
}

// The views that the file says it has, the first one first; without a word of it, what files that
// say nothing call the two of a stereo picture.
std::vector<std::string> ViewsOf(const Description& file, bool& areTold) {
    for (const Part& part : file.parts) {
        const Attribute* attribute = FindAttribute(part, "multiView");
        if (!attribute) continue;
        const auto* names = std::get_if<std::vector<std::string>>(&attribute->value);
        if (names && !names->empty()) {
            areTold = true;
            return *names;
        }
    }
    areTold = false;
    return {"left", "right"};
}

// In a file of several parts, a part with one layer of one channel is told by the part's name.
std::string FullName(const Description& file, std::size_t index,
                     const std::vector<std::size_t>& layersOfPart) {
    const Layer& layer = file.layers[index];
    const Part& part = file.parts[layer.part];
    const bool isAlone = layersOfPart[layer.part] == 1 && layer.channels.size() == 1;
    const bool hasOwnName = layer.channels.front().name.find('.') != std::string::npos;
    const bool useful = file.parts.size() > 1 && !part.name.empty();
    return useful && isAlone && !hasOwnName ? part.name : layer.name;
}

// The name without the view at its end, and the view.
std::pair<std::string_view, std::string> SplitView(const std::vector<std::string>& views,
                                                   std::string_view name) {
    const ChannelName split = SplitChannelName(name);
    for (const std::string& view : views) {
        if (EqualIgnoringCase(split.suffix, view)) return {split.layer, view};
    }
    return {name, {}};
}

std::string ViewOfPart(const Part& part) {
    const Attribute* attribute = FindAttribute(part, "view");
    const auto* name = attribute ? std::get_if<std::string>(&attribute->value) : nullptr;
    return name ? *name : std::string();
}

}  // namespace

LayerPlaces::LayerPlaces(const Description& file) {
    bool viewsAreTold = false;
    views = ViewsOf(file, viewsAreTold);
    const Renderer renderer = RendererOf(file);
    std::vector<std::size_t> layersOfPart(file.parts.size());
    for (const Layer& layer : file.layers)
        ++layersOfPart[layer.part];

    std::vector<std::string> names;
    names.reserve(file.layers.size());
    std::set<std::string, std::less<>> found;
    for (std::size_t i = 0; i < file.layers.size(); ++i) {
        names.push_back(FullName(file, i, layersOfPart));
        const ChannelName split = SplitChannelName(SplitView(views, names.back()).first);
        if (!split.layer.empty() && IsKnownPass(renderer, split.suffix)) found.emplace(split.layer);
    }
    viewLayers.assign(found.begin(), found.end());

    places.reserve(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        LayerPlace place = PlaceOf(names[i]);
        if (place.view.empty()) place.view = ViewOfPart(file.parts[file.layers[i].part]);
        if (place.view.empty() && viewsAreTold) place.view = views.front();
        places.push_back(std::move(place));
    }
}

LayerPlace LayerPlaces::PlaceOf(std::string_view name) const {
    const auto [rest, view] = SplitView(views, name);
    // The longest of the view layers that fit.
    for (std::size_t dot = rest.rfind('.'); dot != std::string_view::npos && dot > 0;
         dot = rest.rfind('.', dot - 1)) {
        const std::string viewLayer(rest.substr(0, dot));
        if (std::binary_search(viewLayers.begin(), viewLayers.end(), viewLayer)) {
            return {viewLayer, std::string(rest.substr(dot + 1)), view};
        }
    }
    return {{}, std::string(rest), view};
}

}  // namespace command
