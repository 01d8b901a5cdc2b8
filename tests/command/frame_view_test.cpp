#include "command/frame_view.h"

#include <gmock/gmock.h>
#include <iparamb2.h>

#include <numbers>

#include "command/frame_loader.h"
#include "command/save_plan.h"
#include "host/application.h"
#include "plugin/entry.h"
#include "tests/command/pass_samples.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// At 1, 2, 3; it looks along y.
constexpr std::array<double, 16> standing{1, 0, 0, 1, 0, 0, -1, 2, 0, 1, 0, 3, 0, 0, 0, 1};

Description File(const std::optional<RenderCamera>& camera = {}) {
    Description file;
    file.path = "a.exr";
    file.parts.emplace_back().camera = camera;
    return file;
}

RenderCamera Camera(const CameraLens& lens = {.fieldOfView = 60.0}) {
    return {.transform = standing, .lens = lens, .attribute = "worldToCamera"};
}

SceneDescription Scene(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

// Through a camera at 4, 5, 6 in the world's own pose.
SceneDescription SceneWithCamera(const std::string& view) {
    return Scene(R"("nodes": [{"name": "c", "type": "camera",
                     "transform": [[1,0,0,4],[0,1,0,5],[0,0,1,6],[0,0,0,1]])" +
                 view + R"(}], "render": {"camera": "c"})");
}

void ExpectPose(const host::CameraView& view, const std::array<Point3, 4>& rows) {
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(view.camToWorld.GetRow(i), rows[static_cast<std::size_t>(i)]) << i;
}

constexpr std::array<Point3, 4> renderedPose{Point3(1, 0, 0), Point3(0, 0, 1), Point3(0, -1, 0),
                                             Point3(1, 2, 3)};
constexpr std::array<Point3, 4> scenesPose{Point3(1, 0, 0), Point3(0, 1, 0), Point3(0, 0, 1),
                                           Point3(4, 5, 6)};

float Radians(double degrees) {
    return static_cast<float>(degrees * std::numbers::pi / 180.0);
}

TEST(ViewOf, IsTheRenderFilesWithoutASceneFile) {
    const auto view =
        ViewOf(File(Camera({.fieldOfView = 60.0, .nearRange = 2, .farRange = 9})), 0, nullptr);
    ASSERT_TRUE(view.has_value());
    ExpectPose(*view, renderedPose);
    EXPECT_EQ(view->projection, PROJ_PERSPECTIVE);
    EXPECT_EQ(view->fieldOfView, Radians(60.0));
    EXPECT_EQ(view->width, 0.0F);
    EXPECT_EQ(view->nearRange, 2.0F);
    EXPECT_EQ(view->farRange, 9.0F);
}

TEST(ViewOf, IsTheSceneFilesCameraFirst) {
    const SceneDescription scene =
        SceneWithCamera(R"(, "view": {"width": 12.5, "near": 1, "far": 3})");
    const auto view = ViewOf(File(Camera()), 0, &scene);
    ASSERT_TRUE(view.has_value());
    ExpectPose(*view, scenesPose);
    EXPECT_EQ(view->projection, PROJ_PARALLEL);
    EXPECT_EQ(view->fieldOfView, 0.0F);
    EXPECT_EQ(view->width, 12.5F);
    EXPECT_EQ(view->nearRange, 1.0F);
    EXPECT_EQ(view->farRange, 3.0F);
}

TEST(ViewOf, WhatTheScenesCameraDoesntTellIsTheRenderFiles) {
    const SceneDescription placed = SceneWithCamera("");
    const auto lensOfFile = ViewOf(File(Camera()), 0, &placed);
    ASSERT_TRUE(lensOfFile.has_value());
    ExpectPose(*lensOfFile, scenesPose);
    EXPECT_EQ(lensOfFile->fieldOfView, Radians(60.0));

    const SceneDescription shown = Scene(
        R"("nodes": [{"name": "c", "type": "camera", "view": {"fov": 30}}],
           "render": {"camera": "c"})");
    const auto poseOfFile = ViewOf(File(Camera()), 0, &shown);
    ASSERT_TRUE(poseOfFile.has_value());
    ExpectPose(*poseOfFile, renderedPose);
    EXPECT_EQ(poseOfFile->fieldOfView, Radians(30.0));
    EXPECT_FALSE(ViewOf(File(), 0, &shown).has_value());
}

TEST(ViewOf, AMirroredCameraLooksWhereItsBackAxisSays) {
    const SceneDescription scene = Scene(
        R"("nodes": [{"name": "c", "type": "camera",
            "transform": [[-1,0,0,4],[0,1,0,5],[0,0,1,6],[0,0,0,1]]}], "render": {"camera": "c"})");
    const auto view = ViewOf(File(), 0, &scene);
    ASSERT_TRUE(view.has_value());
    ExpectPose(*view, scenesPose);
}

TEST(ViewOf, ALensThatNobodyTellsIsNone) {
    const SceneDescription scene = SceneWithCamera("");
    const auto view = ViewOf(File(), 0, &scene);
    ASSERT_TRUE(view.has_value());
    EXPECT_EQ(view->projection, PROJ_PERSPECTIVE);
    EXPECT_EQ(view->fieldOfView, 0.0F);
}

TEST(ViewOf, ACameraThatTheFrameIsntSeenThroughDoesntCount) {
    const SceneDescription scene = Scene(R"("nodes": [{"name": "c", "type": "camera",
        "transform": [[1,0,0,4],[0,1,0,5],[0,0,1,6],[0,0,0,1]], "view": {"fov": 30}}])");
    EXPECT_FALSE(ViewOf(File(), 0, &scene).has_value());
    EXPECT_FALSE(ViewOf(File(), 0, nullptr).has_value());
}

TEST(ViewOf, TheSizeOfTheCameraDoesntCountAndAFlatOneIsNone) {
    const auto scaled = [](const std::string& rows) {
        return Scene(R"("nodes": [{"name": "c", "type": "camera", "transform": )" + rows +
                     R"(}], "render": {"camera": "c"})");
    };
    const SceneDescription large = scaled("[[2,0,0,4],[0,8,0,5],[0,0,4,6],[0,0,0,1]]");
    const auto view = ViewOf(File(), 0, &large);
    ASSERT_TRUE(view.has_value());
    ExpectPose(*view, scenesPose);
    const SceneDescription flat = scaled("[[1,1,0,4],[0,0,0,5],[0,0,1,6],[0,0,0,1]]");
    EXPECT_FALSE(ViewOf(File(), 0, &flat).has_value());
    ExpectPose(ViewOf(File(Camera()), 0, &flat).value_or(host::CameraView()), renderedPose);
}

class FrameViewTest : public FolderTest {
  protected:
    void Begin(const std::vector<std::string>& settings = {},
               std::optional<SceneDescription> known = {}) {
        view.reset();
        session.reset();
        scene = std::move(known);
        arguments.input = "/in/a.exr";
        plan = MakePlan(arguments);
        std::vector<Setting> parsed;
        for (const std::string& text : settings)
            parsed.push_back(ParseSetting(text, plugin::EffectParameters()));
        session.emplace(arguments, plan, std::move(parsed), scene ? &*scene : nullptr, Class_ID());
        view.emplace(*session, scene ? &*scene : nullptr);
    }
    void Set(const Description& file) {
        view->Set(file, 0, [this](const std::string& text) { warnings.push_back(text); });
    }
    int Embeds() const { return session->GetInt("embedCameraInfo"); }
    static bool IsKnown() { return host::App().settings.render.view.has_value(); }

    SaveArguments arguments;
    SavePlan plan;
    std::optional<SceneDescription> scene;
    std::optional<Session> session;
    std::optional<FrameView> view;
    std::vector<std::string> warnings;
};

TEST_F(FrameViewTest, EveryFrameHasItsOwn) {
    Begin();
    Set(File(Camera()));
    ASSERT_TRUE(IsKnown());
    EXPECT_EQ(host::App().settings.render.view->fieldOfView, Radians(60.0));
    EXPECT_EQ(Embeds(), TRUE);
    Set(File());
    EXPECT_FALSE(IsKnown());
    EXPECT_EQ(Embeds(), FALSE);
    Set(File(Camera({.fieldOfView = 20.0})));
    EXPECT_EQ(host::App().settings.render.view->fieldOfView, Radians(20.0));
    EXPECT_EQ(Embeds(), TRUE);
    EXPECT_THAT(warnings, IsEmpty()) << "nobody asked for a camera";
}

TEST_F(FrameViewTest, WhoAskedForACameraIsToldOnceThatThereIsNone) {
    const std::string complaint =
        "a.exr: embedCameraInfo: nothing tells how the frame was seen, so no camera goes into the "
        "document; give a scene file (--scene) with render.camera, and that camera's transform "
        "and view";
    Begin({"embedCameraInfo=true"});
    Set(File(Camera()));
    EXPECT_THAT(warnings, IsEmpty());
    Set(File());
    Set(File());
    EXPECT_THAT(warnings, ElementsAre(complaint));
    EXPECT_EQ(Embeds(), FALSE);

    warnings.clear();
    Begin({}, Scene(R"("effect": {"parameters": {"embedCameraInfo": true}})"));
    Set(File());
    EXPECT_THAT(warnings, ElementsAre(complaint));
}

TEST_F(FrameViewTest, ACameraThatIsntWantedIsntMissed) {
    Begin({"embedCameraInfo=false"});
    Set(File());
    EXPECT_THAT(warnings, IsEmpty());
    Set(File(Camera()));
    EXPECT_EQ(Embeds(), FALSE);
    EXPECT_TRUE(IsKnown());
}

TEST_F(FrameViewTest, TheLoaderSetsItOfEachFrame) {
    pass_samples::Sample sample;
    sample.Picture();
    const std::string without = Write("without.exr", sample.Bytes());
    sample.GetPart().matrices = {
        {"worldToCamera", {1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, -1, -3, -2, 1}}};
    const std::string with = Write("with.exr", sample.Bytes());
    Begin({"embedCameraInfo=true"});
    FrameLoader loader(arguments, *session, nullptr,
                       [this](const std::string& text) { warnings.push_back(text); });
    loader.Load(with);
    ASSERT_TRUE(IsKnown());
    ExpectPose(*host::App().settings.render.view, renderedPose);
    EXPECT_THAT(warnings, IsEmpty());
    loader.Load(without);
    EXPECT_FALSE(IsKnown());
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_THAT(warnings[0], testing::StartsWith(without + ": embedCameraInfo: nothing tells"));
}

}  // namespace
}  // namespace command
