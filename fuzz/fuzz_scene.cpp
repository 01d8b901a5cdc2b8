// Scene files. What is read must be sound enough to be put into a scene.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "command/apply_scene.h"
#include "command/failure.h"
#include "command/scene_file.h"
#include "host/scene.h"

namespace {

using Indices = std::vector<std::size_t>;

void Check(bool holds) {
    if (!holds) __builtin_trap();
}

void CheckPlaces(const Indices& nodes, const command::SceneDescription& scene) {
    Check(std::all_of(nodes.begin(), nodes.end(),
                      [&](std::size_t node) { return node < scene.nodes.size(); }));
}

void CheckDescription(const command::SceneDescription& scene) {
    for (const command::SceneNode& node : scene.nodes) {
        Check(!node.name.empty() && node.objectID >= 0 && node.objectID <= 65535);
        if (node.view) {
            const command::CameraLens& lens = *node.view;
            Check(node.kind == command::NodeKind::Camera);
            Check(lens.fieldOfView >= 0.0 && lens.fieldOfView < 180.0 && lens.width >= 0.0);
            Check(lens.fieldOfView == 0.0 || lens.width == 0.0);
            Check(lens.nearRange >= 0.0 && lens.farRange >= 0.0);
        }
        std::size_t steps = 0;
        for (auto parent = node.parent; parent; parent = scene.nodes[*parent].parent) {
            Check(*parent < scene.nodes.size() && ++steps < scene.nodes.size());
        }
    }
    Indices inLayers;
    for (std::size_t i = 0; i < scene.layers.size(); ++i) {
        const command::SceneLayerDescription& layer = scene.layers[i];
        Check(!layer.parent || *layer.parent < i);
        CheckPlaces(layer.nodes, scene);
        inLayers.insert(inLayers.end(), layer.nodes.begin(), layer.nodes.end());
    }
    std::sort(inLayers.begin(), inLayers.end());
    Check(std::adjacent_find(inLayers.begin(), inLayers.end()) == inLayers.end());
    for (const command::SceneSet& set : scene.selectionSets)
        CheckPlaces(set.nodes, scene);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const command::SceneDescription description = command::ParseScene("scene.json", text);
        CheckDescription(description);
        host::Scene scene;
        const auto nodes = command::ApplyScene(description, scene);
        Check(nodes.size() == description.nodes.size());
        Check(static_cast<std::size_t>(scene.NumNodes()) == description.nodes.size());
        Check(scene.Layers().size() == description.layers.size());
    } catch (const command::InputError& fault) {
        // As it should be: most inputs are broken. One line is told.
        Check(std::string_view(fault.what()).find('\n') == std::string_view::npos);
    }
    return 0;
}
