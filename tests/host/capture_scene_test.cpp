#include "host/capture_scene.h"

#include <elementclasses.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "host/application.h"
#include "host/build_scene.h"
#include "host/input_error.h"
#include "host/scene_text_reader.h"
#include "host/scene_text_writer.h"
#include "tests/host/fault_text.h"
#include "tests/host/full_scene.h"
#include "tests/host/scene_equality.h"
#include "tests/host/scene_page.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CaptureSceneTest : public testing::Test {
  protected:
    CaptureSceneTest() { Start(); }
    ~CaptureSceneTest() override { ResetApplication(); }
    void Start() {
        ResetApplication();
        App().classes.Add(&sample);
        App().classes.Add(&effect);
    }
    // What the application makes of a description.
    SceneDescription Rebuilt(const SceneDescription& scene) {
        Start();
        CheckScene(scene, App().classes);
        BuildScene(scene);
        return CaptureScene();
    }

    SavedSampleDesc sample;
    ReferringEffectDesc effect;
};

TEST_F(CaptureSceneTest, TakesAllThatWasBuilt) {
    const SceneDescription scene = FullScene();
    const SceneDescription taken = Rebuilt(scene);
    EXPECT_EQ(taken.path, "");
    EXPECT_TRUE(taken.nodes == scene.nodes);
    EXPECT_TRUE(taken.layers == scene.layers);
    EXPECT_TRUE(taken.selectionSets == scene.selectionSets);
    EXPECT_TRUE(taken.elements == scene.elements);
    EXPECT_TRUE(taken.render == scene.render);
    EXPECT_TRUE(taken.objects == scene.objects);
    EXPECT_EQ(taken.effects, scene.effects);
    EXPECT_EQ(WriteScene(taken), WriteScene(scene));
}

TEST_F(CaptureSceneTest, ATripThroughAFileChangesNothing) {
    const SceneDescription first = Rebuilt(FullScene());
    const SceneDescription second = Rebuilt(ParseScene("a.json", WriteScene(first)));
    EXPECT_TRUE(second == first);
}

TEST_F(CaptureSceneTest, WhatPeopleWroteComesBackWithHandles) {
    const auto ignore = [](const JsonValue&, const FindNodes&) {};
    for (const std::string& text :
         {scene_page::Example(0),
          scene_page::FileText(VELTRANE_SOURCE_DIR "/examples/still.scene.json")}) {
        SceneDescription scene = ParseScene("a.json", text, ignore);
        SceneDescription taken = Rebuilt(scene);
        const std::string written = WriteScene(taken);
        EXPECT_TRUE(Rebuilt(ParseScene("b.json", written)) == taken);
        EXPECT_EQ(WriteScene(ParseScene("b.json", written)), written);
        Handle last = 0;
        for (SceneNode& node : taken.nodes) {
            EXPECT_EQ(node.handle, ++last);
            node.handle = 0;
        }
        for (SceneLayerDescription& layer : taken.layers)
            layer.handle = 0;
        for (SceneElement& element : taken.elements)
            element.handle = 0;
        EXPECT_TRUE(taken.nodes == scene.nodes);
        EXPECT_TRUE(taken.layers == scene.layers);
        EXPECT_TRUE(taken.selectionSets == scene.selectionSets);
        EXPECT_EQ(taken.render.camera, scene.render.camera);
        // One that had no class is of no known kind.
        for (SceneElement& element : scene.elements) {
            if (!element.elementClass) element.elementClass = PassClassID(PassKind::OtherColor);
        }
        EXPECT_TRUE(taken.elements == scene.elements);
    }
}

TEST_F(CaptureSceneTest, ANewApplicationIsASceneOfItsSettings) {
    EXPECT_EQ(WriteScene(CaptureScene()), R"({
  "veltrane": 2,
  "render": {
    "hidden": false,
    "frameRate": 30,
    "width": 640,
    "height": 480,
    "output": "",
    "saveFile": false
  }
}
)");
}

TEST_F(CaptureSceneTest, WhatAFileHasNoRoomForIsLeftOut) {
    Scene& scene = App().scene;
    Node& first = scene.AddNode(_M("a"));
    Node& second = scene.AddNode(_M("a"));
    scene.AddNode(_M("b")).SetRenderID(65534);
    first.SetRenderID(7);
    second.SetRenderID(7);
    second.SetTransform(
        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, std::numeric_limits<float>::infinity(), 0}});
    // A camera that became something else.
    first.SetLens(CameraLens{40.0});
    App().settings.render.camera = std::make_shared<TargetReference>(&first);
    App().settings.render.width = 0;
    App().settings.render.height = 300'001;
    MultiMatteComponent component;
    component.idOn = true;
    component.id = 65536;
    INode* node = &second;
    component.nodes.Append(1, &node);
    component.nodes.Append(1, &node);
    RenderElement& element = App().elements[RS_Production].Add(Class_ID(1, 2), _M("e"));
    element.SetMultiMatte(1, component);

    const SceneDescription taken = CaptureScene();
    EXPECT_EQ(taken.nodes[0].id, 7);
    EXPECT_EQ(taken.nodes[1].id, std::nullopt);
    EXPECT_EQ(taken.nodes[2].id, std::nullopt);
    EXPECT_EQ(taken.nodes[1].transform, std::nullopt);
    EXPECT_EQ(taken.nodes[0].view, std::nullopt);
    EXPECT_EQ(taken.render.camera, std::nullopt);
    EXPECT_EQ(taken.render.width, std::nullopt);
    EXPECT_EQ(taken.render.height, std::nullopt);
    ASSERT_TRUE(taken.elements[0].multiMatte);
    EXPECT_EQ((*taken.elements[0].multiMatte)[1].id, std::nullopt);
    EXPECT_THAT((*taken.elements[0].multiMatte)[1].nodes, ElementsAre(1U));
    EXPECT_TRUE(Rebuilt(ParseScene("a.json", WriteScene(taken))) == Rebuilt(taken));
}

TEST_F(CaptureSceneTest, ACameraThatIsDeletedIsNotRenderedThrough) {
    Node& camera = App().scene.AddNode(_M("a"));
    camera.SetKind(NodeKind::Camera);
    App().settings.render.camera = std::make_shared<TargetReference>(&camera);
    EXPECT_EQ(CaptureScene().render.camera, 0U);
    App().scene.Remove(camera);
    EXPECT_EQ(CaptureScene().render.camera, std::nullopt);
}

TEST_F(CaptureSceneTest, ALayersChildrenComeBehindItInTheirOrder) {
    Scene& scene = App().scene;
    SceneLayer& b = scene.AddLayer(_M("b"));
    SceneLayer& a = scene.AddLayer(_M("a"));
    scene.AddLayer(_M("b2"), &b);
    scene.AddLayer(_M("a2"), &a);
    scene.AddLayer(_M("b1"), &b);
    const SceneDescription taken = CaptureScene();
    std::vector<std::string> names;
    for (const SceneLayerDescription& layer : taken.layers)
        names.push_back(layer.name);
    EXPECT_THAT(names, ElementsAre("a", "a2", "b", "b2", "b1"));
    EXPECT_EQ(taken.layers[1].parent, 0U);
    EXPECT_EQ(taken.layers[4].parent, 2U);
}

TEST_F(CaptureSceneTest, AnObjectThatCantBeSavedIsAFault) {
    sample.onSave = [](SavedSample&, ISave*) { return IO_ERROR; };
    BuildScene(FullScene());
    EXPECT_NE(FaultText<InputError>([] { CaptureScene(); }), "");
}

}  // namespace
}  // namespace host
