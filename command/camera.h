// A camera as a file tells it: where it stands, and what of the world a frame shows.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "host/camera_lens.h"

namespace command {

using host::CameraLens;

enum class UpAxis : std::uint8_t { Y, Z };

// The camera that a render file tells of.
struct RenderCamera {
    // To the world with z up, row by row as SceneNode::transform; its axes have a length of 1.
    std::array<double, 16> transform{};
    CameraLens lens{};
    // Which attribute told, and which way was up in its world.
    std::string attribute{};
    UpAxis up = UpAxis::Z;
};

}  // namespace command
