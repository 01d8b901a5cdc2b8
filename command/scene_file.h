// A scene file as the command reads it: the scene of the 3D application, and over the effects that
// are saved in it settings by name. docs/scene-file.md describes the files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "command/element_setting.h"
#include "command/setting.h"
#include "host/scene_description.h"

namespace command {

using host::SceneElement;
using host::SceneMatte;
using host::SceneNode;

// The nodes that a table of nodes is to hold, by their places in the scene.
struct NodeTable {
    const parameters::Row* row = nullptr;
    std::vector<std::size_t> nodes;
};

struct SceneDescription : host::SceneDescription {
    // Tables of nodes stand in `nodeTables`.
    std::vector<Setting> parameters;
    std::vector<NodeTable> nodeTables;
    std::vector<ElementSetting> elementSettings;
};

// Both throw InputError, which tells the file, the place in it and the fault in one line.
SceneDescription ReadSceneFile(const std::string& path);
SceneDescription ParseScene(const std::string& path, std::string_view text);

}  // namespace command
