#include "command/exr_description.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/exr_file.h"
#include "tests/command/exr_samples.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// At 1, 2, 3 in a world with z up; it looks along y.
constexpr std::array<float, 16> toCamera{1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, -1, -3, -2, 1};

Description Describe(const std::vector<exr_samples::Part>& parts) {
    const std::string bytes = exr_samples::Write(parts);
    return OpenExrFile("a.exr", bytes.data(), bytes.size())->GetDescription();
}

TEST(ExrDescription, APartsCameraStandsInItsAttributes) {
    exr_samples::Part part;
    part.matrices = {{"worldToCamera", toCamera}};
    const Description file = Describe({part});
    EXPECT_THAT(file.warnings, IsEmpty());
    ASSERT_TRUE(file.parts[0].camera.has_value());
    EXPECT_THAT(file.parts[0].camera->transform,
                ElementsAre(1, 0, 0, 1, 0, 0, -1, 2, 0, 1, 0, 3, 0, 0, 0, 1));
    EXPECT_EQ(CameraOf(file, 0), &*file.parts[0].camera);
}

TEST(ExrDescription, VRaysNumbersGoWithItsCamera) {
    exr_samples::Part part;
    part.matrices = {{"cameraTransform", {1, 0, 0, 1, 0, 0, -1, 2, 0, 1, 0, 3, 0, 0, 0, 1}}};
    part.numbers = {{"cameraFov", 45.5F}, {"cameraFarRange", 1000.0F}};
    const Description file = Describe({part});
    ASSERT_TRUE(file.parts[0].camera.has_value());
    EXPECT_EQ(file.parts[0].camera->lens.fieldOfView, 45.5);
    EXPECT_EQ(file.parts[0].camera->lens.farRange, 1000.0);
}

TEST(ExrDescription, ThePicturesPartsCameraComesFirstThenThatOfAnyPart) {
    exr_samples::Part none;
    none.name = "a";
    exr_samples::Part first = none;
    first.name = "b";
    first.matrices = {{"worldToCamera", toCamera}};
    exr_samples::Part second = first;
    second.name = "c";
    second.matrices[0].second[12] = -7.0F;
    const Description file = Describe({none, first, second});
    EXPECT_EQ(CameraOf(file, 0), &*file.parts[1].camera);
    EXPECT_EQ(CameraOf(file, 1), &*file.parts[1].camera);
    EXPECT_EQ(CameraOf(file, 2), &*file.parts[2].camera);
    EXPECT_EQ(file.parts[2].camera->transform[3], 7.0);
    EXPECT_EQ(CameraOf(Describe({none}), 0), nullptr);
}

TEST(ExrDescription, WhatIsWrongWithTheCameraOfAllPartsIsToldOnce) {
    exr_samples::Part part;
    part.matrices = {{"worldToCamera", {}}};
    part.name = "a";
    exr_samples::Part other = part;
    other.name = "b";
    const Description file = Describe({part, other});
    EXPECT_THAT(file.warnings,
                ElementsAre("worldToCamera is no transform to the left-handed space of a camera, "
                            "and no camera is taken from it"));
    EXPECT_EQ(CameraOf(file, 0), nullptr);
}

}  // namespace
}  // namespace command
