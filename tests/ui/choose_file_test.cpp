#include "ui/choose_file.h"

#include <IPathConfigMgr.h>

#include <optional>

#include "tests/effect/effect_fixture.h"
#include "tests/host/native_path.h"
#include "tests/plugin/recording_panel.h"

namespace {

class ChooseFile : public EffectTest {
  protected:
    // The user chooses the file; an empty name cancels.
    host::FileDialog Ask(const std::filesystem::path& chosen) {
        std::optional<host::FileDialog> asked;
        Host().fileDialogs = [&](const host::FileDialog& dialog) -> std::optional<MSTR> {
            EXPECT_FALSE(asked) << "asked twice";
            asked = dialog;
            if (whileAsked) whileAsked();
            return chosen.empty() ? std::nullopt : std::optional(Text(chosen));
        };
        ui::ChooseFile(*effect, parent);
        Host().fileDialogs = {};
        EXPECT_TRUE(asked);
        return asked.value_or(host::FileDialog{});
    }
    std::string Filename() { return host::ToUtf8(effect->pblock->GetStr("filename"_param)); }
    bool IsDerived() { return effect->pblock->GetInt("matchRenderOutputFilename"_param) != 0; }

    int window = 0;
    HWND parent = reinterpret_cast<HWND>(&window);
    std::function<void()> whileAsked;
};

TEST_F(ChooseFile, TheChosenFileIsTheNameAndNoLongerDerived) {
    Ask("/renders/chosen.psb");
    EXPECT_EQ(Filename(), NativePath("/renders/chosen.psb"));
    EXPECT_FALSE(IsDerived());
}

TEST_F(ChooseFile, ThePanelIsToldOfTheNameAndThenThatItIsTheUsers) {
    RecordingPanel panel;
    Ask("/renders/chosen.psb");
    EXPECT_THAT(panel.Take(), testing::ElementsAre("file name", "format", "file name", "format"));
}

TEST_F(ChooseFile, CancellingChangesNothing) {
    RecordingPanel panel;
    Ask({});
    EXPECT_EQ(Filename(), "");
    EXPECT_TRUE(IsDerived());
    EXPECT_THAT(panel.Take(), testing::IsEmpty());
}

TEST_F(ChooseFile, TheDialogSaysWhatIsSavedAndInWhichFormats) {
    const host::FileDialog asked = Ask({});
    EXPECT_EQ(asked.title, MSTR(_M("Save Photoshop\u00AE Document As")));
    EXPECT_EQ(asked.parent, parent);
    ASSERT_EQ(asked.filters.Count(), 2);
    EXPECT_EQ(asked.filters.Text(0), MSTR(_M("Photoshop Document (*.PSD)")));
    EXPECT_EQ(asked.filters.Pattern(0), MSTR(_M("*.psd")));
    EXPECT_EQ(asked.filters.Text(1), MSTR(_M("Large Document Format (*.PSB)")));
    EXPECT_EQ(asked.filters.Pattern(1), MSTR(_M("*.psb")));
}

TEST_F(ChooseFile, TheDialogStartsAtThePresentFile) {
    SetFilename("/renders/film/../shot.psd");
    const host::FileDialog asked = Ask({});
    EXPECT_EQ(asked.fileName, host::FromUtf8(NativePath("/renders/shot.psd")));
    EXPECT_EQ(asked.folder, host::FromUtf8(NativePath("/renders")));
}

TEST_F(ChooseFile, WithoutAFileTheDialogStartsAtOneNamedAfterTheScene) {
    Host().settings.sceneFileName = host::FromUtf8("shot 12.max");
    const host::FileDialog asked = Ask({});
    EXPECT_EQ(asked.fileName, Text(File("output") / "shot 12.psd"));
    EXPECT_EQ(asked.folder, Text(File("output")));
}

TEST_F(ChooseFile, ANameWithoutAFolderStartsInTheRenderOutputFolder) {
    // Names no file, so it stays as it is.
    SetFilename(std::string(300, 'x'));
    EXPECT_EQ(Ask({}).folder, Text(File("output")));
}

TEST_F(ChooseFile, TheFileIsKeptAsTheSceneKeepsPaths) {
    Host().paths.keepsRelativePaths = true;
    Host().paths.SetDir(APP_SCENE_DIR, Text(std::filesystem::current_path()));
    Ask(std::filesystem::current_path() / "renders" / "shot.psd");
    EXPECT_EQ(Filename(), (std::filesystem::current_path() / "renders" / "shot.psd").string());
}

TEST_F(ChooseFile, AnEffectThatIsDeletedMeanwhileIsLeftAlone) {
    whileAsked = [] { Host().effects.clear(); };
    Ask("/renders/chosen.psd");
    EXPECT_TRUE(Host().effects.empty());
}

}  // namespace
