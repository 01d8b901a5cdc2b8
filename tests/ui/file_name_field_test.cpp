#include "ui/file_name_field.h"

#include "tests/effect/effect_fixture.h"
#include "tests/host/native_path.h"
#include "tests/plugin/recording_panel.h"

namespace {

using testing::IsEmpty;

class FileNameField : public EffectTest {
  protected:
    // In a font whose units are one pixel wide.
    ui::FileNameField Show(int width = 1000) {
        return ui::ShowFileName(*effect, width, [](const MSTR& text) { return text.Length(); });
    }
    std::string Shown(int width = 1000) { return host::ToUtf8(Show(width).text); }
    std::string Filename() { return host::ToUtf8(effect->pblock->GetStr("filename"_param)); }
    void SetOutput(const std::string& name) { Render().output.SetName(host::FromUtf8(name)); }
};

TEST_F(FileNameField, ADerivedNameCanNotBeTyped) {
    SetOutput("/renders/shot.exr");
    EXPECT_FALSE(Show().enabled);
    EXPECT_EQ(Shown(), NativePath("/renders/shot.psd"));
    Set("fileFormat"_param, 1);
    EXPECT_EQ(Shown(), NativePath("/renders/shot.psb"));
}

TEST_F(FileNameField, ADerivedNameHasNoFrameNumber) {
    SetOutput("/renders/shot.exr");
    Render().timeType = REND_TIMERANGE;
    EXPECT_EQ(Shown(), NativePath("/renders/shot.psd"));
}

TEST_F(FileNameField, ADerivedNameIsShownAsTheSceneKeepsIt) {
    Host().paths.keepsRelativePaths = true;
    Render().output.SetName(Text(File("scenes") / "renders" / "shot.exr"));
    EXPECT_EQ(Show().text, Text(std::filesystem::path("renders") / "shot.psd"));
}

TEST_F(FileNameField, WithoutANameTheUserIsToldWhatToDo) {
    for (const char* output : {"", "/renders/", "shot", "/renders/shot"}) {
        SetOutput(output);
        EXPECT_FALSE(Show().enabled) << output;
        EXPECT_EQ(Shown(5), " Please assign a filename in the Render Setup dialog.") << output;
    }
}

TEST_F(FileNameField, ALongDerivedNameIsCutAndTheEffectRemembersHow) {
    const std::string name = NativePath("/renders/film/shot.psd");
    SetOutput("/renders/film/shot.exr");
    const auto length = static_cast<int>(name.size());
    EXPECT_EQ(Shown(length), name);
    const std::string cut = name.substr(0, name.size() - 13) + "..." + name.substr(name.size() - 9);
    EXPECT_EQ(Shown(length - 1), cut);
    EXPECT_EQ(host::ToUtf8(effect->shortFilename), cut);
    SetOutput("");
    Show();
    EXPECT_TRUE(effect->shortFilename.isNull());
}

TEST_F(FileNameField, ATypedNameIsShownAsItStands) {
    SetFilename("/renders/film/a very long name of a shot.psd");
    EXPECT_TRUE(Show(5).enabled);
    EXPECT_EQ(Shown(5), NativePath("/renders/film/a very long name of a shot.psd"));
    effect->pblock->SetValue("matchRenderOutputFilename"_param, 0, TRUE);
    EXPECT_FALSE(Show().enabled);
}

TEST_F(FileNameField, ATypedNameThatWasNeverSetIsEmpty) {
    Set("matchRenderOutputFilename"_param, FALSE);
    EXPECT_TRUE(Show().enabled);
    EXPECT_EQ(Shown(), "");
}

TEST_F(FileNameField, TheFormatIsChosenForADerivedNameOnly) {
    EXPECT_TRUE(ui::IsFileFormatEnabled(*effect));
    Set("matchRenderOutputFilename"_param, FALSE);
    EXPECT_FALSE(ui::IsFileFormatEnabled(*effect));
}

TEST_F(FileNameField, WhatIsTypedBecomesTheNameAndNobodyIsTold) {
    Set("matchRenderOutputFilename"_param, FALSE);
    RecordingPanel panel;
    ui::TakeTypedFileName(*effect, _M("/renders/typed.psb"));
    EXPECT_EQ(Filename(), NativePath("/renders/typed.psb"));
    EXPECT_THAT(panel.Take(), IsEmpty());
    SetText("filename"_param, _M("/renders/later.psb"));
    EXPECT_THAT(panel.Take(), testing::ElementsAre("file name", "format")) << "told again";
}

TEST_F(FileNameField, NothingIsTypedWhileTheNameIsDerived) {
    SetFilename("/renders/before.psd");
    Set("matchRenderOutputFilename"_param, TRUE);
    ui::TakeTypedFileName(*effect, _M("/renders/typed.psd"));
    EXPECT_EQ(Filename(), NativePath("/renders/before.psd"));
}

TEST_F(FileNameField, AnEmptyTextAsksForADefaultOnlyWhereANameWasSet) {
    Set("matchRenderOutputFilename"_param, FALSE);
    ui::TakeTypedFileName(*effect, MSTR());
    EXPECT_EQ(Filename(), "");
    SetText("filename"_param, _M("/renders/set.psd"));
    ui::TakeTypedFileName(*effect, MSTR());
    EXPECT_EQ(Filename(), host::ToUtf8(Text(File("output") / "Untitled.psd")));
}

TEST_F(FileNameField, UpTo260UnitsAreTaken) {
    Set("matchRenderOutputFilename"_param, FALSE);
    // Too long for a file's name, so that it stays as it is typed.
    const std::string name(300, 'x');
    ui::TakeTypedFileName(*effect, host::FromUtf8(name));
    EXPECT_EQ(Filename(), std::string(260, 'x'));
    ui::TakeTypedFileName(*effect, host::FromUtf8(name.substr(0, 260)));
    EXPECT_EQ(Filename(), std::string(260, 'x'));
    ui::TakeTypedFileName(*effect, host::FromUtf8(name.substr(0, 259)));
    EXPECT_EQ(Filename(), std::string(259, 'x'));
}

TEST_F(FileNameField, AnEffectWithoutItsBlockShowsNothing) {
    effect->DeleteReference(0);
    EXPECT_FALSE(Show().enabled);
    EXPECT_EQ(Shown(), "");
    EXPECT_FALSE(ui::IsFileFormatEnabled(*effect));
    ui::TakeTypedFileName(*effect, _M("/renders/typed.psd"));
}

}  // namespace
