// Transforms of scene files in the host's form and back.
#pragma once

#include <matrix3.h>

#include <array>

namespace host {

// `transform` is as SceneNode::transform, row by row for points that are columns; the host's points
// are rows.
inline Matrix3 HostTransform(const std::array<double, 16>& transform) {
    const auto column = [&](std::size_t i) {
        return Point3(static_cast<float>(transform[i]), static_cast<float>(transform[4 + i]),
                      static_cast<float>(transform[8 + i]));
    };
    return {column(0), column(1), column(2), column(3)};
}

inline std::array<double, 16> FileTransform(const Matrix3& matrix) {
    std::array<double, 16> transform{};
    for (int row = 0; row < 4; ++row) {
        const Point3 point = matrix.GetRow(row);
        const auto column = static_cast<std::size_t>(row);
        transform[column] = double{point.x};
        transform[4 + column] = double{point.y};
        transform[8 + column] = double{point.z};
    }
    transform[15] = 1.0;
    return transform;
}

}  // namespace host
