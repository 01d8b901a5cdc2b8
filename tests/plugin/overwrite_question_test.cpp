#include "plugin/overwrite_question.h"

#include "tests/effect/effect_fixture.h"
#include "tests/host/window_stage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the dialog was shown over and with.
HWND overwriteParent = nullptr;
std::string overwriteDialogText;

effect::OverwriteAnswer ShowDialog(HWND parent, const MSTR& text) {
    overwriteParent = parent;
    overwriteDialogText = host::ToUtf8(text);
    return {.overwrite = true, .askNoMore = true};
}

class OverwriteQuestion : public EffectTest {
  protected:
    ~OverwriteQuestion() override { plugin::UseOverwriteDialog(nullptr); }
    static effect::OverwriteAnswer Ask() { return plugin::AskOverwrite(MSTR(_M("a.psd ?"))); }

    WindowStage stage;
    const Box question = QuestionBoxWithTick("a.psd ?");
};

TEST_F(OverwriteQuestion, IsABoxOfTheHosts) {
    answer = IDYES;
    EXPECT_TRUE(Ask().overwrite);
    EXPECT_FALSE(Ask().askNoMore);
    tick = true;
    EXPECT_TRUE(Ask().askNoMore);
    answer = IDNO;
    EXPECT_FALSE(Ask().overwrite);
    EXPECT_THAT(TakeBoxes(), ElementsAre(question, question, question, question));
}

TEST_F(OverwriteQuestion, IsTheLibrarysDialogOverTheMainWindow) {
    Host().settings.mainWindow = stage.Add({_M("Main"), _M(""), nullptr, nullptr});
    plugin::UseOverwriteDialog(ShowDialog);
    const effect::OverwriteAnswer given = Ask();
    EXPECT_TRUE(given.overwrite);
    EXPECT_TRUE(given.askNoMore);
    EXPECT_EQ(overwriteParent, Host().settings.mainWindow);
    EXPECT_EQ(overwriteDialogText, "a.psd ?");
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    plugin::UseOverwriteDialog(nullptr);
    EXPECT_FALSE(Ask().overwrite);
    EXPECT_THAT(TakeBoxes(), ElementsAre(question));
}

TEST_F(OverwriteQuestion, WithoutAMainWindowItIsABox) {
    plugin::UseOverwriteDialog(ShowDialog);
    EXPECT_FALSE(Ask().overwrite);
    EXPECT_THAT(TakeBoxes(), ElementsAre(question));
}

}  // namespace
