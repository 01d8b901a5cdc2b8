#include "command/apply_scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iparamb2.h>
#include <tab.h>

#include "command/session.h"
#include "host/application.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

using testing::ElementsAre;

SceneDescription Parse(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

std::vector<std::string> NamesOf(const std::vector<host::Node*>& nodes) {
    std::vector<std::string> names;
    for (host::Node* node : nodes)
        names.push_back(host::ToUtf8(node->GetName()));
    return names;
}

std::vector<std::string> NamesOf(host::SceneLayer& layer) {
    Tab<INode*> nodes;
    layer.Nodes(nodes);
    std::vector<std::string> names;
    for (int i = 0; i < nodes.Count(); ++i)
        names.push_back(host::ToUtf8(nodes[i]->GetName()));
    return names;
}

const std::string lamp = R"(
    "nodes": [{"name": "Shade", "parent": "Lamp", "groupMember": true, "objectID": 7, "id": 12,
               "hidden": true, "properties": "a = 1\nb = \u00fc"},
              {"name": "Lamp", "groupHead": true}, {"name": "Table"}],
    "layers": [{"name": "A", "hidden": true, "children": [{"name": "B", "nodes": ["Shade"]}]},
               {"name": "C", "nodes": ["Table", "Lamp"]}],
    "selectionSets": [{"name": "s", "nodes": ["Table", "Shade"]}])";

TEST(ApplyScene, MakesNodesLayersAndSets) {
    host::Scene scene;
    const auto nodes = ApplyScene(Parse(lamp), scene);
    EXPECT_THAT(NamesOf(nodes), ElementsAre("Shade", "Lamp", "Table"));
    ASSERT_EQ(scene.NumNodes(), 3);
    host::Node& shade = *nodes[0];
    EXPECT_EQ(shade.GetParentNode(), nodes[1]);
    EXPECT_EQ(nodes[1]->GetParentNode(), &scene.Root());
    EXPECT_TRUE(shade.IsGroupMember());
    EXPECT_FALSE(shade.IsGroupHead());
    EXPECT_TRUE(nodes[1]->IsGroupHead());
    EXPECT_EQ(shade.ObjectID(), 7);
    EXPECT_EQ(shade.GetRenderID(), 12);
    EXPECT_EQ(nodes[2]->GetRenderID(), 65535);
    EXPECT_TRUE(shade.IsNodeHidden());
    EXPECT_EQ(host::ToUtf8(shade.UserProperties()), "a = 1\nb = \xc3\xbc");

    ASSERT_EQ(scene.Layers().size(), 3U);
    host::SceneLayer& a = *scene.FindLayer(_M("A"));
    host::SceneLayer& b = *scene.FindLayer(_M("B"));
    host::SceneLayer& c = *scene.FindLayer(_M("C"));
    EXPECT_EQ(b.GetParentLayer(), &a);
    EXPECT_EQ(a.GetParentLayer(), nullptr);
    EXPECT_TRUE(a.IsHidden());
    EXPECT_FALSE(b.IsHidden());
    EXPECT_TRUE(b.IsHidden(true));
    EXPECT_THAT(NamesOf(b), ElementsAre("Shade"));
    EXPECT_THAT(NamesOf(c), ElementsAre("Table", "Lamp"));

    ASSERT_EQ(scene.SelectionSets().size(), 1U);
    EXPECT_EQ(host::ToUtf8(scene.SelectionSets()[0].name), "s");
    EXPECT_THAT(NamesOf(scene.SelectionSets()[0].nodes), ElementsAre("Table", "Shade"));
}

TEST(ApplyScene, WhatIsThereByNameIsChangedAndNothingElse) {
    host::Scene scene;
    host::Node& table = scene.AddNode(_M("Table"));
    host::Node& shade = scene.AddNode(_M("Shade"), &table);
    host::Node& other = scene.AddNode(_M("Other"), &shade);
    host::SceneLayer& b = scene.AddLayer(_M("B"));
    host::SceneLayer& a = scene.AddLayer(_M("A"), &b);
    table.SetRenderID(3);
    other.SetLayer(&a);

    const auto nodes = ApplyScene(Parse(lamp), scene);
    EXPECT_EQ(nodes[0], &shade);
    EXPECT_EQ(nodes[2], &table);
    EXPECT_EQ(scene.NumNodes(), 4);
    EXPECT_EQ(scene.Layers().size(), 3U);
    EXPECT_EQ(shade.GetParentNode(), nodes[1]);
    EXPECT_EQ(other.GetParentNode(), &shade);
    EXPECT_EQ(other.GetLayer(), &a);
    EXPECT_EQ(table.GetRenderID(), 3);
    EXPECT_EQ(a.GetParentLayer(), nullptr);
    EXPECT_EQ(b.GetParentLayer(), &a);
}

TEST(ApplyScene, NodesAreOfTheirKindsAndStandWhereTheFileSays) {
    host::Scene scene;
    const std::string members = R"("nodes": [
        {"name": "o", "transform": [[1,2,3,4],[5,6,7,8],[9,10,11,12],[0,0,0,1]]},
        {"name": "c", "type": "camera"}, {"name": "l", "type": "light"},
        {"name": "h", "type": "helper"}])";
    const auto nodes = ApplyScene(Parse(members), scene);
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

    ApplyScene(Parse(R"("nodes": [{"name": "o", "type": "helper"}])"), scene);
    EXPECT_EQ(classOf(0), HELPER_CLASS_ID);
    EXPECT_EQ(nodes[0]->GetNodeTM(0).GetRow(0), Point3(1, 0, 0));
    EXPECT_EQ(nodes[0]->GetNodeTM(0).GetTrans(), Point3());
}

TEST(ApplyScene, ParentsMayTurnRound) {
    host::Scene scene;
    host::Node& a = scene.AddNode(_M("a"));
    host::Node& b = scene.AddNode(_M("b"), &a);
    ApplyScene(Parse(R"("nodes": [{"name": "a", "parent": "b"}, {"name": "b"}])"), scene);
    EXPECT_EQ(a.GetParentNode(), &b);
    EXPECT_EQ(b.GetParentNode(), &scene.Root());
}

TEST(ApplyScene, TheSameFileTwiceChangesNothing) {
    host::Scene scene;
    const SceneDescription description = Parse(lamp);
    const auto first = ApplyScene(description, scene);
    const auto second = ApplyScene(description, scene);
    EXPECT_EQ(first, second);
    EXPECT_EQ(scene.Layers().size(), 3U);
    EXPECT_EQ(scene.SelectionSets().size(), 1U);
    EXPECT_THAT(NamesOf(*scene.FindLayer(_M("C"))), ElementsAre("Table", "Lamp"));
}

// The effect and its block, which belong to the application.
class ApplyParametersTest : public testing::Test {
  public:
    ApplyParametersTest() : scene(NewScene()) {
        auto* effect = static_cast<Effect*>(LibClassDesc(0)->Create(FALSE));
        host::App().effects.emplace_back(effect);
        block = effect->GetParamBlock(0);
    }
    ~ApplyParametersTest() override { host::ResetApplication(); }

    static host::Scene& NewScene() {
        host::ResetApplication();
        return host::App().scene;
    }

    IParamBlock2* block = nullptr;
    host::Scene& scene;
};

TEST_F(ApplyParametersTest, SetsValuesAndTablesOfNodes) {
    const SceneDescription description = Parse(R"(
        "nodes": [{"name": "a"}, {"name": "b"}, {"name": "c"}],
        "effect": {"parameters": {"bitDepth": 32, "nodeIDList": "1-3", "objectList": ["c", "a"],
                                  "namedSelectionSetsList": ["x", "y"]}})");
    const auto nodes = ApplyScene(description, scene);
    EXPECT_TRUE(ApplyParameters(description, scene, *block));
    EXPECT_EQ(block->GetInt(Session::IdOf("bitDepth")), 32);
    EXPECT_EQ(host::ToUtf8(block->GetStr(Session::IdOf("nodeIDList"))), "1-3");
    EXPECT_EQ(block->Count(Session::IdOf("namedSelectionSetsList")), 2);
    const ParamID list = Session::IdOf("objectList");
    ASSERT_EQ(block->Count(list), 2);
    EXPECT_EQ(block->GetINode(list, 0, 0), nodes[2]);
    EXPECT_EQ(block->GetINode(list, 0, 1), nodes[0]);
}

TEST_F(ApplyParametersTest, ATableOfNodesIsReplaced) {
    const SceneDescription description =
        Parse(R"("nodes": [{"name": "a"}], "effect": {"parameters": {"objectList": ["a"]}})");
    ApplyScene(description, scene);
    EXPECT_TRUE(ApplyParameters(description, scene, *block));
    EXPECT_TRUE(ApplyParameters(description, scene, *block));
    EXPECT_EQ(block->Count(Session::IdOf("objectList")), 1);
}

}  // namespace
}  // namespace command
