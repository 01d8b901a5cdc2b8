// The camera in a part's attributes, as renderers write it: `worldToCamera` and `worldToNDC` of the
// OpenEXR standard, or V-Ray's `cameraTransform` and what goes with it. docs/passes.md tells which
// way the world is taken to lie.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "command/camera.h"
#include "command/render_file.h"

namespace command {

struct CameraFinding {
    std::optional<RenderCamera> camera;
    // One line for each attribute that can't be believed.
    std::vector<std::string> warnings;
};

CameraFinding FindCamera(const std::vector<Attribute>& attributes);

}  // namespace command
