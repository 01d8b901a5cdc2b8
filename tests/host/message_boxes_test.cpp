#include "host/message_boxes.h"

#include <gtest/gtest.h>

#include "host/application.h"

namespace {

class MessageBoxesTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
};

TEST_F(MessageBoxesTest, ABoxIsRecordedAndGetsItsSafeAnswer) {
    EXPECT_EQ(MaxMsgBox(nullptr, _M("Saved."), _M("veltrane"), MB_OK | MB_ICONEXCLAMATION), IDOK);
    DWORD ticked = 5;
    EXPECT_EQ(MaxMsgBox(nullptr, _M("Overwrite?"), _M("veltrane"), MB_YESNO | MB_ICONQUESTION,
                        MAX_MB_DONTSHOWAGAIN, &ticked),
              IDNO);
    EXPECT_EQ(ticked, 0U);
    const auto& shown = host::App().boxes.Shown();
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].text, MSTR(_M("Saved.")));
    EXPECT_EQ(shown[0].caption, MSTR(_M("veltrane")));
    EXPECT_EQ(shown[0].type, MB_OK | MB_ICONEXCLAMATION);
    EXPECT_EQ(shown[0].answer.button, IDOK);
    EXPECT_EQ(shown[1].exType, MAX_MB_DONTSHOWAGAIN);
    EXPECT_EQ(shown[1].answer.button, IDNO);
}

TEST_F(MessageBoxesTest, TheResponderAnswersAndTicks) {
    host::App().boxes.SetResponder([](const host::BoxRecord& box) {
        EXPECT_EQ(box.answer.button, IDNO) << "the safe answer is filled in";
        return host::BoxAnswer{IDYES, true};
    });
    DWORD ticked = 0;
    EXPECT_EQ(MaxMsgBox(nullptr, _M("?"), _M(""), MB_YESNO, MAX_MB_DONTSHOWAGAIN, &ticked), IDYES);
    EXPECT_EQ(ticked, MAX_DONTSHOWAGAIN);
}

TEST_F(MessageBoxesTest, ATickThatWasNotOfferedIsNotReturned) {
    host::App().boxes.SetResponder([](const host::BoxRecord&) {
        return host::BoxAnswer{IDYES, true};
    });
    DWORD ticked = 0;
    MaxMsgBox(nullptr, _M("?"), _M(""), MB_YESNO, 0, &ticked);
    EXPECT_EQ(ticked, 0U);
}

}  // namespace
