#include "command/exr_camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace command {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;
using Doubles = std::vector<double>;
using CameraAttributes = std::vector<Attribute>;

// At 1, 2, 3 in a world with z up; it looks along y.
const Doubles standing{1, 0, 0, 1, 0, 0, -1, 2, 0, 1, 0, 3, 0, 0, 0, 1};
// The same camera for worldToCamera, in a world with z up and in one with y up.
const Doubles toCameraOfZUp{1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, -1, -3, -2, 1};
const Doubles toCameraOfYUp{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, -1, -3, -2, 1};

CameraAttributes ToCamera(const Doubles& numbers) {
    return {{"worldToCamera", "m44f", numbers}};
}

// In the world with y up.
CameraAttributes Projected(const Doubles& toFrame) {
    return {{"worldToCamera", "m44f", toCameraOfYUp}, {"worldToNDC", "m44f", toFrame}};
}

RenderCamera Found(const CameraAttributes& attributes) {
    const CameraFinding finding = FindCamera(attributes);
    EXPECT_THAT(finding.warnings, IsEmpty());
    EXPECT_TRUE(finding.camera.has_value());
    return finding.camera.value_or(RenderCamera());
}

auto Is(const Doubles& transform, double tolerance = 1e-6) {
    return Pointwise(DoubleNear(tolerance), transform);
}

// No camera; the one warning.
std::string ExrCameraComplaint(const CameraAttributes& attributes) {
    const CameraFinding finding = FindCamera(attributes);
    EXPECT_FALSE(finding.camera.has_value());
    EXPECT_EQ(finding.warnings.size(), 1U);
    return finding.warnings.empty() ? "" : finding.warnings[0];
}

TEST(ExrCamera, IsWhereTheStandardsMatrixPutsIt) {
    const RenderCamera inZUp = Found(ToCamera(toCameraOfZUp));
    EXPECT_THAT(inZUp.transform, Is(standing));
    EXPECT_EQ(inZUp.up, UpAxis::Z);
    EXPECT_EQ(inZUp.attribute, "worldToCamera");
    const RenderCamera inYUp = Found(ToCamera(toCameraOfYUp));
    EXPECT_THAT(inYUp.transform, Is(standing));
    EXPECT_EQ(inYUp.up, UpAxis::Y);
    EXPECT_EQ(inYUp.lens.fieldOfView, 0.0);
    EXPECT_EQ(inYUp.lens.width, 0.0);
}

// As a renderer with y up wrote it, with a field of view of 45 degrees; what x and y are divided by
// is negative before the camera.
TEST(ExrCamera, IsReadAsARendererWroteItInAWorldWithYUp) {
    const RenderCamera camera =
        Found({{"worldToCamera", "m44f",
                Doubles{0.586085, -0.285516, -0.758277, 0, 1.34784e-07, 0.935857, -0.35238, 0,
                        -0.810249, -0.206525, -0.548492, 0, -0.978823, -0.316005, 4.80077, 1}},
               {"worldToNDC", "m44f",
                Doubles{1.41494, -1.22542, -7.58277e-05, 0.758277, 3.25398e-07, 4.01665,
                        -3.5238e-05, 0.35238, -1.95612, -0.886394, -5.48492e-05, 0.548492, -2.36309,
                        -1.35628, 0.000479977, -4.80077}}});
    EXPECT_EQ(camera.up, UpAxis::Y);
    EXPECT_THAT(camera.transform,
                Is({0.586085, -0.285516, 0.758277, 4.123761, 0.810249, 0.206525, -0.548492,
                    -1.774831, 0, 0.935857, 0.35238, 1.987431, 0, 0, 0, 1},
                   2e-5));
    EXPECT_NEAR(camera.lens.fieldOfView, 45.0, 1e-3);
    EXPECT_EQ(camera.lens.width, 0.0);
}

TEST(ExrCamera, IsReadAsARendererWroteItInAWorldWithZUp) {
    const RenderCamera camera =
        Found(ToCamera({0.866906, 0.160843, 0.471808, 0, -0.498471, 0.279727, 0.820536, 0,
                        3.66805e-08, 0.946511, -0.322673, 0, -0.187342, -0.00632298, 13.006, 1}));
    EXPECT_EQ(camera.up, UpAxis::Z);
    EXPECT_THAT(camera.transform,
                Is({0.866906, 0.160843, -0.471808, -5.972910, -0.498471, 0.279727, -0.820536,
                    -10.763507, 0, 0.946511, 0.322673, 4.202670, 0, 0, 0, 1},
                   2e-5));
}

TEST(ExrCamera, OfNoUseForWhichWayIsUpMeansY) {
    // It looks straight down, and has no other hint: along -y of a world with y up.
    const RenderCamera camera = Found(ToCamera({1, 0, 0, 0, 0, 0, -1, 0, 0, -1, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(camera.up, UpAxis::Y);
    EXPECT_THAT(camera.transform, Is({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(ExrCamera, AttributesMayHaveTheFormatsNameInFront) {
    const RenderCamera camera = Found({{"exr/worldToCamera", "m44f", toCameraOfYUp}});
    EXPECT_THAT(camera.transform, Is(standing));
    EXPECT_EQ(camera.attribute, "worldToCamera");
}

TEST(ExrCamera, TheFrameGoesFromMinusOneToOneOrFromZeroToOne) {
    const Doubles perspectives[] = {
        {1, 0, 0, 0, 0, 1.5, 0, 0, 0, 0, -1, -1, -1, -4.5, -3, -2},
        {0.5, 0, 0, 0, 0, -0.75, 0, 0, -0.5, -0.5, -1, -1, -1.5, 1.25, -3, -2},
        // Shifted sideways by a tenth of the frame's half.
        {1, 0, 0, 0, 0, 1.5, 0, 0, -0.1, 0, -1, -1, -1.2, -4.5, -3, -2},
    };
    for (const Doubles& each : perspectives) {
        const CameraLens lens = Found(Projected(each)).lens;
        EXPECT_NEAR(lens.fieldOfView, 90.0, 1e-9) << testing::PrintToString(each);
        EXPECT_EQ(lens.width, 0.0);
    }
    const Doubles parallels[] = {
        {0.25, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, -1, 0, -0.25, -1.5, -2, 1},
        {0.125, 0, 0, 0, 0, -0.25, 0, 0, 0, 0, -1, 0, 0.375, 1.25, -2, 1},
    };
    for (const Doubles& each : parallels) {
        const CameraLens lens = Found(Projected(each)).lens;
        EXPECT_NEAR(lens.width, 8.0, 1e-9) << testing::PrintToString(each);
        EXPECT_EQ(lens.fieldOfView, 0.0);
    }
}

TEST(ExrCamera, TheUnitsOfTheCamerasSpaceDontCount) {
    // The camera counts in halves of the world's unit.
    const RenderCamera camera = Found(
        {{"worldToCamera", "m44f", Doubles{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, -2, 0, -2, -6, -4, 1}},
         {"worldToNDC", "m44f",
          Doubles{0.25, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, -1, 0, -0.25, -1.5, -2, 1}}});
    EXPECT_THAT(camera.transform, Is(standing));
    EXPECT_NEAR(camera.lens.width, 8.0, 1e-9);
}

TEST(ExrCamera, AMatrixThatLiesGivesNone) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::string noTransform =
        "worldToCamera is no transform to the left-handed space of a camera, and no camera is "
        "taken from it";
    const std::string notFinite =
        "worldToCamera holds numbers that aren't finite, and no camera is taken from it";
    struct Case {
        Doubles numbers;
        std::string complaint;
    };
    const Case cases[] = {
        {{nan, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}, notFinite},
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, infinity, 0, 1}, notFinite},
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 1e39, 0, 0, 1}, notFinite},
        // What is written where nothing is known.
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, noTransform},
        {Doubles(16, 0.0), noTransform},
        {{1, 0, 0, 0, 1, 0, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}, noTransform},
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0.5, 0, 0, 0, 1}, noTransform},
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 2}, noTransform},
        {{1e-30, 0, 0, 0, 0, 1e-30, 0, 0, 0, 0, -1e-30, 0, 1e20, 0, 0, 1},
         "worldToCamera puts the camera out of all bounds, and no camera is taken from it"},
        {{1, 0, 0, 0, 1, 0, 0, 0, 1},
         "worldToCamera is no matrix of 4 by 4 numbers, and no camera is taken from it"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(ExrCameraComplaint(ToCamera(each.numbers)), each.complaint)
            << testing::PrintToString(each.numbers);
    }
    EXPECT_EQ(ExrCameraComplaint({{"worldToCamera", "string", std::string("1 0 0 0")}}),
              "worldToCamera is no matrix of 4 by 4 numbers, and no camera is taken from it");
}

TEST(ExrCamera, AProjectionThatLiesLeavesTheCameraWithoutALens) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        Doubles numbers;
        std::string complaint;
    };
    const std::string noMatch =
        "worldToNDC doesn't go with worldToCamera, and the field of view isn't known";
    const Case cases[] = {
        {Doubles(16, 0.0), noMatch},
        {{0, 0, 0, 0, 0, 1.5, 0, 0, 0, 0, -1, -1, -1, -4.5, -3, -2}, noMatch},
        // Of another camera, which looks along x.
        {{0, 0, 1, 1, 0, 1.5, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}, noMatch},
        // Rolled.
        {{1, 0, 0, 0, 1, 1.5, 0, 0, 0, 0, -1, -1, -1, -4.5, -3, -2}, noMatch},
        // An angle of nearly 180 degrees, and of nearly 0.
        {{1e-12, 0, 0, 0, 0, 1.5, 0, 0, 0, 0, -1, -1, 0, -4.5, -3, -2}, noMatch},
        {{1e-38, 0, 0, 0, 0, 1.5, 0, 0, 0, 0, -1, -1e30, 0, -4.5, -3, -2}, noMatch},
        {{infinity, 0, 0, 0, 0, 1.5, 0, 0, 0, 0, -1, -1, -1, -4.5, -3, -2},
         "worldToNDC holds numbers that aren't finite, and the field of view isn't known"},
    };
    for (const Case& each : cases) {
        const CameraFinding finding = FindCamera(Projected(each.numbers));
        ASSERT_TRUE(finding.camera.has_value());
        EXPECT_THAT(finding.camera->transform, Is(standing));
        EXPECT_EQ(finding.camera->lens.fieldOfView, 0.0);
        EXPECT_EQ(finding.camera->lens.width, 0.0);
        EXPECT_THAT(finding.warnings, ElementsAre(each.complaint))
            << testing::PrintToString(each.numbers);
    }
}

// As V-Ray wrote it in a world with z up: an aerial view.
const Doubles vrayTransform{-0.666825, 0.209661, -0.715113, -19791,   -0.745215, -0.187607,
                            0.63989,   8070,     -1.49e-08, 0.959607, 0.281343,  2810.67,
                            0,         0,        0,         1};
// And in Maya.
const Doubles mayaTransform{-0.79399,  0.586885, 0.158573, 14.9961,   0,         0.260842,
                            -0.965382, 7.34422,  -0.60793, -0.766504, -0.207106, -18.7272,
                            0,         0,        0,        1};
const Doubles mayaStanding{-0.79399, -0.158573, 0.586885, 14.9961,  0.60793,  -0.207106,
                           0.766504, 18.7272,   0,        0.965382, 0.260842, 7.34422,
                           0,        0,         0,        1};

Doubles Transposed(const Doubles& numbers) {
    Doubles turned(16);
    for (std::size_t i = 0; i < 16; ++i)
        turned[i] = numbers[i % 4 * 4 + i / 4];
    return turned;
}

CameraAttributes VRay(const CameraAttributes& more = {}, const Doubles& transform = vrayTransform) {
    CameraAttributes all{{"cameraTransform", "m44f", transform}};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

TEST(ExrCamera, IsWhereVRayPutsIt) {
    for (const Doubles& each : {vrayTransform, Transposed(vrayTransform)}) {
        const RenderCamera camera = Found(VRay({{"cameraFov", "float", 54.4204},
                                                {"cameraProjection", "int", 0.0},
                                                {"cameraNearClip", "float", 2.0},
                                                {"cameraFarClip", "float", 500.0},
                                                {"cameraNearRange", "float", 10.0},
                                                {"cameraFarRange", "float", 1000.0}},
                                               each));
        EXPECT_THAT(camera.transform, Is(vrayTransform, 2e-5));
        EXPECT_EQ(camera.up, UpAxis::Z);
        EXPECT_EQ(camera.attribute, "cameraTransform");
        EXPECT_EQ(camera.lens.fieldOfView, 54.4204);
        EXPECT_EQ(camera.lens.nearRange, 10.0);
        EXPECT_EQ(camera.lens.farRange, 1000.0);
    }
}

TEST(ExrCamera, InMayaTheCameraLiesOnItsBackInAWorldWithYUp) {
    const RenderCamera camera = Found(VRay({}, mayaTransform));
    EXPECT_THAT(camera.transform, Is(mayaStanding, 2e-5));
    EXPECT_EQ(camera.up, UpAxis::Y);
}

// Along an axis of the world both readings stand equally upright.
TEST(ExrCamera, WhatVRaySaysOfItselfCountsMoreThanWhatLooksUpright) {
    const Doubles& plain = standing;
    const Doubles fromMaya{1, 0, 0, 1, 0, 0, -1, -3, 0, 1, 0, 2, 0, 0, 0, 1};
    EXPECT_THAT(Found(VRay({}, plain)).transform, Is(plain));
    EXPECT_THAT(Found(VRay({{"vrayInfo/vrayversion", "string",
                             std::string("Version of V-Ray for Maya 3.60.04")}},
                           plain))
                    .transform,
                Is(fromMaya));
    EXPECT_THAT(
        Found(VRay({{"vrayInfo/filename", "string", std::string("c:/a b.mb")}}, plain)).transform,
        Is(fromMaya));
    EXPECT_THAT(
        Found(VRay({{"vrayInfo/filename", "string", std::string("a.ma")}}, plain)).transform,
        Is(fromMaya));
    EXPECT_EQ(
        Found(VRay({{"vrayInfo/filename", "string", std::string("a.max")}}, mayaTransform)).up,
        UpAxis::Z);
}

TEST(ExrCamera, OfVRayMayBeSheared) {
    // Uprights are kept parallel so.
    const Doubles sheared{0.5547, 0, 0.812292,  89343.4, 0.83205, 0, -0.541528, 32521.8,
                          0,      1, -0.216631, 3704.68, 0,       0, 0,         1};
    EXPECT_THAT(Found(VRay({}, sheared)).transform, Is(sheared, 1e-5));
}

TEST(ExrCamera, OfVRayHasALensOnlyWhereItIsAnOrdinaryOne) {
    EXPECT_EQ(Found(VRay()).lens.fieldOfView, 0.0);
    EXPECT_EQ(Found(VRay({{"cameraFov", "float", 60.0}, {"cameraProjection", "int", 1.0}}))
                  .lens.fieldOfView,
              0.0);
    for (const double angle : {0.0, -20.0, 180.0, std::numeric_limits<double>::quiet_NaN()}) {
        const CameraFinding finding = FindCamera(VRay({{"cameraFov", "float", angle}}));
        ASSERT_TRUE(finding.camera.has_value());
        EXPECT_EQ(finding.camera->lens.fieldOfView, 0.0);
        EXPECT_THAT(finding.warnings,
                    ElementsAre("cameraFov is no angle between 0 and 180 degrees, and the field "
                                "of view isn't known"));
    }
}

TEST(ExrCamera, RangesWithoutAnEndArentKnown) {
    const CameraLens lens = Found(VRay({{"cameraNearRange", "float", -1.0},
                                        {"cameraFarRange", "float", double{1e18F}}}))
                                .lens;
    EXPECT_EQ(lens.nearRange, 0.0);
    EXPECT_EQ(lens.farRange, 0.0);
}

TEST(ExrCamera, OfVRayThatLiesIsNone) {
    const std::string complaint =
        "cameraTransform is no transform of a camera, and no camera is taken from it";
    Doubles mirrored = vrayTransform;
    for (const std::size_t i : {0U, 4U, 8U})
        mirrored[i] = -mirrored[i];
    EXPECT_EQ(ExrCameraComplaint(VRay({}, mirrored)), complaint);
    Doubles flat = vrayTransform;
    for (const std::size_t i : {2U, 6U, 10U})
        flat[i] = flat[i - 1];
    EXPECT_EQ(ExrCameraComplaint(VRay({}, flat)), complaint);
    Doubles neither = vrayTransform;
    neither[12] = 1.0;
    EXPECT_EQ(ExrCameraComplaint(VRay({}, neither)), complaint);
}

TEST(ExrCamera, TheStandardsStandsAboveVRaysUnlessItLies) {
    const Attribute standard{"worldToCamera", "m44f", toCameraOfZUp};
    EXPECT_THAT(Found(VRay({standard})).transform, Is(standing));
    const CameraFinding finding = FindCamera(VRay({{"worldToCamera", "m44f", Doubles(16, 0.0)}}));
    EXPECT_EQ(finding.warnings.size(), 1U);
    ASSERT_TRUE(finding.camera.has_value());
    EXPECT_EQ(finding.camera->attribute, "cameraTransform");
}

TEST(ExrCamera, IsMissingWhereNoAttributeTells) {
    const CameraFinding finding =
        FindCamera({{"cameraFov", "float", 45.0}, {"note", "string", std::string("x")}});
    EXPECT_FALSE(finding.camera.has_value());
    EXPECT_THAT(finding.warnings, IsEmpty());
}

}  // namespace
}  // namespace command
