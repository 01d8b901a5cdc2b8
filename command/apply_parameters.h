// Puts a scene file's settings by name into the effect.
#pragma once

#include <vector>

#include "command/scene_file.h"
#include "host/scene.h"

class IParamBlock2;

namespace command {

// `nodes` are the scene's, as host::BuildScene made them. False when the block lacks a parameter.
bool ApplyParameters(const SceneDescription& description, const std::vector<host::Node*>& nodes,
                     IParamBlock2& block);

}  // namespace command
