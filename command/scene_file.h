// What a 3D application knows of a scene and a render file doesn't tell: objects and their numbers,
// scene layers, selection sets, render elements, and the effect's settings. Read from the JSON that
// docs/scene-file.md describes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <plugapi.h>

#include "command/camera.h"
#include "command/element_setting.h"
#include "command/setting.h"

namespace command {

// Larger files are refused.
constexpr std::size_t mostSceneBytes = std::size_t{64} << 20;

enum class NodeKind : std::uint8_t { Object, Camera, Light, Helper };

// All names and texts are UTF-8; nodes are named by their place in SceneDescription::nodes.
struct SceneNode {
    std::string name;
    // Its render ID, 0 to 65533; without one the host gives it.
    std::optional<int> id;
    NodeKind kind = NodeKind::Object;
    // The user's number, 0 to 65535.
    int objectID = 0;
    bool hidden = false;
    std::optional<std::size_t> parent;
    bool groupHead = false;
    bool groupMember = false;
    // User properties: lines of "name = value".
    std::string properties;
    // From the node's space to the world's, row by row: x of a point is the first row times
    // (x, y, z, 1). All values are finite in 32 bits, and the last row is 0, 0, 0, 1.
    std::optional<std::array<double, 16>> transform;
    // Of a camera.
    std::optional<CameraLens> view;
};

// Parents stand before their children.
struct SceneLayerDescription {
    std::string name;
    bool hidden = false;
    std::optional<std::size_t> parent;
    // Each node is in one layer at most.
    std::vector<std::size_t> nodes;
};

struct SceneSet {
    std::string name;
    // Each once.
    std::vector<std::size_t> nodes;
};

// What one colour component of a matte element stands for.
struct SceneMatte {
    // An object's or a material's number.
    std::optional<int> id;
    bool isMaterial = false;
    std::vector<std::size_t> nodes;
    bool include = true;
};

struct SceneElement {
    std::string name;
    // Nothing: as its name tells.
    std::optional<Class_ID> elementClass;
    bool enabled = true;
    // Red, green, blue.
    std::optional<std::array<SceneMatte, 3>> multiMatte;
};

struct SceneRender {
    // Hidden objects are rendered too.
    std::optional<bool> hidden;
    std::optional<std::size_t> camera;
    // Frames a second, 1 to 4800.
    std::optional<int> frameRate;
};

struct SceneDescription {
    // As the user wrote it.
    std::string path;
    // Names differ, of nodes, layers, sets and elements each.
    std::vector<SceneNode> nodes;
    std::vector<SceneLayerDescription> layers;
    std::vector<SceneSet> selectionSets;
    std::vector<SceneElement> elements;
    SceneRender render;
    // A table of nodes holds their names.
    std::vector<Setting> parameters;
    std::vector<ElementSetting> elementSettings;
};

// Both throw InputError, which tells the file, the place in it and the fault in one line.
SceneDescription ReadSceneFile(const std::string& path);
SceneDescription ParseScene(const std::string& path, std::string_view text);

}  // namespace command
