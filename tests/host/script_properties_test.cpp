#include "host/script_properties.h"

#include <gtest/gtest.h>

#include "host/application.h"
#include "host/host_renderer.h"

namespace {

class ScriptPropertiesTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
};

TEST_F(ScriptPropertiesTest, APropertyGivesItsValueAndType) {
    host::App().scripts.Set("a.int", host::ScriptInt(7));
    host::App().scripts.Set("a.bool", host::ScriptBool(true));
    host::App().scripts.Set("a.float", host::ScriptFloat(0.5F));
    FPValue value;
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("a.int"), TRUE, &value));
    EXPECT_EQ(value.type, TYPE_INT);
    EXPECT_EQ(value.i, 7);
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("a.bool"), TRUE, &value));
    EXPECT_EQ(value.type, TYPE_BOOL);
    EXPECT_EQ(value.b, 1);
    ASSERT_TRUE(ExecuteMAXScriptScript(_M(" A.Float\n"), TRUE, &value));
    EXPECT_EQ(value.type, TYPE_FLOAT);
    EXPECT_EQ(value.f, 0.5F);
    EXPECT_TRUE(ExecuteMAXScriptScript(_M("a.int"), TRUE));
}

TEST_F(ScriptPropertiesTest, AnAssignmentGivesItsValueToAPropertyThatTakesOne) {
    FPValue taken;
    host::App().scripts.Set(
        "a.set", [] { return host::ScriptInt(3); }, [&taken](FPValue value) { taken = value; });
    FPValue value;
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("a.set = true"), TRUE, &value));
    EXPECT_EQ(taken.type, TYPE_BOOL);
    EXPECT_EQ(taken.b, 1);
    EXPECT_EQ(value.type, TYPE_BOOL);
    EXPECT_EQ(value.b, 1);
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("A.Set=-12"), TRUE));
    EXPECT_EQ(taken.type, TYPE_INT);
    EXPECT_EQ(taken.i, -12);
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("a.set"), TRUE, &value));
    EXPECT_EQ(value.i, 3);
    for (const MCHAR* script : {_M("a.set = maybe"), _M("a.set = "), _M("a.set = 1 2"),
                                _M("a.set = = 1"), _M("a.other = 1"), _M("= 1")}) {
        EXPECT_FALSE(ExecuteMAXScriptScript(script, TRUE));
    }
    EXPECT_EQ(taken.i, -12);
    host::App().scripts.Set("a.int", host::ScriptInt(7));
    EXPECT_FALSE(ExecuteMAXScriptScript(_M("a.int = 8"), TRUE)) << "it can only be read";
}

TEST_F(ScriptPropertiesTest, AnUnknownTextFailsAndLeavesTheValue) {
    FPValue value = host::ScriptInt(7);
    EXPECT_FALSE(ExecuteMAXScriptScript(_M("no.such"), TRUE, &value));
    EXPECT_EQ(value.i, 7);
    EXPECT_TRUE(host::App().log.Entries().empty());
    EXPECT_FALSE(ExecuteMAXScriptScript(_M(""), TRUE, &value));
}

TEST_F(ScriptPropertiesTest, AFailureIsShownUnlessErrorsAreQuiet) {
    EXPECT_FALSE(ExecuteMAXScriptScript(_M("no.such"), FALSE));
    ASSERT_EQ(host::App().log.Entries().size(), 1U);
    EXPECT_EQ(host::App().log.Entries()[0].text, MSTR(_M("The script failed: no.such")));
    EXPECT_EQ(host::App().boxes.Shown().size(), 1U);
}

TEST_F(ScriptPropertiesTest, IterativeRenderingFollowsTheSetting) {
    FPValue value;
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("maxops.rendUseIterative"), TRUE, &value));
    EXPECT_EQ(value.type, TYPE_INT);
    EXPECT_EQ(value.i, 0);
    host::App().settings.render.iterative = true;
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("maxops.rendUseIterative"), TRUE, &value));
    EXPECT_EQ(value.i, 1);
}

TEST_F(ScriptPropertiesTest, AGetterMayHaveNoAnswer) {
    host::ScriptProperties properties;
    bool there = false;
    properties.Set("a", [&]() -> std::optional<FPValue> {
        return there ? std::optional(host::ScriptInt(1)) : std::nullopt;
    });
    EXPECT_FALSE(properties.Evaluate("a"));
    there = true;
    EXPECT_TRUE(properties.Evaluate("a"));
    properties.Remove("A");
    EXPECT_FALSE(properties.Evaluate("a"));
}

TEST_F(ScriptPropertiesTest, PropertiesOfTheCurrentRendererComeFromIt) {
    FPValue value;
    EXPECT_FALSE(ExecuteMAXScriptScript(_M("renderers.current.output_on"), TRUE, &value));
    host::App().renderer.reset(new host::HostRenderer(CORONA_CLASS_ID));
    EXPECT_FALSE(ExecuteMAXScriptScript(_M("renderers.current.output_on"), TRUE, &value));
    host::App().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("renderers.current.output_on"), TRUE, &value));
    EXPECT_EQ(value.type, TYPE_BOOL);
    EXPECT_EQ(value.b, 0);
    host::App()
        .renderer->GetParamBlock(host::VRAY_BLOCK)
        ->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, TRUE);
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("renderers.current.output_on"), TRUE, &value));
    EXPECT_EQ(value.b, 1);
    ASSERT_TRUE(ExecuteMAXScriptScript(_M("renderers.current.imageSampler_type"), TRUE, &value));
    EXPECT_EQ(value.type, TYPE_INT);
    EXPECT_EQ(value.i, host::VRAY_SAMPLER_BUCKET);
}

}  // namespace
