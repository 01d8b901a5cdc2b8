#include "host/core_interface.h"

#include <gtest/gtest.h>

#include "host/application.h"
#include "host/host_renderer.h"
#include "tests/host/sample_effect.h"

namespace {

class CoreInterfaceTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
};

TEST_F(CoreInterfaceTest, TheRenderSettingsAreTheApplications) {
    Interface* core = GetCOREInterface();
    host::RenderSettings& render = host::App().settings.render;
    render.width = 1920;
    render.height = 1080;
    render.timeType = REND_TIMERANGE;
    render.fileNumberBase = 5;
    render.output.SetName(MSTR(_M("/out/a.exr")));
    render.saveFile = 2;
    EXPECT_EQ(core->GetRendWidth(), 1920);
    EXPECT_EQ(core->GetRendHeight(), 1080);
    EXPECT_EQ(core->GetRendTimeType(), REND_TIMERANGE);
    EXPECT_EQ(core->GetRendFileNumberBase(), 5);
    EXPECT_EQ(MSTR(core->GetRendFileBI().Name()), MSTR(_M("/out/a.exr")));
    EXPECT_EQ(core->GetRendSaveFile(), 2);
    core->SetRendSaveFile(TRUE);
    EXPECT_EQ(render.saveFile, TRUE);
    EXPECT_TRUE(core->GetRendEffects());
    render.effects = false;
    EXPECT_FALSE(core->GetRendEffects());
}

TEST_F(CoreInterfaceTest, TheSceneAndTheSessionAreTheApplications) {
    Interface* core = GetCOREInterface();
    EXPECT_EQ(MSTR(core->GetCurFileName()), MSTR());
    host::App().settings.sceneFileName = MSTR(_M("shot.max"));
    host::App().settings.time = 320;
    EXPECT_EQ(MSTR(core->GetCurFileName()), MSTR(_M("shot.max")));
    EXPECT_EQ(core->GetTime(), 320);
    EXPECT_FALSE(core->GetQuietMode());
    host::App().settings.quiet = true;
    EXPECT_TRUE(core->GetQuietMode());
    EXPECT_EQ(core->GetMAXHWnd(), nullptr);
    EXPECT_EQ(core->Log(), &host::App().log);
}

TEST_F(CoreInterfaceTest, AnAbortStaysUntilTheNextRender) {
    EXPECT_FALSE(GetCOREInterface()->CheckForRenderAbort());
    GetCOREInterface()->AbortRender();
    EXPECT_TRUE(GetCOREInterface()->CheckForRenderAbort());
}

TEST_F(CoreInterfaceTest, ThePreviewQueryAnswersBehindItsId) {
    EXPECT_EQ(GetCOREInterface()->GetInterface(1), nullptr);
    auto* query = static_cast<IRenderPreviewQuery*>(
        GetCOREInterface()->GetInterface(RENDER_PREVIEW_QUERY_INTERFACE));
    ASSERT_TRUE(query);
    EXPECT_FALSE(query->GetState()->IsPreview());
    host::App().settings.render.preview = true;
    EXPECT_TRUE(query->GetState()->IsPreview());
}

TEST_F(CoreInterfaceTest, EffectsAreListedInTheirOrder) {
    Journal journal;
    auto* first = new SampleEffect(journal, "a");
    auto* second = new SampleEffect(journal, "b");
    host::App().effects.emplace_back(first);
    host::App().effects.emplace_back(second);
    Interface* core = GetCOREInterface();
    EXPECT_EQ(core->NumEffects(), 2);
    EXPECT_EQ(core->GetEffect(0), first);
    EXPECT_EQ(core->GetEffect(1), second);
    EXPECT_EQ(core->GetEffect(2), nullptr);
    EXPECT_EQ(core->GetEffect(-1), nullptr);
}

TEST_F(CoreInterfaceTest, ThePointerOutlivesAnApplication) {
    Interface* core = GetCOREInterface();
    host::App().settings.time = 5;
    host::ResetApplication();
    EXPECT_EQ(GetCOREInterface(), core);
    EXPECT_EQ(core->GetTime(), 0);
    EXPECT_EQ(core->GetCurrentRenderer(), nullptr);
    host::App().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
    EXPECT_EQ(core->GetCurrentRenderer(), host::App().renderer.get());
}

TEST_F(CoreInterfaceTest, EachSetOfSettingsHasItsRenderElements) {
    Interface* core = GetCOREInterface();
    EXPECT_EQ(core->GetRenderElementMgr(RS_Production), &host::App().elements[RS_Production]);
    EXPECT_EQ(core->GetRenderElementMgr(RS_Draft), &host::App().elements[RS_Draft]);
    EXPECT_EQ(core->GetRenderElementMgr(static_cast<RenderSettingID>(2)), nullptr);
    EXPECT_EQ(core->GetCurRenderElementMgr(), &host::App().elements[RS_Production]);
    host::App().settings.render.current = RS_Draft;
    EXPECT_EQ(core->GetCurRenderElementMgr(), &host::App().elements[RS_Draft]);
}

TEST_F(CoreInterfaceTest, HiddenObjectsAreRenderedWhenTheSettingsSaySo) {
    EXPECT_FALSE(GetCOREInterface()->GetRendHidden());
    host::App().settings.render.hidden = true;
    EXPECT_TRUE(GetCOREInterface()->GetRendHidden());
}

TEST_F(CoreInterfaceTest, TheRootNodeIsTheScenes) {
    INode* root = GetCOREInterface()->GetRootNode();
    ASSERT_EQ(root, &host::App().scene.Root());
    host::App().scene.AddNode(_M("Box"));
    EXPECT_EQ(root->NumberOfChildren(), 1);
}

TEST_F(CoreInterfaceTest, AChangeOfTheSceneIsRemembered) {
    EXPECT_FALSE(host::App().settings.saveRequired);
    GetCOREInterface()->SetSaveRequired();
    EXPECT_TRUE(host::App().settings.saveRequired);
}

}  // namespace
