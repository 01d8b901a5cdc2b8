#include "command/win32/panel_scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iparamb2.h>
#include <multimatte.h>
#include <rendererclasses.h>

#include <optional>
#include <string>

#include "command/failure.h"
#include "command/layer_settings.h"
#include "command/session.h"
#include "command/win32/program_folder.h"
#include "host/application.h"
#include "host/capture_scene.h"
#include "host/host_renderer.h"
#include "host/scene_text_writer.h"
#include "host/text.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"
#include "tests/command/win32/panel_test_files.h"

namespace command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class PanelSceneTest : public FolderTest {
  protected:
    PanelSceneTest() {
        host::ResetApplication();
        scene.emplace(ProgramFolder() / "veltrane.dlv");
    }
    ~PanelSceneTest() override {
        scene.reset();
        host::ResetApplication();
    }

    IParamBlock2& Block() { return *scene->GetEffect().GetParamBlock(0); }
    int GetInt(std::string_view name) { return Block().GetInt(Session::IdOf(name)); }
    void SetInt(std::string_view name, int value) {
        Block().SetValue(Session::IdOf(name), 0, value);
    }
    void SetText(std::string_view name, const std::string& text) {
        Block().SetValue(Session::IdOf(name), 0, host::FromUtf8(text).data());
    }
    static std::string State() { return host::WriteScene(host::CaptureScene()); }
    static host::RenderElement* Element(const char* name) {
        return host::App().elements[RS_Production].Find(host::FromUtf8(name));
    }
    int ElementSettingOf(const char* element, std::string_view setting) {
        IParamBlock2* layer = LayerSettingsOf(Block(), Element(element));
        return layer ? layer->GetInt(LayerParameter(setting)) : -1;
    }
    std::string OpenFault(const std::string& path) {
        return FaultText<InputError>([&] { scene->Open(path); });
    }

    std::optional<PanelScene> scene;
};

constexpr const char* handWritten = R"({"veltrane": 1,
    "nodes": [{"name": "Lamp"}, {"name": "Table"}],
    "selectionSets": [{"name": "For retouching", "nodes": ["Lamp"]}],
    "elements": [{"name": "Env", "enabled": false},
                 {"name": "Masks", "class": "MultiMatteElement",
                  "multiMatte": {"red": {"id": 7}}}],
    "render": {"frameRate": 25},
    "effect": {"parameters": {"bitDepth": 32, "objectList": ["Table"]},
               "elements": {"Masks": {"visible": false}, "DiffDir": {"visible": false}}}})";

TEST_F(PanelSceneTest, StartsWithAnEffectAndNothingToSave) {
    EXPECT_EQ(host::App().effects.size(), 1U);
    EXPECT_EQ(scene->File(), "");
    EXPECT_FALSE(scene->IsChanged());
    EXPECT_EQ(PanelScene::RenderOutput(), "");
    SetInt("bitDepth", 32);
    EXPECT_TRUE(scene->IsChanged());
    scene->TakeAsUnchanged();
    EXPECT_FALSE(scene->IsChanged());
}

TEST_F(PanelSceneTest, ASceneThatPeopleWriteOpensWithItsSettingsByName) {
    const std::string path = Write("hand written.json", handWritten);
    scene->Open(path);
    EXPECT_EQ(scene->File(), path);
    EXPECT_FALSE(scene->IsChanged());
    EXPECT_EQ(host::App().scene.NumNodes(), 2);
    EXPECT_EQ(host::App().settings.frameRate, 25);
    EXPECT_EQ(GetInt("bitDepth"), 32);
    EXPECT_EQ(Block().Count(Session::IdOf("objectList")), 1);
    EXPECT_EQ(Block().Count(Session::IdOf("namedSelectionSetsList")), 1) << "sets start on";
    EXPECT_EQ(ElementSettingOf("Masks", "visible"), 0);
    EXPECT_EQ(host::App().settings.sceneFileName, MSTR(L"hand written.json"));
}

TEST_F(PanelSceneTest, ASceneWithoutAnEffectGetsOneWithTheDefaults) {
    scene->Open(Write("a.json", R"({"veltrane": 1, "nodes": [{"name": "Lamp"}]})"));
    EXPECT_EQ(host::App().effects.size(), 1U);
    EXPECT_EQ(GetInt("bitDepth"), 16);
    EXPECT_FALSE(scene->IsChanged());
}

TEST_F(PanelSceneTest, WhatIsSavedIsOpenedAsItWas) {
    scene->Open(Write("a.json", handWritten));
    SetInt("compression", 0);
    EXPECT_TRUE(scene->IsChanged());
    scene->Save(PathOf("b.json"));
    EXPECT_EQ(scene->File(), PathOf("b.json"));
    EXPECT_FALSE(scene->IsChanged());
    const std::string state = State();
    scene->New();
    EXPECT_NE(State(), state);
    scene->Open(PathOf("b.json"));
    EXPECT_EQ(State(), state);
    EXPECT_FALSE(scene->IsChanged());
}

TEST_F(PanelSceneTest, AFileWithAFaultLeavesAllAsItWas) {
    scene->Open(Write("a.json", handWritten));
    scene->UseRenderFile(Write("a.exr", RenderOfVRay()));
    SetInt("bitDepth", 8);
    const std::string state = State();
    const Effect* effect = &scene->GetEffect();
    const ::Renderer* renderer = host::App().renderer.get();
    ASSERT_NE(renderer, nullptr);
    const std::string wrong =
        Write("wrong.json", R"({"veltrane": 1, "effect": {"parameters": {"bitDepht": 8}}})");
    EXPECT_THAT(OpenFault(wrong), HasSubstr("bitDepth"));
    EXPECT_THAT(OpenFault(PathOf("none.json")), HasSubstr("no such file"));
    EXPECT_THAT(OpenFault(Write("half.json", std::string(handWritten).substr(0, 200))),
                StartsWith(PathOf("half.json")));
    EXPECT_THAT(OpenFault(Write("class.json", R"({"veltrane": 2, "objects": [{"handle": 2,
                    "superClass": 4240, "class": [1, 2]}], "effects": [2]})")),
                HasSubstr("no library offers the class"));
    EXPECT_EQ(State(), state);
    EXPECT_EQ(&scene->GetEffect(), effect);
    EXPECT_EQ(host::App().renderer.get(), renderer);
    EXPECT_EQ(scene->File(), PathOf("a.json"));
    EXPECT_TRUE(scene->IsChanged());
}

TEST_F(PanelSceneTest, TheEffectThatIsOnIsTheOneThatIsShown) {
    const auto effect = [](const char* handle, const char* depth, const char* chunks) {
        return std::string(R"({"handle": )") + handle +
               R"(, "superClass": 4240, "class": [1879475721, 30790295], )" + chunks +
               R"("references": [{"block": {"id": 0, "version": 4, "parameters": [
                   {"id": 46, "type": "int", "value": )" +
               depth + "}]}}, null]}";
    };
    const auto file = [](const std::string& objects) {
        return R"({"veltrane": 2, "objects": [)" + objects + R"(], "effects": [2, 3]})";
    };
    constexpr const char* off = R"("chunks": [{"id": 256}], )";
    scene->Open(Write("a.json", file(effect("2", "8", off) + "," + effect("3", "32", ""))));
    EXPECT_EQ(GetInt("bitDepth"), 32);
    scene->Open(Write("b.json", file(effect("2", "8", off) + "," + effect("3", "32", off))));
    EXPECT_EQ(GetInt("bitDepth"), 8) << "the first when none is on";
}

TEST_F(PanelSceneTest, TheRenderFileOfOneSceneIsNotTheNextOnes) {
    scene->UseRenderFile(Write("a.exr", RenderOfVRay()));
    EXPECT_NE(PanelScene::RenderOutput(), "");
    scene->New();
    EXPECT_EQ(PanelScene::RenderOutput(), "");
    EXPECT_FALSE(host::App().settings.render.saveFile);
    EXPECT_EQ(host::App().renderer.get(), nullptr);
    EXPECT_EQ(host::App().elements[RS_Production].NumRenderElements(), 0);
    scene->UseRenderFile(PathOf("a.exr"));
    scene->Open(Write("a.json", R"({"veltrane": 1, "nodes": [{"name": "Lamp"}]})"));
    EXPECT_EQ(PanelScene::RenderOutput(), "");
    EXPECT_EQ(host::App().renderer.get(), nullptr);
}

TEST_F(PanelSceneTest, ARenderFileGivesTheSceneItsElementsOnce) {
    const std::string path =
        Write("\xd1\x81\xd1\x86\xd0\xb5\xd0\xbd\xd0\xb0 1.exr", RenderWithElements());
    scene->UseRenderFile(path);
    EXPECT_EQ(PanelScene::RenderOutput(), path);
    EXPECT_TRUE(host::App().settings.render.saveFile);
    EXPECT_EQ(host::App().settings.render.width, 4);
    EXPECT_EQ(host::App().settings.render.height, 2);
    EXPECT_EQ(host::App().renderer.get(), nullptr);
    ASSERT_EQ(host::App().elements[RS_Production].NumRenderElements(), 2);
    EXPECT_EQ(Block().Count(Session::IdOf("layersProduction")), 2);
    const std::string state = State();
    scene->UseRenderFile(path);
    EXPECT_EQ(State(), state);
}

TEST_F(PanelSceneTest, AFileOfVRayBringsItsRenderer) {
    scene->UseRenderFile(Write("a.exr", RenderOfVRay()));
    ASSERT_NE(host::App().renderer.get(), nullptr);
    EXPECT_EQ(host::App().renderer->ClassID(), VRAY_CLASS_ID);
    EXPECT_EQ(
        host::App().renderer->GetParamBlock(host::VRAY_BLOCK)->GetInt(host::VRAY_FRAME_BUFFER_ON),
        1);
    EXPECT_EQ(host::App().settings.render.width, 6);
    scene->UseRenderFile(Write("b.exr", RenderWithElements()));
    EXPECT_EQ(host::App().renderer.get(), nullptr);
}

TEST_F(PanelSceneTest, ABrokenImageLeavesTheSceneAsItWas) {
    scene->UseRenderFile(Write("a.exr", RenderWithElements()));
    const std::string state = State();
    const std::string broken = Write("broken.exr", RenderOfVRay().substr(0, 100));
    EXPECT_THAT(FaultText<InputError>([&] { scene->UseRenderFile(broken); }), StartsWith(broken));
    EXPECT_THAT(FaultText<InputError>([&] { scene->UseRenderFile(PathOf("none.exr")); }),
                HasSubstr("none.exr"));
    EXPECT_EQ(State(), state);
}

TEST_F(PanelSceneTest, ElementsOfTheSceneMeetTheirPasses) {
    scene->Open(Write("a.json", handWritten));
    scene->UseRenderFile(Write("a.exr", RenderWithElements()));
    ASSERT_EQ(host::App().elements[RS_Production].NumRenderElements(), 3);
    ASSERT_NE(Element("Env"), nullptr);
    EXPECT_EQ(Element("Env")->ClassID(), PassClassID(PassKind::Background))
        << "its class is the pass's when the scene tells none";
    EXPECT_FALSE(Element("Env")->IsEnabled());
    EXPECT_EQ(ElementSettingOf("DiffDir", "visible"), 0) << "of the file that names settings";
    EXPECT_EQ(ElementSettingOf("Env", "visible"), 1);
}

TEST_F(PanelSceneTest, TheDocumentGoesWhereTheEffectSays) {
    EXPECT_EQ(scene->DocumentPath(), "");
    scene->UseRenderFile(Write("a.b.exr", RenderWithElements()));
    EXPECT_EQ(scene->DocumentPath(), PathOf("a.b.psd"));
    SetInt("fileFormat", 1);
    EXPECT_EQ(scene->DocumentPath(), PathOf("a.b.psb"));
    SetText("filename", PathOf("own name.psd"));
    EXPECT_EQ(scene->DocumentPath(), PathOf("a.b.psb"));
    SetInt("matchRenderOutputFilename", 0);
    EXPECT_EQ(scene->DocumentPath(), PathOf("own name.psd"));
    SetInt("matchRenderOutputFilename", 1);
    scene->New();
    EXPECT_EQ(scene->DocumentPath(), "");
}

}  // namespace
}  // namespace command
