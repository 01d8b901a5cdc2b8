#include "command/apply_parameters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iparamb2.h>

#include "command/session.h"
#include "host/application.h"
#include "host/build_scene.h"
#include "host/text.h"
#include "plugin/entry.h"

namespace command {
namespace {

SceneDescription ParseForParameters(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

// The effect and its block, which belong to the application.
class ApplyParametersTest : public testing::Test {
  public:
    ApplyParametersTest() {
        host::ResetApplication();
        auto* effect = static_cast<Effect*>(LibClassDesc(0)->Create(FALSE));
        host::App().effects.emplace_back(effect);
        block = effect->GetParamBlock(0);
    }
    ~ApplyParametersTest() override { host::ResetApplication(); }

    IParamBlock2* block = nullptr;
};

TEST_F(ApplyParametersTest, SetsValuesAndTablesOfNodes) {
    const SceneDescription description = ParseForParameters(R"(
        "nodes": [{"name": "a"}, {"name": "b"}, {"name": "c"}],
        "effect": {"parameters": {"bitDepth": 32, "nodeIDList": "1-3", "objectList": ["c", "a"],
                                  "namedSelectionSetsList": ["x", "y"]}})");
    const auto nodes = host::BuildScene(description).nodes;
    EXPECT_TRUE(ApplyParameters(description, nodes, *block));
    EXPECT_EQ(block->GetInt(Session::IdOf("bitDepth")), 32);
    EXPECT_EQ(host::ToUtf8(block->GetStr(Session::IdOf("nodeIDList"))), "1-3");
    EXPECT_EQ(block->Count(Session::IdOf("namedSelectionSetsList")), 2);
    const ParamID list = Session::IdOf("objectList");
    ASSERT_EQ(block->Count(list), 2);
    EXPECT_EQ(block->GetINode(list, 0, 0), nodes[2]);
    EXPECT_EQ(block->GetINode(list, 0, 1), nodes[0]);
}

TEST_F(ApplyParametersTest, ATableOfNodesIsReplaced) {
    const SceneDescription description = ParseForParameters(
        R"("nodes": [{"name": "a"}], "effect": {"parameters": {"objectList": ["a"]}})");
    const auto nodes = host::BuildScene(description).nodes;
    EXPECT_TRUE(ApplyParameters(description, nodes, *block));
    EXPECT_TRUE(ApplyParameters(description, nodes, *block));
    EXPECT_EQ(block->Count(Session::IdOf("objectList")), 1);
}

}  // namespace
}  // namespace command
