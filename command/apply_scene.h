// Puts a scene file's content into the host's scene, as the application does when it loads a scene.
#pragma once

#include <vector>

#include "command/scene_file.h"
#include "host/scene.h"

class IParamBlock2;

namespace command {

// Nodes and layers that are there already, by name, become what the file says of them; others are
// added in the file's order. What the file doesn't name stays. Nodes without an id keep theirs.
// The result are the scene's nodes in the order of SceneDescription::nodes.
std::vector<host::Node*> ApplyScene(const SceneDescription& description, host::Scene& scene);

// The effect's parameters. Tables of nodes take them from `scene`, by name. False when the block
// lacks one.
bool ApplyParameters(const SceneDescription& description, const host::Scene& scene,
                     IParamBlock2& block);

}  // namespace command
