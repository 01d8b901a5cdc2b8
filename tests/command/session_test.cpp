#include "command/session.h"

#include <gamma.h>
#include <gtest/gtest.h>
#include <iparamb2.h>
#include <maxapi.h>
#include <rendererclasses.h>

#include <filesystem>

#include "command/failure.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/text.h"
#include "plugin/entry.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

struct SessionTest : FolderTest {
    Session Make(const std::vector<std::string>& texts = {}, Class_ID renderer = {}) {
        plan = MakePlan(arguments);
        std::vector<Setting> settings;
        for (const std::string& text : texts)
            settings.push_back(ParseSetting(text, plugin::EffectParameters()));
        return {arguments, plan, std::move(settings), scene ? &*scene : nullptr, renderer};
    }
    void UseScene(const std::string& members) {
        scene = ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
    }
    static std::string TextOf(const Session& session, std::string_view name) {
        return host::ToUtf8(session.Block().GetStr(Session::IdOf(name)));
    }

    SessionTest() { arguments.input = "/in/a.exr"; }

    SaveArguments arguments;
    SavePlan plan;
    std::optional<SceneDescription> scene;
};

TEST_F(SessionTest, TheApplicationHasTheEffectAndNoOneToAsk) {
    {
        const Session session = Make();
        EXPECT_TRUE(host::App().settings.quiet);
        ASSERT_EQ(host::App().effects.size(), 1U);
        EXPECT_EQ(host::App().effects[0].get(), &session.GetEffect());
        EXPECT_EQ(host::App().renderer.get(), nullptr);
        EXPECT_EQ(TextOf(session, "filename"), "/in/a.psd");
        EXPECT_EQ(session.GetInt("matchRenderOutputFilename"), 0);
    }
    EXPECT_TRUE(host::App().effects.empty());
    EXPECT_FALSE(host::App().settings.quiet);
}

TEST_F(SessionTest, GammaIsTheHosts) {
    arguments.gamma = 1.8F;
    {
        const Session session = Make();
        EXPECT_TRUE(gammaMgr.enable);
        EXPECT_EQ(gammaMgr.fileOutGamma, 1.8F);
        EXPECT_FALSE(gammaMgr.dithTrue) << "a document is the same in every run";
    }
    arguments.gamma.reset();
    const Session session = Make();
    EXPECT_FALSE(gammaMgr.enable);
}

TEST_F(SessionTest, VRayHasItsFrameBufferOn) {
    const Session session = Make({}, VRAY_CLASS_ID);
    ASSERT_NE(host::App().renderer.get(), nullptr);
    EXPECT_EQ(host::App().renderer->ClassID(), VRAY_CLASS_ID);
    IParamBlock2* block = host::App().renderer->GetParamBlock(host::VRAY_BLOCK);
    EXPECT_EQ(block->GetInt(host::VRAY_FRAME_BUFFER_ON), TRUE);
    EXPECT_TRUE(host::App().settings.render.saveFile);
}

struct LookSessionTest : SessionTest {
    LookSessionTest() { arguments.lut = Write("a.cube", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n"); }
};

TEST_F(LookSessionTest, ALookHasAFolderForItsTableWhileTheSessionLives) {
    std::string path;
    {
        const Session session = Make({}, VRAY_CLASS_ID);
        ASSERT_NE(session.GetLook(), nullptr);
        EXPECT_EQ(session.GetLook()->File(), arguments.lut);
        path = session.GetLook()->Folder();
        EXPECT_EQ(host::ToUtf8(host::App().settings.temporaryFolder.data()), path);
        EXPECT_TRUE(std::filesystem::is_directory(path));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(LookSessionTest, ALookThatCantBeReadIsAnErrorAndLeavesNoFolder) {
    arguments.lut = PathOf("b.cube");
    EXPECT_THROW(Make({}, VRAY_CLASS_ID), InputError);
}

TEST_F(LookSessionTest, SettingsTellWhereTheLookIs) {
    const auto where = [this](const std::vector<std::string>& settings) {
        const Session session = Make(settings, VRAY_CLASS_ID);
        return std::pair(session.IsLookInLayer(), session.IsLookInPixels());
    };
    EXPECT_EQ(where({}), std::pair(true, false));
    EXPECT_EQ(where({"colorCorrectConfig=2"}), std::pair(false, true));
    EXPECT_EQ(where({"vrayColorCorrections=0"}), std::pair(false, false));
    arguments.lut.clear();
    EXPECT_EQ(where({}), std::pair(false, false));
    EXPECT_EQ(Make().GetLook(), nullptr);
}

TEST_F(SessionTest, TheShadowPassOfTheCommandLineStandsAboveTheScenes) {
    UseScene(R"("effect": {"parameters": {"shadowPassSource": "/scene.exr"}})");
    EXPECT_EQ(TextOf(Make(), "shadowPassSource"), "/scene.exr");
    arguments.shadow = "/s.exr";
    EXPECT_EQ(TextOf(Make(), "shadowPassSource"), "/s.exr");
}

TEST_F(SessionTest, SettingsStandAboveTheScenesParametersAndTheseAboveDefaults) {
    UseScene(R"("effect": {"parameters": {"bitDepth": 8, "resolution": 300,
                                          "renderOutputLayerName": "scene"}})");
    const Session session = Make({"bitDepth=32", "compression=0", "compression=1"});
    EXPECT_EQ(session.GetInt("bitDepth"), 32);
    EXPECT_EQ(session.Block().GetFloat(Session::IdOf("resolution")), 300.0F);
    EXPECT_EQ(TextOf(session, "renderOutputLayerName"), "scene");
    EXPECT_EQ(session.GetInt("compression"), 1) << "the last one";
    EXPECT_EQ(session.GetInt("outputRenderAs"), 2);
}

TEST_F(SessionTest, WhatIsGivenIsKnownByItsNumberToo) {
    UseScene(R"("effect": {"parameters": {"resolution": 300}})");
    Session session = Make({"#46=8"});
    EXPECT_TRUE(session.IsGiven("bitDepth"));
    EXPECT_TRUE(session.IsGiven("resolution"));
    EXPECT_FALSE(session.IsGiven("outputObjects"));
    EXPECT_FALSE(session.IsGiven("filename"));
    session.SetUnlessGiven("bitDepth", "32");
    session.SetUnlessGiven("outputObjects", "true");
    EXPECT_EQ(session.GetInt("bitDepth"), 8);
    EXPECT_EQ(session.GetInt("outputObjects"), 1);
    EXPECT_FALSE(session.IsGiven("outputObjects"));
    session.SetUnlessGiven("outputObjects", "false");
    EXPECT_EQ(session.GetInt("outputObjects"), 0) << "nobody gave it";
}

TEST_F(SessionTest, TheScenesSelectionSetsAreOnFromTheStart) {
    UseScene(R"("nodes": [{"name": "a"}], "selectionSets": [{"name": "s", "nodes": ["a"]}],
                "render": {"hidden": true, "frameRate": 25})");
    const Session session = Make();
    const ParamID list = Session::IdOf("namedSelectionSetsList");
    ASSERT_EQ(session.Block().Count(list), 1);
    EXPECT_EQ(host::ToUtf8(session.Block().GetStr(list, 0, 0)), "s");
    EXPECT_TRUE(host::App().settings.render.hidden);
    EXPECT_EQ(host::App().settings.frameRate, 25);
    EXPECT_EQ(host::App().scene.NumNodes(), 1);
}

TEST_F(SessionTest, TheScenesNameOfTheDocumentStandsBelowTheUsers) {
    UseScene(R"("effect": {"parameters": {"filename": "/scene.psd"}})");
    EXPECT_EQ(TextOf(Make(), "filename"), "/scene.psd");
    EXPECT_EQ(TextOf(Make({"filename=/user.psd"}), "filename"), "/user.psd");
    arguments.output = "/out.psb";
    EXPECT_EQ(TextOf(Make(), "filename"), "/out.psb");
    UseScene(R"("effect": {"parameters": {"matchRenderOutputFilename": true}})");
    EXPECT_EQ(Make().DocumentPath(0, false), "/out.psb");
}

TEST_F(SessionTest, TheDocumentsPathIsNumberedByTheHost) {
    arguments.output = "/out/b.psd";
    const Session session = Make();
    EXPECT_EQ(session.DocumentPath(7, false), "/out/b.psd");
    EXPECT_EQ(session.DocumentPath(7, true), "/out/b0007.psd");
}

TEST_F(SessionTest, APathTooLongForTheHostIsEmpty) {
    arguments.output = std::string(255, 'x') + ".psd";
    EXPECT_EQ(Make().DocumentPath(7, true), "");
}

TEST_F(SessionTest, TheDocumentsPathMayFollowTheRenderOutput) {
    arguments.output = "/out/b.psd";
    EXPECT_EQ(Make({"matchRenderOutputFilename=true"}).DocumentPath(3, false), "/out/b.psd");
    EXPECT_EQ(Make({"matchRenderOutputFilename=true", "fileFormat=PSB"}).DocumentPath(3, true),
              "/out/b0003.psb");
}

}  // namespace
}  // namespace command
