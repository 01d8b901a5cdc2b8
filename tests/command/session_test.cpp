#include "command/session.h"

#include <gamma.h>
#include <gtest/gtest.h>
#include <iparamb2.h>
#include <maxapi.h>
#include <rendererclasses.h>
#include <tempfiles.h>

#include <filesystem>

#include "command/failure.h"
#include "command/native_path.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/text.h"
#include "plugin/entry.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"
#include "tests/host/native_path.h"

namespace command {
namespace {

struct SessionTest : FolderTest {
    Session Make(const std::vector<std::string>& texts = {}, Class_ID renderer = {}) {
        plan = MakePlan(arguments);
        std::vector<Setting> settings;
        for (const std::string& text : texts)
            settings.push_back(ParseSetting(text, plugin::EffectParameters()));
        return {arguments, plan, settings, scene ? &*scene : nullptr, renderer};
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
        EXPECT_EQ(TextOf(session, "filename"), NativePath("/in/a.psd"));
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

std::filesystem::path HostsTemporaryFolder() {
    MCHAR path[512] = {};
    EXPECT_GT(GetTempPath(512, path), 0U);
    return host::ToNativePath(path);
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
        // Without the slash at its end, with which Windows finds no folder equal to another.
        EXPECT_TRUE(
            std::filesystem::equivalent(HostsTemporaryFolder().parent_path(), Native(path)));
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
    EXPECT_EQ(TextOf(Make(), "filename"), NativePath("/scene.psd"));
    EXPECT_EQ(TextOf(Make({"filename=/user.psd"}), "filename"), NativePath("/user.psd"));
    arguments.output = "/out.psb";
    EXPECT_EQ(TextOf(Make(), "filename"), NativePath("/out.psb"));
    UseScene(R"("effect": {"parameters": {"matchRenderOutputFilename": true}})");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/out.psb"));
}

// A scene of version 2 with effects that the application saved.
struct SavedEffectSessionTest : SessionTest {
    // An effect of the newest version with these parameters.
    static std::string Effect(int handle, const std::string& parameters, bool isOff = false) {
        return R"({"handle": )" + std::to_string(handle) +
               R"(, "superClass": 4240, "class": [1879475721, 30790295], )" +
               (isOff ? R"("chunks": [{"id": 256}], )" : "") +
               R"("references": [{"block": {"id": 0, "version": 4, "parameters": [)" + parameters +
               "]}}, null]}";
    }
    void UseSaved(const std::string& objects, const std::string& effects,
                  const std::string& more = "") {
        scene =
            ParseScene("a.json", R"({"veltrane": 2, "nodes": [{"name": "n", "handle": 1}],
                                         "objects": [)" +
                                     objects + R"(], "effects": [)" + effects + "]" + more + "}");
    }
    std::string Fault() {
        return FaultText<InputError>([this] { Make(); });
    }
};

TEST_F(SavedEffectSessionTest, TheSavedEffectIsTheOneThatSaves) {
    UseSaved(Effect(2, R"({"id": 46, "type": "int", "value": 32},
                          {"id": 51, "type": "int", "value": 4711},
                          {"id": 30, "type": "node", "values": [1]})"),
             "2");
    const Session session = Make();
    ASSERT_EQ(host::App().effects.size(), 1U);
    EXPECT_EQ(host::App().effects[0].get(), &session.GetEffect());
    EXPECT_EQ(session.GetInt("bitDepth"), 32);
    EXPECT_EQ(session.GetInt("sceneLayerAppDataChunkId"), 4711);
    EXPECT_EQ(session.GetInt("compression"), 1) << "as a new one";
    ASSERT_EQ(session.SceneNodes().size(), 1U);
    EXPECT_EQ(session.Block().GetINode(Session::IdOf("objectList"), 0, 0), session.SceneNodes()[0]);
}

TEST_F(SavedEffectSessionTest, SettingsByNameStandAboveWhatIsSaved) {
    UseSaved(Effect(2, R"({"id": 46, "type": "int", "value": 32},
                          {"id": 45, "type": "float", "value": 300},
                          {"id": 22, "type": "int", "value": 0})"),
             "2", R"(, "effect": {"parameters": {"bitDepth": 8, "resolution": 100}})");
    const Session session = Make({"resolution=50"});
    EXPECT_EQ(session.GetInt("bitDepth"), 8);
    EXPECT_EQ(session.Block().GetFloat(Session::IdOf("resolution")), 50.0F);
    EXPECT_EQ(session.GetInt("compression"), 0);
}

TEST_F(SavedEffectSessionTest, OfSavedParametersThoseThatWereChangedAreGiven) {
    UseSaved(Effect(2, R"({"id": 19, "type": "text", "value": "7"},
                          {"id": 21, "type": "text", "value": "1, 3 [Name], 5-8"},
                          {"id": 30, "type": "node", "values": [1]},
                          {"id": 75, "type": "text", "values": []},
                          {"id": 46, "type": "int", "value": 16},
                          {"id": 45, "type": "float", "value": 72.5},
                          {"id": 41, "type": "bool", "value": false})"),
             "2");
    Session session = Make();
    EXPECT_TRUE(session.IsGiven("nodeIDList"));
    EXPECT_FALSE(session.IsGiven("mtlIDList"));
    EXPECT_TRUE(session.IsGiven("objectList"));
    EXPECT_FALSE(session.IsGiven("namedSelectionSetsList"));
    EXPECT_FALSE(session.IsGiven("bitDepth"));
    EXPECT_TRUE(session.IsGiven("resolution"));
    EXPECT_TRUE(session.IsGiven("embedCameraInfo"));
    session.SetUnlessGiven("bitDepth", "8");
    EXPECT_FALSE(session.IsGiven("bitDepth"));
}

TEST_F(SavedEffectSessionTest, TheDocumentGoesWhereTheSavedEffectSays) {
    const auto effect = [](bool matches, const std::string& name) {
        return Effect(2, R"({"id": 53, "type": "bool", "value": )" +
                             std::string(matches ? "true" : "false") +
                             R"(}, {"id": 0, "type": "file", "value": ")" + name + R"("})");
    };
    UseSaved(effect(false, "/saved/b.psd"), "2");
    EXPECT_EQ(Make().DocumentPath(3, true), NativePath("/saved/b0003.psd"));
    EXPECT_EQ(Make({"filename=/set.psd"}).DocumentPath(0, false), NativePath("/set.psd"));
    arguments.output = "/out.psb";
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/out.psb"));
    arguments.output.clear();
    UseSaved(effect(false, "/saved/b.psd"), "2",
             R"(, "effect": {"parameters": {"filename": "/named.psd"}})");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/named.psd"));
    UseSaved(effect(false, ""), "2");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/in/a.psd"));
    UseSaved(effect(true, "/saved/b.psd"), "2",
             R"(, "render": {"output": "/far/away.exr", "saveFile": true, "width": 10})");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/in/a.psd"));
}

TEST_F(SavedEffectSessionTest, ADocumentThatMatchesTheRenderHasTheSavedFormat) {
    const auto effect = [](bool matches, const std::string& name) {
        return Effect(2, R"({"id": 124, "type": "int", "value": 1}, {"id": 53, "type": "bool",
                             "value": )" +
                             std::string(matches ? "true" : "false") +
                             R"(}, {"id": 0, "type": "file", "value": ")" + name + R"("})");
    };
    UseSaved(effect(true, "/saved/b.psd"), "2");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/in/a.psb"));
    EXPECT_EQ(Make().DocumentPath(7, true), NativePath("/in/a0007.psb"));
    EXPECT_EQ(Make({"fileFormat=PSD"}).DocumentPath(0, false), NativePath("/in/a.psd"));
    EXPECT_EQ(Make({"filename=/set.psd"}).DocumentPath(0, false), NativePath("/set.psd"));
    UseSaved(effect(true, ""), "2", R"(, "effect": {"parameters": {"filename": "/named.psd"}})");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/named.psd"));
    UseSaved(effect(false, ""), "2");
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/in/a.psd")) << "no name to match";
    UseSaved(effect(true, ""), "2");
    arguments.output = "/out.psd";
    EXPECT_EQ(Make().DocumentPath(0, false), NativePath("/out.psd"));
}

TEST_F(SavedEffectSessionTest, WhatIsRenderedIsNotTheScenesMatter) {
    UseSaved(Effect(2, ""), "2",
             R"(, "render": {"output": "/far/away.exr", "saveFile": true, "hidden": true,
                             "frameRate": 24})");
    const Session session = Make();
    const host::RenderSettings& render = host::App().settings.render;
    EXPECT_EQ(host::ToUtf8(render.output.Name()), "/in/a.psd");
    EXPECT_FALSE(render.saveFile);
    EXPECT_TRUE(render.hidden);
    EXPECT_EQ(host::App().settings.frameRate, 24);
}

TEST_F(SavedEffectSessionTest, ExactlyOneEffectIsOn) {
    UseSaved(Effect(2, "", true) + ", " + Effect(3, R"({"id": 46, "type": "int", "value": 8})"),
             "2, 3");
    {
        const Session session = Make();
        EXPECT_EQ(session.GetInt("bitDepth"), 8);
        EXPECT_EQ(host::App().effects.size(), 2U);
    }
    UseSaved(Effect(2, "") + ", " + Effect(3, ""), "2, 3");
    EXPECT_EQ(Fault(),
              "a.json: effects: more than one effect that saves documents is on; switch the others "
              "off in the application");
    EXPECT_TRUE(host::App().effects.empty());
    EXPECT_EQ(host::App().scene.NumNodes(), 0);
    UseSaved(Effect(2, "", true), "2");
    EXPECT_EQ(Fault(),
              "a.json: effects: the effect that saves the document is off; switch it on in the "
              "application");
    UseSaved(Effect(2, ""), "");
    EXPECT_EQ(Make().GetInt("bitDepth"), 16) << "not among the effects";
    EXPECT_TRUE(host::App().effects.empty());
}

TEST_F(SavedEffectSessionTest, ObjectsThatCantBeMadeAreTold) {
    UseSaved(R"({"handle": 2, "superClass": 4240, "class": [1, 2]})", "2");
    EXPECT_EQ(Fault(),
              "a.json: objects[0]: no library offers the class (0x00000001, 0x00000002) of the "
              "super class 4240");
    UseSaved(Effect(2, R"({"id": 30, "type": "node", "values": [9]})"), "2");
    EXPECT_EQ(
        Fault(),
        "a.json: objects[0]: the parameter 30 (objectList) of the block 0 is to the object 9, "
        "which is nowhere in the file");
    UseSaved(Effect(2, R"({"id": 46, "type": "text", "value": "8"})"), "2");
    EXPECT_EQ(Fault(),
              "a.json: objects[0]: the parameter 46 (bitDepth) of the block 0 holds a text where a "
              "number must be");
}

TEST_F(SavedEffectSessionTest, OldEffectsAreBroughtUpToDate) {
    const std::string path = VELTRANE_SOURCE_DIR "/tests/command/files/scene_of_version_101.json";
    scene = ReadSceneFile(path);
    arguments.output = "/out.psd";
    const Session session = Make();
    EXPECT_EQ(session.GetInt("bitDepth"), 8);
    EXPECT_EQ(session.GetInt("outputSceneLayersAs"), 5);
    EXPECT_EQ(session.GetInt("outputNodeIDsAs"), 5);
    EXPECT_EQ(session.GetInt("outputMtlIDsAs"), 5);
    EXPECT_EQ(session.GetInt("outputObjectsAs"), 1);
    EXPECT_EQ(session.GetInt("matteLayersVisible"), 0);
    EXPECT_EQ(session.GetInt("gammaCorrectConfig"), 2);
    EXPECT_EQ(session.GetInt("colorCorrectConfig"), 0);
    EXPECT_EQ(session.GetInt("autoSort"), 0);
}

TEST_F(SessionTest, TheDocumentsPathIsNumberedByTheHost) {
    arguments.output = "/out/b.psd";
    const Session session = Make();
    EXPECT_EQ(session.DocumentPath(7, false), NativePath("/out/b.psd"));
    EXPECT_EQ(session.DocumentPath(7, true), NativePath("/out/b0007.psd"));
}

TEST_F(SessionTest, APathTooLongForTheHostIsEmpty) {
    arguments.output = std::string(255, 'x') + ".psd";
    EXPECT_EQ(Make().DocumentPath(7, true), "");
}

TEST_F(SessionTest, TheDocumentsPathMayFollowTheRenderOutput) {
    arguments.output = "/out/b.psd";
    EXPECT_EQ(Make({"matchRenderOutputFilename=true"}).DocumentPath(3, false),
              NativePath("/out/b.psd"));
    EXPECT_EQ(Make({"matchRenderOutputFilename=true", "fileFormat=PSB"}).DocumentPath(3, true),
              NativePath("/out/b0003.psb"));
}

}  // namespace
}  // namespace command
