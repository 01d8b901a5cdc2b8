#include "command/camera_axes.h"

#include <cmath>
#include <cstddef>

namespace command {

void CameraAxes::Turn(std::span<float> x, std::span<float> y, std::span<float> z) const {
    const auto& [right, up, back] = axes;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const float wx = x[i];
        const float wy = y[i];
        const float wz = z[i];
        x[i] = right[0] * wx + right[1] * wy + right[2] * wz;
        y[i] = up[0] * wx + up[1] * wy + up[2] * wz;
        z[i] = back[0] * wx + back[1] * wy + back[2] * wz;
    }
}

std::optional<CameraAxes> AxesOf(const std::array<double, 16>& transform) {
    CameraAxes camera{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double x = transform[axis];
        const double y = transform[4 + axis];
        const double z = transform[8 + axis];
        const double length = std::sqrt(x * x + y * y + z * z);
        if (!(length > 0.0)) return std::nullopt;
        camera.axes[axis] = {static_cast<float>(x / length), static_cast<float>(y / length),
                             static_cast<float>(z / length)};
    }
    // Of unit vectors at right angles it is 1.
    constexpr float leastVolume = 1e-4F;
    const auto& [x, y, z] = camera.axes;
    const float volume = x[0] * (y[1] * z[2] - y[2] * z[1]) + x[1] * (y[2] * z[0] - y[0] * z[2]) +
                         x[2] * (y[0] * z[1] - y[1] * z[0]);
    return std::abs(volume) >= leastVolume ? std::optional(camera) : std::nullopt;
}

}  // namespace command
