// A camera as a file tells it: where it stands, and what of the world a frame shows.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace command {

// All of it is finite in 32 bits, and 0 when it isn't known.
struct CameraLens {
    // Horizontal, in degrees, below 180; of a perspective.
    double fieldOfView = 0.0;
    // Of what the frame shows, in the world's units; of a parallel projection. No lens has both.
    double width = 0.0;
    // Along the camera's axis, where the surroundings (fog) begin and end.
    double nearRange = 0.0;
    double farRange = 0.0;
};

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
