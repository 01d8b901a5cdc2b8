// What a scene file tells, as plain values: read from JSON and written as JSON, put into the
// application and taken from it. docs/scene-file.md describes the files.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <plugapi.h>

#include "host/camera_lens.h"
#include "host/saved_objects.h"
#include "host/scene.h"

namespace host {

// Of the ids that the application gives to nodes, and of the user's numbers.
constexpr int highestRenderID = 65533;
constexpr int highestObjectID = 65535;
// Of a frame, in pixels, as of documents.
constexpr int longestSide = 300'000;

// All names and texts are as ToExactText gives them; nodes are named by their place in
// SceneDescription::nodes. Handles are 0 for what nothing in the file refers to by one.
struct SceneNode {
    Handle handle = 0;
    std::string name;
    // Its render ID, 0 to 65533; without one the host gives it.
    std::optional<int> id;
    NodeKind kind = NodeKind::Geometry;
    // The user's number, 0 to 65535.
    int objectID = 0;
    bool hidden = false;
    std::optional<std::size_t> parent;
    // All whose parent it is, in their order; may be empty when that is the file's.
    std::vector<std::size_t> children;
    bool groupHead = false;
    bool groupMember = false;
    // User properties: lines of "name = value".
    std::string properties;
    // From the node's space to the world's, row by row: x of a point is the first row times
    // (x, y, z, 1). All values are finite in 32 bits, and the last row is 0, 0, 0, 1.
    std::optional<std::array<double, 16>> transform;
    // Of a camera.
    std::optional<CameraLens> view;
    std::vector<SavedAppData> appData;
};

// Parents stand before their children.
struct SceneLayerDescription {
    Handle handle = 0;
    std::string name;
    bool hidden = false;
    std::optional<std::size_t> parent;
    // Each node is in one layer at most.
    std::vector<std::size_t> nodes;
    std::vector<SavedAppData> appData;
};

struct SceneSet {
    std::string name;
    // Each once.
    std::vector<std::size_t> nodes;
};

// What one colour component of a matte element stands for.
struct SceneMatte {
    // An object's or a material's number, 0 to 65535.
    std::optional<int> id;
    bool isMaterial = false;
    // Each once.
    std::vector<std::size_t> nodes;
    bool include = true;
};

// An integer of a parameter block that no class describes.
struct SceneNumber {
    ParamID id = 0;
    int value = 0;
};

struct SceneElement {
    Handle handle = 0;
    std::string name;
    // Nothing: as its name tells. An element with a handle has one.
    std::optional<Class_ID> elementClass;
    bool enabled = true;
    // Of the draft settings, not of the production's.
    bool draft = false;
    // Red, green, blue.
    std::optional<std::array<SceneMatte, 3>> multiMatte;
    // All of the element's own block, each once; nothing: as its class starts.
    std::optional<std::vector<SceneNumber>> parameters;
    std::vector<SavedAppData> appData;
};

struct SceneRenderer {
    // Class_ID() when none is assigned.
    Class_ID rendererClass;
    // Of its block, each once; those that are missing are as its class starts.
    std::vector<SceneNumber> parameters;
    // Of a V-Ray, the number of its image sampler.
    std::optional<int> sampler;
};

// Settings of the render; those that are missing stay as they are.
struct SceneRender {
    // Hidden objects are rendered too.
    std::optional<bool> hidden;
    std::optional<std::size_t> camera;
    // Frames a second, 1 to 4800.
    std::optional<int> frameRate;
    // Pixels, 1 to 300000.
    std::optional<int> width;
    std::optional<int> height;
    // The file that the application renders to, and whether it does.
    std::optional<std::string> output;
    std::optional<bool> saveFile;
    // A REND_TIME value, and what a span of frames is numbered from.
    std::optional<int> timeType;
    std::optional<int> numberBase;
    // Whether effects run at all.
    std::optional<bool> effects;
    // Whether the draft settings are the current ones.
    std::optional<bool> draft;
    std::optional<SceneRenderer> renderer;
};

struct SceneDescription {
    // As the user wrote it; for messages.
    std::string path;
    // Of nodes, layers and elements, names that stand more than once are of things with handles
    // only. Names of sets differ. Handles are named once in the whole file.
    std::vector<SceneNode> nodes;
    std::vector<SceneLayerDescription> layers;
    std::vector<SceneSet> selectionSets;
    std::vector<SceneElement> elements;
    SceneRender render;
    std::vector<SavedObject> objects;
    // Of `objects`, in the order in which they are applied; each once.
    std::vector<Handle> effects;
};

}  // namespace host
