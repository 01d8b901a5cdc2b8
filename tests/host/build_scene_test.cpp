#include "host/build_scene.h"

#include <elementclasses.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <multimatte.h>
#include <notify.h>
#include <tab.h>

#include "host/application.h"
#include "host/input_error.h"
#include "host/scene_text_reader.h"
#include "host/text.h"
#include "tests/host/fault_text.h"
#include "tests/host/full_scene.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

SceneDescription Parse(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

class BuildSceneTest : public testing::Test {
  protected:
    BuildSceneTest() : scene(NewScene()) {
        App().classes.Add(&sample);
        App().classes.Add(&effect);
    }
    ~BuildSceneTest() override { ResetApplication(); }
    static Scene& NewScene() {
        ResetApplication();
        return App().scene;
    }
    std::string FaultOf(const SceneDescription& description) {
        return FaultText<InputError>([&] { CheckScene(description, App().classes); });
    }

    SavedSampleDesc sample;
    ReferringEffectDesc effect;
    Scene& scene;
};

std::vector<std::string> NamesOf(const std::vector<Node*>& nodes) {
    std::vector<std::string> names;
    for (Node* node : nodes)
        names.push_back(ToUtf8(node->GetName()));
    return names;
}

std::vector<std::string> NamesOf(SceneLayer& layer) {
    Tab<INode*> nodes;
    layer.Nodes(nodes);
    std::vector<std::string> names;
    for (int i = 0; i < nodes.Count(); ++i)
        names.push_back(ToUtf8(nodes[i]->GetName()));
    return names;
}

const std::string lamp = R"(
    "nodes": [{"name": "Shade", "parent": "Lamp", "groupMember": true, "objectID": 7, "id": 12,
               "hidden": true, "properties": "a = 1\nb = \u00fc"},
              {"name": "Lamp", "groupHead": true}, {"name": "Table"}],
    "layers": [{"name": "A", "hidden": true, "children": [{"name": "B", "nodes": ["Shade"]}]},
               {"name": "C", "nodes": ["Table", "Lamp"]}],
    "selectionSets": [{"name": "s", "nodes": ["Table", "Shade"]}])";

TEST_F(BuildSceneTest, MakesNodesLayersAndSets) {
    const auto nodes = BuildScene(Parse(lamp)).nodes;
    EXPECT_THAT(NamesOf(nodes), ElementsAre("Shade", "Lamp", "Table"));
    ASSERT_EQ(scene.NumNodes(), 3);
    Node& shade = *nodes[0];
    EXPECT_EQ(shade.GetParentNode(), nodes[1]);
    EXPECT_EQ(nodes[1]->GetParentNode(), &scene.Root());
    EXPECT_TRUE(shade.IsGroupMember());
    EXPECT_FALSE(shade.IsGroupHead());
    EXPECT_TRUE(nodes[1]->IsGroupHead());
    EXPECT_EQ(shade.ObjectID(), 7);
    EXPECT_EQ(shade.GetRenderID(), 12);
    EXPECT_EQ(nodes[2]->GetRenderID(), 65535);
    EXPECT_TRUE(shade.IsNodeHidden());
    EXPECT_EQ(ToUtf8(shade.UserProperties()), "a = 1\nb = \xc3\xbc");

    ASSERT_EQ(scene.Layers().size(), 3U);
    SceneLayer& a = *scene.FindLayer(_M("A"));
    SceneLayer& b = *scene.FindLayer(_M("B"));
    SceneLayer& c = *scene.FindLayer(_M("C"));
    EXPECT_EQ(b.GetParentLayer(), &a);
    EXPECT_EQ(a.GetParentLayer(), nullptr);
    EXPECT_TRUE(a.IsHidden());
    EXPECT_FALSE(b.IsHidden());
    EXPECT_TRUE(b.IsHidden(true));
    EXPECT_THAT(NamesOf(b), ElementsAre("Shade"));
    EXPECT_THAT(NamesOf(c), ElementsAre("Table", "Lamp"));

    ASSERT_EQ(scene.SelectionSets().size(), 1U);
    EXPECT_EQ(ToUtf8(scene.SelectionSets()[0].name), "s");
    EXPECT_THAT(NamesOf(scene.SelectionSets()[0].nodes), ElementsAre("Table", "Shade"));
}

TEST_F(BuildSceneTest, NodesAreOfTheirKindsAndStandWhereTheFileSays) {
    const std::string members = R"("nodes": [
        {"name": "o", "transform": [[1,2,3,4],[5,6,7,8],[9,10,11,12],[0,0,0,1]]},
        {"name": "c", "type": "camera"}, {"name": "l", "type": "light"},
        {"name": "h", "type": "helper"}])";
    const auto nodes = BuildScene(Parse(members)).nodes;
    const auto classOf = [&](std::size_t node) {
        return nodes[node]->EvalWorldState(0).obj->SuperClassID();
    };
    EXPECT_EQ(classOf(0), GEOMOBJECT_CLASS_ID);
    EXPECT_EQ(classOf(1), CAMERA_CLASS_ID);
    EXPECT_EQ(classOf(2), LIGHT_CLASS_ID);
    EXPECT_EQ(classOf(3), HELPER_CLASS_ID);
    EXPECT_EQ(nodes[3]->EvalWorldState(0).obj->ClassID(), Class_ID(POINTHELP_CLASS_ID, 0));
    // The file's points are columns, the host's are rows.
    const Matrix3 transform = nodes[0]->GetNodeTM(0);
    EXPECT_EQ(transform.GetRow(0), Point3(1, 5, 9));
    EXPECT_EQ(transform.GetRow(1), Point3(2, 6, 10));
    EXPECT_EQ(transform.GetRow(2), Point3(3, 7, 11));
    EXPECT_EQ(transform.GetTrans(), Point3(4, 8, 12));
}

TEST_F(BuildSceneTest, WhatIsThereStays) {
    Node& table = scene.AddNode(_M("Table"));
    SceneLayer& a = scene.AddLayer(_M("A"));
    table.SetLayer(&a);
    const BuiltScene built = BuildScene(Parse(lamp));
    EXPECT_EQ(scene.NumNodes(), 4);
    EXPECT_NE(built.nodes[2], &table);
    EXPECT_EQ(scene.Layers().size(), 4U);
    EXPECT_NE(built.layers[0], &a);
    EXPECT_THAT(NamesOf(a), ElementsAre("Table"));
}

TEST_F(BuildSceneTest, ParentsMayStandBehindTheirChildren) {
    const auto nodes =
        BuildScene(Parse(R"("nodes": [{"name": "a", "parent": "b"}, {"name": "b"}])")).nodes;
    EXPECT_EQ(nodes[0]->GetParentNode(), nodes[1]);
    EXPECT_EQ(nodes[1]->GetParentNode(), &scene.Root());
}

TEST_F(BuildSceneTest, ANodeThatNobodyPlacedKnowsIt) {
    const auto nodes = BuildScene(Parse(R"("nodes": [
        {"name": "a", "type": "camera", "view": {"fov": 30}}, {"name": "b",
         "transform": [[1,0,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1]]}])"))
                           .nodes;
    EXPECT_FALSE(nodes[0]->IsPlaced());
    EXPECT_EQ(nodes[0]->Lens(), (CameraLens{30.0}));
    EXPECT_TRUE(nodes[1]->IsPlaced());
    EXPECT_EQ(nodes[1]->Lens(), std::nullopt);
}

TEST_F(BuildSceneTest, SettingsThatTheFileLacksStay) {
    App().settings.render.hidden = true;
    App().settings.render.width = 17;
    BuildScene(Parse(R"("render": {"frameRate": 12})"));
    EXPECT_TRUE(App().settings.render.hidden);
    EXPECT_EQ(App().settings.render.width, 17);
    EXPECT_EQ(App().settings.frameRate, 12);
    EXPECT_EQ(App().settings.render.camera, nullptr);
}

TEST_F(BuildSceneTest, EffectsReferToWhatTheFileNames) {
    const BuiltScene built = BuildScene(FullScene());
    ASSERT_THAT(built.effects, SizeIs(2));
    ASSERT_THAT(App().effects, SizeIs(2));
    EXPECT_EQ(App().effects[0].get(), built.effects[0]);
    EXPECT_TRUE(built.effects[0]->Active(0));
    EXPECT_FALSE(built.effects[1]->Active(0));
    auto* object =
        static_cast<SavedSample*>(static_cast<ReferringEffect*>(built.effects[0])->target);
    ASSERT_NE(object, nullptr);
    EXPECT_THAT(object->data, ElementsAre(0, 127, 255));
    EXPECT_EQ(object->block->GetINode(SAMPLE_NODE), built.nodes[2]);
    EXPECT_EQ(object->block->GetReferenceTarget(SAMPLE_TARGET), built.elements[0]);
    EXPECT_EQ(object->block->GetReferenceTarget(SAMPLE_TARGETS, 0, 0), built.layers[1]);
    EXPECT_EQ(object->target, built.elements[2]);
    EXPECT_EQ(App().elements[RS_Draft].GetRenderElement(0), built.elements[2]);
    EXPECT_EQ(App().settings.render.camera->Get(), built.nodes[0]);
}

TEST_F(BuildSceneTest, AnObjectThatNobodyRefersToIsNotKept) {
    SceneDescription description;
    description.objects = {SavedSampleObject(1), SavedSampleObject(2)};
    description.objects[1].references[1] = SavedReference{1};
    EXPECT_EQ(FaultOf(description), "");
    BuildScene(description);
    EXPECT_EQ(sample.living, 0);
}

TEST_F(BuildSceneTest, ElementsWithoutAHandleMayBeLeftOut) {
    SceneDescription description = FullScene();
    description.elements[0].handle = 0;
    description.elements[0].elementClass.reset();
    SampleBlockOf(description.objects[0]).parameters.clear();
    const BuiltScene built = BuildScene(description, ElementsToBuild::WithHandles);
    ASSERT_THAT(built.elements, SizeIs(3));
    EXPECT_EQ(built.elements[0], nullptr);
    EXPECT_EQ(App().elements[RS_Production].NumRenderElements(), 1);

    NewScene();
    App().classes.Add(&sample);
    App().classes.Add(&effect);
    const BuiltScene all = BuildScene(description);
    ASSERT_NE(all.elements[0], nullptr);
    EXPECT_EQ(all.elements[0]->ClassID(), PassClassID(PassKind::OtherColor));
}

TEST_F(BuildSceneTest, FaultsOfObjectsAreToldWithTheirPlace) {
    SceneDescription description = FullScene();
    description.path = "a.json";
    EXPECT_EQ(FaultOf(description), "");
    description.objects[2].classID = Class_ID(1, 2);
    EXPECT_EQ(FaultOf(description),
              "a.json: objects[2]: no library offers the class (0x00000001, 0x00000002) of the "
              "super class 4240");
    description = FullScene();
    description.path = "a.json";
    description.objects[1].references = {SavedReference{99}};
    EXPECT_EQ(FaultOf(description),
              "a.json: objects[1]: the reference 0 is to the object 99, which is nowhere in the "
              "file");
    description.objects[1].references = {SavedReference{1}};
    EXPECT_EQ(FaultOf(description), "");
}

TEST_F(BuildSceneTest, AnObjectThatCantBeLoadedTakesAllWithIt) {
    Node& old = scene.AddNode(_M("Same"));
    SceneLayer& oldLayer = scene.AddLayer(_M("Layer"));
    SceneDescription description = FullScene();
    description.path = "a.json";
    sample.onLoad = [](SavedSample&, ILoad*) { return IO_ERROR; };
    const std::string fault = FaultText<InputError>([&] { BuildScene(description); });
    EXPECT_THAT(fault, testing::StartsWith("a.json: "));
    ASSERT_EQ(scene.NumNodes(), 1);
    EXPECT_EQ(scene.GetNode(0), &old);
    EXPECT_THAT(scene.Layers(), ElementsAre(&oldLayer));
    EXPECT_THAT(scene.SelectionSets(), IsEmpty());
    EXPECT_EQ(App().elements[RS_Production].NumRenderElements(), 0);
    EXPECT_EQ(App().elements[RS_Draft].NumRenderElements(), 0);
    EXPECT_THAT(App().effects, IsEmpty());
    EXPECT_EQ(sample.living, 0);
    EXPECT_EQ(App().settings.frameRate, 30);
}

}  // namespace
}  // namespace host
