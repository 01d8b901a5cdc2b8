#include "command/win32/panel_render.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iparamb2.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "command/native_path.h"
#include "command/session.h"
#include "command/win32/panel_scene.h"
#include "command/win32/program_folder.h"
#include "host/application.h"
#include "host/text.h"
#include "tests/command/test_folder.h"
#include "tests/command/win32/panel_test_files.h"

namespace command {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(FirstLines, AreTheWholeOfAShortText) {
    EXPECT_EQ(FirstLines("", 2), "");
    EXPECT_EQ(FirstLines("a\nb\n", 2), "a\nb\n");
    EXPECT_EQ(FirstLines("a\nb", 2), "a\nb");
    EXPECT_EQ(FirstLines("a\nb\nc\n", 2), "a\nb\n... and 1 more lines\n");
    EXPECT_EQ(FirstLines("a\nb\nc\nd", 2), "a\nb\n... and 2 more lines\n");
}

class PanelRenderTest : public FolderTest {
  protected:
    PanelRenderTest() {
        host::ResetApplication();
        scene.emplace(ProgramFolder() / "veltrane.dlv");
    }
    ~PanelRenderTest() override {
        render.reset();
        scene.reset();
        host::ResetApplication();
    }

    void SetInt(std::string_view name, int value) {
        scene->GetEffect().GetParamBlock(0)->SetValue(Session::IdOf(name), 0, value);
    }
    void SetName(const std::string& path) {
        SetInt("matchRenderOutputFilename", 0);
        scene->GetEffect().GetParamBlock(0)->SetValue(Session::IdOf("filename"), 0,
                                                      host::FromUtf8(path).data());
    }
    void Start() {
        render.emplace(PanelRenderFiles{BuiltProgram("veltrane.exe"), PanelScene::RenderOutput(),
                                        scene->DocumentPath(), "my scene.json"});
    }
    PanelRender::Outcome Render() {
        Start();
        while (render->Read())
            Sleep(10);
        return render->End();
    }
    // The command alone, with these words behind the input; how it ended.
    DWORD Save(const std::string& input, const std::vector<std::string>& more) {
        std::vector<std::string> words{BuiltProgram("veltrane.exe"), "save", input};
        words.insert(words.end(), more.begin(), more.end());
        ChildProcess child(words);
        while (child.Read())
            Sleep(10);
        told = child.Errors();
        return child.ExitCode();
    }
    std::vector<std::string> FilesBesides(const std::vector<std::string>& known) const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            const std::string name = Utf8(entry.path().filename());
            if (std::find(known.begin(), known.end(), name) == known.end()) names.push_back(name);
        }
        return names;
    }

    std::optional<PanelScene> scene;
    std::optional<PanelRender> render;
    std::string told;
};

TEST_F(PanelRenderTest, TheDocumentIsTheOneThatTheCommandSaves) {
    std::filesystem::create_directories(folder / Native("\xd0\xba\xd0\xb0\xd0\xb4\xd1\x80 1"));
    const std::string name = "\xd0\xba\xd0\xb0\xd0\xb4\xd1\x80 1/still";
    for (const std::string& bytes : {RenderWithElements(), RenderOfVRay()}) {
        const std::string input = Write(name + ".exr", bytes);
        ASSERT_EQ(Save(input, {"-o", PathOf("wanted.psd")}), 0U) << told;
        ASSERT_EQ(Save(input, {"-o", PathOf("wanted.psb")}), 0U) << told;
        scene->New();
        scene->UseRenderFile(input);
        const PanelRender::Outcome outcome = Render();
        EXPECT_TRUE(outcome.saved) << outcome.told;
        EXPECT_EQ(outcome.told, "");
        EXPECT_THAT(outcome.said, StartsWith("Saved " + scene->DocumentPath() + " ("));
        EXPECT_EQ(Bytes(name + ".psd"), Bytes("wanted.psd"));
        SetInt("fileFormat", 1);
        EXPECT_TRUE(Render().saved);
        EXPECT_EQ(Bytes(name + ".psb"), Bytes("wanted.psb"));
        SetName(PathOf("own.psd"));
        EXPECT_TRUE(Render().saved);
        EXPECT_EQ(Bytes("own.psd"), Bytes("wanted.psd"));
    }
}

TEST_F(PanelRenderTest, AHandWrittenSceneRendersAsTheCommandDoes) {
    const std::string path = Write("a.json", R"({"veltrane": 1,
        "elements": [{"name": "Env"}, {"name": "DiffDir"}, {"name": "VRayReflection"},
                     {"name": "VRayRawLighting"}],
        "effect": {"parameters": {"bitDepth": 8}, "elements": {"*": {"blendingMode": 3}}}})");
    for (const std::string& bytes : {RenderWithElements(), RenderOfVRay()}) {
        const std::string input = Write("still.exr", bytes);
        ASSERT_EQ(Save(input, {"--scene", path, "-o", PathOf("wanted.psd")}), 0U) << told;
        scene->Open(path);
        scene->UseRenderFile(input);
        const PanelRender::Outcome outcome = Render();
        EXPECT_TRUE(outcome.saved) << outcome.told;
        EXPECT_EQ(Bytes("still.psd"), Bytes("wanted.psd"));
    }
}

TEST_F(PanelRenderTest, AFaultLeavesTheOldDocumentAndNamesTheUsersFiles) {
    const std::string input = Write("a.exr", RenderWithElements());
    Write("a.psd", "old");
    scene->UseRenderFile(input);
    Write("a.exr", RenderWithElements().substr(0, 300));
    const PanelRender::Outcome outcome = Render();
    EXPECT_FALSE(outcome.saved);
    EXPECT_THAT(outcome.told, HasSubstr(input));
    EXPECT_THAT(outcome.told, Not(HasSubstr("veltrane-")));
    EXPECT_EQ(Bytes("a.psd"), "old");
    render.reset();
    EXPECT_THAT(FilesBesides({"a.exr", "a.psd"}), testing::IsEmpty());
}

TEST_F(PanelRenderTest, AFolderThatIsNotThereIsTold) {
    scene->UseRenderFile(Write("a.exr", RenderWithElements()));
    SetName(PathOf("none/a.psd"));
    const PanelRender::Outcome outcome = Render();
    EXPECT_FALSE(outcome.saved);
    EXPECT_THAT(outcome.told, HasSubstr(scene->DocumentPath()));
}

TEST_F(PanelRenderTest, AStoppedOneLeavesTheOldDocumentAndNothingElse) {
    scene->UseRenderFile(Write("a.exr", RenderWithElements()));
    Write("a.psd", "old");
    Start();
    render.reset();
    EXPECT_EQ(Bytes("a.psd"), "old");
    EXPECT_THAT(FilesBesides({"a.exr", "a.psd"}), testing::IsEmpty());
}

TEST_F(PanelRenderTest, ADocumentThatCannotBeReplacedIsKeptBesideIt) {
    scene->UseRenderFile(Write("a.exr", RenderWithElements()));
    Write("a.psd", "old");
    HANDLE held = CreateFileW(Native(PathOf("a.psd")).c_str(), GENERIC_READ, FILE_SHARE_READ,
                              nullptr, OPEN_EXISTING, 0, nullptr);
    const PanelRender::Outcome outcome = Render();
    CloseHandle(held);
    EXPECT_FALSE(outcome.saved);
    EXPECT_THAT(outcome.told, StartsWith(PathOf("a.psd") + ": cannot be replaced ("));
    EXPECT_EQ(Bytes("a.psd"), "old");
    const auto left = FilesBesides({"a.exr", "a.psd"});
    ASSERT_EQ(left.size(), 1U);
    EXPECT_THAT(outcome.told, HasSubstr(left[0]));
}

}  // namespace
}  // namespace command
