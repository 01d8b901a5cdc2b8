// Transforms of scene files in the host's form.
#pragma once

#include <matrix3.h>

#include <array>

namespace command {

// `transform` is as SceneNode::transform, row by row for points that are columns; the host's points
// are rows.
inline Matrix3 HostTransform(const std::array<double, 16>& transform) {
    const auto column = [&](std::size_t i) {
        return Point3(static_cast<float>(transform[i]), static_cast<float>(transform[4 + i]),
                      static_cast<float>(transform[8 + i]));
    };
    return {column(0), column(1), column(2), column(3)};
}

}  // namespace command
