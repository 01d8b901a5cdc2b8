#include "command/turn_on_all.h"

#include <gtest/gtest.h>

#include "command/arguments.h"
#include "command/save_plan.h"
#include "plugin/entry.h"

namespace command {
namespace {

// The outputs that are on after --all, of those that it can turn on.
std::vector<std::string> OnAfterAll(const PassPlan& plan, const SceneDescription* scene = nullptr,
                                    const std::vector<std::string>& settings = {}) {
    const auto arguments = std::get<SaveArguments>(ParseArguments({"save", "a.exr", "--all"}));
    std::vector<Setting> given;
    for (const std::string& text : settings)
        given.push_back(ParseSetting(text, plugin::EffectParameters()));
    Session session(arguments, MakePlan(arguments), given, nullptr, {});
    TurnOnAll(session, plan, scene);
    std::vector<std::string> on;
    for (const char* name :
         {"outputObjects", "outputNodeIDs", "outputMtlIDs", "outputSceneLayers",
          "outputNamedSelectionSets", "createNodeIDLayer", "createMtlIDLayer",
          "createNodeRenderIDLayer", "createNormalLayer", "createZDepthChannel"}) {
        if (session.GetInt(name) != 0) on.emplace_back(name);
    }
    return on;
}

using Names = std::vector<std::string>;

TEST(TurnOnAll, TurnsOnNothingThatTheFileHasNothingFor) {
    EXPECT_EQ(OnAfterAll({}), Names());
}

TEST(TurnOnAll, MakesMattesOfObjectsByNameOrElseByNumber) {
    PassPlan plan;
    plan.objectID = IDPass{};
    EXPECT_EQ(OnAfterAll(plan), (Names{"outputNodeIDs", "createNodeIDLayer"}));
    plan.objectMatte = 0;
    EXPECT_EQ(OnAfterAll(plan),
              (Names{"outputObjects", "createNodeIDLayer", "createNodeRenderIDLayer"}));
    EXPECT_EQ(
        OnAfterAll(plan, nullptr, {"nodeIDList=1-3"}),
        (Names{"outputObjects", "outputNodeIDs", "createNodeIDLayer", "createNodeRenderIDLayer"}))
        << "a list of one's own asks for them";
}

TEST(TurnOnAll, MakesMattesOfMaterialsAndLayersOfNormals) {
    PassPlan plan;
    plan.materialID = IDPass{};
    plan.normals = NormalPass{};
    EXPECT_EQ(OnAfterAll(plan), (Names{"outputMtlIDs", "createMtlIDLayer", "createNormalLayer"}));
}

TEST(TurnOnAll, MakesAChannelOfDepthThatIsADistance) {
    PassPlan plan;
    plan.depth = DepthPass{{}, false};
    EXPECT_EQ(OnAfterAll(plan), Names());
    plan.depth->isDistance = true;
    EXPECT_EQ(OnAfterAll(plan), Names{"createZDepthChannel"});
    EXPECT_EQ(OnAfterAll(plan, nullptr, {"createZDepthChannel=false"}), Names());
    plan.depth.reset();
    plan.deep = DeepPass{};
    EXPECT_EQ(OnAfterAll(plan), Names{"createZDepthChannel"});
}

TEST(TurnOnAll, NeedsObjectsForTheScenesLayersAndSets) {
    SceneDescription scene;
    scene.nodes.emplace_back().objectID = 3;
    scene.layers.emplace_back().name = "Props";
    scene.selectionSets.emplace_back().name = "Hero";
    PassPlan plan;
    EXPECT_EQ(OnAfterAll(plan, &scene), Names());
    plan.objectMatte = 0;
    EXPECT_EQ(OnAfterAll(plan, &scene),
              (Names{"outputObjects", "outputSceneLayers", "outputNamedSelectionSets",
                     "createNodeIDLayer", "createNodeRenderIDLayer"}));
}

TEST(TurnOnAll, LeavesAloneWhatTheUserSet) {
    PassPlan plan;
    plan.objectMatte = 0;
    EXPECT_EQ(OnAfterAll(plan, nullptr, {"outputObjects=false"}), Names{"createNodeRenderIDLayer"});
}

}  // namespace
}  // namespace command
