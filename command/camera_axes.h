// The camera's axes in the world, which turn a direction of the world into one of the camera.
#pragma once

#include <array>
#include <optional>
#include <span>

namespace command {

struct CameraAxes {
    // Unit vectors: right, up, and back, away from what the camera looks at.
    std::array<std::array<float, 3>, 3> axes;

    // Rows of directions, turned in place.
    void Turn(std::span<float> x, std::span<float> y, std::span<float> z) const;
};

// Of a transform from the camera's space to the world's, row by row; the camera looks along its
// negative z. Nothing for a transform that has no three directions.
std::optional<CameraAxes> AxesOf(const std::array<double, 16>& transform);

}  // namespace command
