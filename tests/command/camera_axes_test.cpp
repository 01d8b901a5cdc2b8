#include "command/camera_axes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace command {
namespace {

using Direction = std::array<float, 3>;

// Looks along the world's y, with the world's z above.
constexpr std::array<double, 16> alongY{1, 0, 0, 5, 0, 0, -1, -8, 0, 1, 0, 1.5, 0, 0, 0, 1};

Direction Turned(const std::array<double, 16>& transform, Direction direction) {
    const auto axes = AxesOf(transform);
    EXPECT_TRUE(axes.has_value());
    axes->Turn({&direction[0], 1}, {&direction[1], 1}, {&direction[2], 1});
    return direction;
}

void ExpectNear(const Direction& given, const Direction& wanted) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(given[i], wanted[i], 1e-6F) << i;
}

TEST(CameraAxes, TurnTheWorldsDirectionsIntoTheCameras) {
    ExpectNear(Turned(alongY, {0, -1, 0}), {0, 0, 1});
    ExpectNear(Turned(alongY, {0, 0, 1}), {0, 1, 0});
    ExpectNear(Turned(alongY, {1, 0, 0}), {1, 0, 0});
    ExpectNear(Turned(alongY, {0, 0, 0}), {0, 0, 0});
}

TEST(CameraAxes, ACameraInTheWorldsOwnPoseChangesNothing) {
    constexpr std::array<double, 16> same{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    ExpectNear(Turned(same, {0.25F, -0.5F, 2}), {0.25F, -0.5F, 2});
}

TEST(CameraAxes, TheCamerasScaleDoesntCount) {
    std::array<double, 16> scaled = alongY;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            scaled[row * 4 + column] *= 250.0;
    }
    ExpectNear(Turned(scaled, {0, -1, 0}), {0, 0, 1});
}

TEST(CameraAxes, TurnWholeRows) {
    std::array<float, 3> x{1, 0, 0};
    std::array<float, 3> y{0, 1, 0};
    std::array<float, 3> z{0, 0, 1};
    const auto axes = AxesOf(alongY);
    ASSERT_TRUE(axes.has_value());
    axes->Turn(x, y, z);
    EXPECT_THAT(x, testing::ElementsAre(1, 0, 0));
    EXPECT_THAT(y, testing::ElementsAre(0, 0, 1));
    EXPECT_THAT(z, testing::ElementsAre(0, -1, 0));
}

TEST(CameraAxes, ATransformWithoutThreeDirectionsHasNone) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        std::array<double, 16> flat = alongY;
        for (std::size_t row = 0; row < 3; ++row)
            flat[row * 4 + axis] = 0.0;
        EXPECT_FALSE(AxesOf(flat).has_value()) << axis;
    }
    std::array<double, 16> inAPlane = alongY;
    for (std::size_t row = 0; row < 3; ++row)
        inAPlane[row * 4 + 2] = inAPlane[row * 4] + inAPlane[row * 4 + 1];
    EXPECT_FALSE(AxesOf(inAPlane).has_value());
    std::array<double, 16> broken = alongY;
    broken[0] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(AxesOf(broken).has_value());
}

}  // namespace
}  // namespace command
