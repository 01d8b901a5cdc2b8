// Scene files. What is read must be sound enough to be put into the application; what the
// application then saves must read back as the same, and be the same text again.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "command/failure.h"
#include "command/scene_file.h"
#include "host/application.h"
#include "host/build_scene.h"
#include "host/capture_scene.h"
#include "host/scene_text_reader.h"
#include "host/scene_text_writer.h"
#include "plugin/entry.h"

namespace {

using Indices = std::vector<std::size_t>;

void Check(bool holds) {
    if (!holds) __builtin_trap();
}

void CheckPlaces(const Indices& nodes, const host::SceneDescription& scene) {
    Check(std::all_of(nodes.begin(), nodes.end(),
                      [&](std::size_t node) { return node < scene.nodes.size(); }));
}

void CheckDescription(const command::SceneDescription& scene) {
    for (const host::SceneNode& node : scene.nodes) {
        Check(node.objectID >= 0 && node.objectID <= 65535);
        if (node.view) {
            const host::CameraLens& lens = *node.view;
            Check(node.kind == host::NodeKind::Camera);
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
        const host::SceneLayerDescription& layer = scene.layers[i];
        Check(!layer.parent || *layer.parent < i);
        CheckPlaces(layer.nodes, scene);
        inLayers.insert(inLayers.end(), layer.nodes.begin(), layer.nodes.end());
    }
    std::sort(inLayers.begin(), inLayers.end());
    Check(std::adjacent_find(inLayers.begin(), inLayers.end()) == inLayers.end());
    for (const host::SceneSet& set : scene.selectionSets)
        CheckPlaces(set.nodes, scene);
    for (const command::NodeTable& table : scene.nodeTables)
        CheckPlaces(table.nodes, scene);
}

// A new application with the library in it.
void Start() {
    host::ResetApplication();
    plugin::Attach();
    host::App().settings.randomSeed = 1;
    for (int i = 0; i < LibNumberClasses(); ++i)
        host::App().classes.Add(LibClassDesc(i));
}

// The text of what the application holds.
std::string Saved() {
    return host::WriteScene(host::CaptureScene());
}

void CheckSaving(const host::SceneDescription& description) {
    const std::string written = host::WriteScene(description);
    Check(host::WriteScene(host::ParseScene("scene.json", written)) == written);
    host::CheckScene(description, host::App().classes);
    const host::BuiltScene built = host::BuildScene(description);
    Check(built.nodes.size() == description.nodes.size());
    Check(built.effects.size() == description.effects.size());
    Check(static_cast<std::size_t>(host::App().scene.NumNodes()) == description.nodes.size());
    Check(host::App().scene.Layers().size() == description.layers.size());
    const std::string saved = Saved();

    const host::SceneDescription again = host::ParseScene("scene.json", saved);
    Start();
    host::CheckScene(again, host::App().classes);
    host::BuildScene(again);
    Check(Saved() == saved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        Start();
        const command::SceneDescription description = command::ParseScene("scene.json", text);
        CheckDescription(description);
        CheckSaving(description);
    } catch (const command::InputError& fault) {
        // As it should be: most inputs are broken. One line is told.
        Check(std::string_view(fault.what()).find('\n') == std::string_view::npos);
    }
    host::ResetApplication();
    return 0;
}
