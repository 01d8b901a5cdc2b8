#include "host/capture_scene.h"

#include <elementclasses.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "host/application.h"
#include "host/build_scene.h"
#include "host/host_renderer.h"
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
    "saveFile": false,
    "timeType": "single",
    "numberBase": 0,
    "effects": true,
    "draft": false,
    "renderer": {}
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
    App().settings.render.timeType = 4;
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
    EXPECT_EQ(taken.render.timeType, std::nullopt);
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

TEST_F(CaptureSceneTest, ANodesChildrenHaveAnOrderWhenItIsNotThatOfAllNodes) {
    Scene& scene = App().scene;
    Node& parent = scene.AddNode(_M("parent"));
    Node& first = scene.AddNode(_M("first"));
    scene.AddNode(_M("second"), &parent);
    EXPECT_THAT(CaptureScene().nodes[0].children, IsEmpty());
    first.SetParent(&parent);
    const SceneDescription taken = CaptureScene();
    EXPECT_THAT(taken.nodes[0].children, ElementsAre(2U, 1U));
    EXPECT_THAT(taken.nodes[1].children, IsEmpty());
    Rebuilt(taken);
    Node* again = App().scene.FindNode(_M("parent"));
    ASSERT_EQ(again->NumberOfChildren(), 2);
    EXPECT_EQ(MSTR(again->GetChildNode(0)->GetName()), MSTR(_M("second")));
    EXPECT_EQ(MSTR(again->GetChildNode(1)->GetName()), MSTR(_M("first")));
}

TEST_F(CaptureSceneTest, OfAnElementsOwnBlockItTakesWhatIsNotAsTheClassStarts) {
    RenderElementManager& elements = App().elements[RS_Production];
    elements.Add(VRAY_DENOISER_ELEMENT, _M("as made"));
    elements.Add(VRAY_DENOISER_ELEMENT, _M("other mode")).SetParameter(VRAY_DENOISER_MODE, 1);
    elements.Add(VRAY_OPTIONS_ELEMENT, _M("no block")).RemoveParameter(VRAY_ELEMENT_ENABLED);
    elements.Add(Class_ID(1, 2), _M("no block either"));
    const SceneDescription taken = CaptureScene();
    EXPECT_FALSE(taken.elements[0].parameters);
    ASSERT_TRUE(taken.elements[1].parameters);
    ASSERT_EQ(taken.elements[1].parameters->size(), 2U);
    EXPECT_EQ((*taken.elements[1].parameters)[0].id, VRAY_ELEMENT_ENABLED);
    EXPECT_EQ((*taken.elements[1].parameters)[0].value, 1);
    EXPECT_EQ((*taken.elements[1].parameters)[1].id, VRAY_DENOISER_MODE);
    EXPECT_EQ((*taken.elements[1].parameters)[1].value, 1);
    ASSERT_TRUE(taken.elements[2].parameters);
    EXPECT_THAT(*taken.elements[2].parameters, IsEmpty());
    EXPECT_FALSE(taken.elements[3].parameters);
    EXPECT_TRUE(Rebuilt(ParseScene("a.json", WriteScene(taken))) == taken);
    RenderElement& mode = *App().elements[RS_Production].GetRenderElement(1);
    EXPECT_EQ(mode.GetParamBlock(0)->GetInt(VRAY_DENOISER_MODE), 1);
    EXPECT_EQ(App().elements[RS_Production].GetRenderElement(2)->GetParamBlock(0), nullptr);
}

TEST_F(CaptureSceneTest, TheRendererComesBackAsItWas) {
    auto* renderer = new HostRenderer(VRAY_CLASS_ID);
    App().renderer.reset(renderer);
    IParamBlock2* block = renderer->GetParamBlock(VRAY_BLOCK);
    block->SetValue(VRAY_FRAME_BUFFER_ON, 0, TRUE);
    block->SetValue(VRAY_FRAME_BUFFER_WIDTH, 0, 320);
    block->SetValue(VRAY_MEMORY_FRAME_BUFFER, 0, FALSE);
    renderer->properties.Set(VRAY_SAMPLER_PROPERTY, ScriptInt(VRAY_SAMPLER_PROGRESSIVE));
    const SceneDescription taken = CaptureScene();
    EXPECT_TRUE(Rebuilt(ParseScene("a.json", WriteScene(taken))) == taken);
    auto* again = dynamic_cast<HostRenderer*>(App().renderer.get());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->ClassID(), VRAY_CLASS_ID);
    block = again->GetParamBlock(VRAY_BLOCK);
    EXPECT_EQ(block->GetInt(VRAY_FRAME_BUFFER_ON), 1);
    EXPECT_EQ(block->GetInt(VRAY_FRAME_BUFFER_WIDTH), 320);
    EXPECT_EQ(block->GetInt(VRAY_FRAME_BUFFER_HEIGHT), 480);
    EXPECT_EQ(block->GetInt(VRAY_MEMORY_FRAME_BUFFER), 0);
    FPValue sampler;
    EXPECT_TRUE(ExecuteMAXScriptScript(_M("renderers.current.imageSampler_type"), TRUE, &sampler));
    EXPECT_EQ(sampler.i, VRAY_SAMPLER_PROGRESSIVE);

    App().renderer.reset(new HostRenderer(CORONA_CLASS_ID));
    const SceneDescription other = CaptureScene();
    EXPECT_THAT(other.render.renderer->parameters, IsEmpty());
    EXPECT_EQ(other.render.renderer->sampler, std::nullopt);
    Rebuilt(ParseScene("a.json", WriteScene(other)));
    EXPECT_EQ(App().renderer->ClassID(), CORONA_CLASS_ID);
    EXPECT_EQ(App().renderer->NumParamBlocks(), 0);
}

TEST_F(CaptureSceneTest, WhereNoRendererWasThereIsNoneAgain) {
    const SceneDescription taken = CaptureScene();
    Start();
    App().renderer.reset(new HostRenderer(VRAY_CLASS_ID));
    BuildScene(ParseScene("a.json", R"({"veltrane": 2, "render": {}})"));
    EXPECT_TRUE(App().renderer) << "a file that doesn't tell";
    BuildScene(ParseScene("a.json", WriteScene(taken)));
    EXPECT_FALSE(App().renderer);
}

TEST_F(CaptureSceneTest, AnObjectThatCantBeSavedIsAFault) {
    sample.onSave = [](SavedSample&, ISave*) { return IO_ERROR; };
    BuildScene(FullScene());
    EXPECT_NE(FaultText<InputError>([] { CaptureScene(); }), "");
}

}  // namespace
}  // namespace host
