#include "host/win32/edit_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <icolorman.h>

#include <string>

#include "host/win32/color_manager.h"
#include "tests/host/win32/control_stage.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class CustomEdit : public testing::Test {
  protected:
    ~CustomEdit() override {
        ReleaseICustEdit(edit);
        for (const int which : {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_GRAYTEXT})
            host::SetThemeColor(which, std::nullopt);
    }

    ControlStage stage;
    HWND window = stage.Add(CUSTEDITWINDOWCLASS, 5, L"Old", 0, {10, 10, 110, 34});
    HWND other = stage.Add(L"Button", 6, L"", 0, {10, 50, 110, 74});
    ICustEdit* edit = GetICustEdit(window);
};

TEST_F(CustomEdit, HasTheTextOfItsTemplate) {
    EXPECT_EQ(edit->GetTextLength(), 3);
    MCHAR text[8] = {};
    edit->GetText(text, 8);
    EXPECT_STREQ(text, L"Old");
}

TEST_F(CustomEdit, CutsItsTextToTheSize) {
    edit->SetText(L"0123456789");
    MCHAR text[8] = {L'x', L'x', L'x', L'x', L'x', L'x', L'x', 0};
    edit->GetText(text, 5);
    EXPECT_STREQ(text, L"0123");
    EXPECT_EQ(text[5], L'x');
    edit->GetText(text, 1);
    EXPECT_STREQ(text, L"");
    text[0] = L'x';
    edit->GetText(text, 0);
    EXPECT_EQ(text[0], L'x');
}

TEST_F(CustomEdit, SetTextTellsNothing) {
    for (const BOOL eachKey : {FALSE, TRUE}) {
        edit->SetNotifyOnEachKey(eachKey);
        edit->SetText(eachKey ? L"Second" : L"First");
        EXPECT_EQ(TextOf(window), eachKey ? L"Second" : L"First");
        edit->SetText(nullptr);
        EXPECT_EQ(TextOf(window), L"");
    }
    EXPECT_THAT(stage.Told(), IsEmpty());
    Type(window, L"x");
    EXPECT_THAT(stage.Told(), ElementsAre("updated 5", "changed 5"));
}

TEST_F(CustomEdit, TheSameTextLeavesTheCaretWhereItIs) {
    edit->SetText(L"Some text");
    SendMessageW(window, EM_SETSEL, 3, 5);
    edit->SetText(L"Some text");
    EXPECT_EQ(SendMessageW(window, EM_GETSEL, 0, 0), MAKELONG(3, 5));
}

TEST_F(CustomEdit, KeysAreToldOnlyWhenThatIsWanted) {
    SetFocus(window);
    Type(window, L"a");
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5"));
    edit->SetNotifyOnEachKey(TRUE);
    Type(window, L"bc");
    EXPECT_THAT(stage.Told(), ElementsAre("updated 5", "changed 5", "updated 5", "changed 5"));
    edit->SetNotifyOnEachKey(FALSE);
    Type(window, L"d");
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomEdit, OtherEditsOfTheParentTellAsEver) {
    HWND plain = stage.Add(L"Edit", 9);
    Type(plain, L"x");
    EXPECT_THAT(stage.Told(), ElementsAre("updated 9", "changed 9"));
}

TEST_F(CustomEdit, TheEnterKeyGivesTheText) {
    SetFocus(window);
    stage.Told();
    Key(window, WM_KEYDOWN, VK_RETURN);
    Type(window, L"\r");
    EXPECT_THAT(stage.Told(), ElementsAre("given 5"));
    EXPECT_EQ(TextOf(window), L"Old");
}

TEST_F(CustomEdit, AChangedTextIsGivenWhenTheFocusLeaves) {
    SetFocus(window);
    Type(window, L"x");
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "given 5", "left 5"));
}

TEST_F(CustomEdit, AnUnchangedTextIsNot) {
    SetFocus(window);
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "left 5"));
    SetFocus(window);
    Type(window, L"x");
    Type(window, L"\b");
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "left 5"));
}

TEST_F(CustomEdit, ATextIsGivenOnce) {
    SetFocus(window);
    Type(window, L"x");
    Key(window, WM_KEYDOWN, VK_RETURN);
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "given 5", "left 5"));
}

TEST_F(CustomEdit, WhatTheProgramSetIsUnchanged) {
    SetFocus(window);
    Type(window, L"x");
    edit->SetText(L"Program");
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "left 5"));
    SetFocus(window);
    Type(window, L"x");
    SetWindowTextW(window, L"Other");
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "left 5"));
}

TEST_F(CustomEdit, NothingIsGivenOnLeavingWhenThatIsOff) {
    edit->SetNotifyOnKillFocus(FALSE);
    SetFocus(window);
    Type(window, L"x");
    SetFocus(other);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "left 5"));
    SetFocus(window);
    Key(window, WM_KEYDOWN, VK_RETURN);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "given 5"));
}

TEST_F(CustomEdit, SelectsAllWithControlAndA) {
    Type(window, L"\x01");
    EXPECT_EQ(SendMessageW(window, EM_GETSEL, 0, 0), MAKELONG(0, 3));
    EXPECT_EQ(TextOf(window), L"Old");
}

TEST_F(CustomEdit, KeepsTheClipboardAndUndo) {
    SetFocus(window);
    SendMessageW(window, EM_SETSEL, 0, -1);
    SendMessageW(window, WM_CUT, 0, 0);
    EXPECT_EQ(TextOf(window), L"");
    SendMessageW(window, WM_PASTE, 0, 0);
    SendMessageW(window, WM_PASTE, 0, 0);
    EXPECT_EQ(TextOf(window), L"OldOld");
    SendMessageW(window, EM_UNDO, 0, 0);
    EXPECT_NE(TextOf(window), L"OldOld");
}

TEST_F(CustomEdit, TakesMoreThanItShows) {
    const std::wstring list(8192, L'7');
    edit->SetText(list.c_str());
    EXPECT_EQ(edit->GetTextLength(), 8192);
    SendMessageW(window, EM_SETSEL, 8192, 8192);
    Type(window, L",8");
    EXPECT_EQ(edit->GetTextLength(), 8194);
}

TEST_F(CustomEdit, ScrollsSidewaysAndHasAnEdge) {
    EXPECT_TRUE(GetWindowLongW(window, GWL_STYLE) & ES_AUTOHSCROLL);
    EXPECT_TRUE(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    // More than its width is typed into it.
    Type(window, L"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa");
    EXPECT_EQ(edit->GetTextLength(), 76);
    RECT client;
    GetClientRect(window, &client);
    EXPECT_LT(client.right, 100);
}

TEST_F(CustomEdit, WithABorderGetsNoSecondEdge) {
    HWND bordered = stage.Add(CUSTEDITWINDOWCLASS, 8, L"", WS_BORDER);
    EXPECT_FALSE(GetWindowLongW(bordered, GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
}

TEST_F(CustomEdit, OfSeveralLinesKeepsTheEnterKey) {
    HWND lines =
        stage.Add(CUSTEDITWINDOWCLASS, 8, L"", ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL);
    EXPECT_FALSE(GetWindowLongW(lines, GWL_STYLE) & ES_AUTOHSCROLL);
    Type(lines, L"a\rb");
    Key(lines, WM_KEYDOWN, VK_RETURN);
    EXPECT_THAT(stage.Told(), Not(Contains("given 8")));
    EXPECT_EQ(TextOf(lines), L"a\r\nb");
}

TEST_F(CustomEdit, IsEnabledAndDisabled) {
    edit->Enable(FALSE);
    EXPECT_FALSE(edit->IsEnabled());
    EXPECT_FALSE(IsWindowEnabled(window));
    edit->Enable();
    EXPECT_TRUE(edit->IsEnabled());
}

TEST_F(CustomEdit, AnswersAsEmptyWhenItsWindowHasGone) {
    DestroyWindow(window);
    MCHAR text[8] = {L'x', 0};
    edit->GetText(text, 8);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(edit->GetTextLength(), 0);
    edit->SetText(L"Text");
    EXPECT_EQ(edit->GetTextLength(), 0);
    EXPECT_EQ(edit->GetHwnd(), nullptr);
}

TEST_F(CustomEdit, MayBeDestroyedByWhatItTells) {
    SetFocus(window);
    stage.Told();
    stage.onNotice = [&](const std::string&) { DestroyWindow(window); };
    Key(window, WM_KEYDOWN, VK_RETURN);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(CustomEdit, DestroyedWithTheFocusTellsThatItLeft) {
    SetFocus(window);
    DestroyWindow(window);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 5", "left 5"));
}

TEST_F(CustomEdit, IsNotAControlOfAnotherClass) {
    EXPECT_EQ(GetICustEdit(stage.Add(L"Edit", 8)), nullptr);
    EXPECT_EQ(GetICustEdit(stage.Add(CUSTBUTTONWINDOWCLASS, 9)), nullptr);
    EXPECT_EQ(GetICustEdit(nullptr), nullptr);
    EXPECT_EQ(GetICustButton(window), nullptr);
    ReleaseICustEdit(nullptr);
    EXPECT_EQ(edit->GetHwnd(), window);
}

TEST_F(CustomEdit, HasTheColorsOfTheTheme) {
    host::SetThemeColor(COLOR_WINDOW, RGB(30, 31, 32));
    host::SetThemeColor(COLOR_WINDOWTEXT, RGB(200, 201, 202));
    host::SetThemeColor(COLOR_BTNFACE, RGB(60, 61, 62));
    host::SetThemeColor(COLOR_GRAYTEXT, RGB(90, 91, 92));
    HDC dc = GetDC(window);
    const auto background = [&](UINT message) {
        auto* const brush = reinterpret_cast<HBRUSH>(SendMessageW(
            stage.window, message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
        LOGBRUSH description{};
        GetObjectW(brush, sizeof description, &description);
        EXPECT_EQ(GetBkColor(dc), description.lbColor);
        return description.lbColor;
    };
    EXPECT_EQ(background(WM_CTLCOLOREDIT), RGB(30, 31, 32));
    EXPECT_EQ(GetTextColor(dc), RGB(200, 201, 202));
    SendMessageW(window, EM_SETREADONLY, TRUE, 0);
    EXPECT_EQ(background(WM_CTLCOLORSTATIC), RGB(60, 61, 62));
    EXPECT_EQ(GetTextColor(dc), RGB(200, 201, 202));
    edit->Enable(FALSE);
    EXPECT_EQ(background(WM_CTLCOLORSTATIC), RGB(60, 61, 62));
    EXPECT_EQ(GetTextColor(dc), RGB(90, 91, 92));
    ReleaseDC(window, dc);
}

TEST_F(CustomEdit, DisabledLooksDisabled) {
    host::SetThemeColor(COLOR_WINDOW, RGB(30, 31, 32));
    host::SetThemeColor(COLOR_BTNFACE, RGB(60, 61, 62));
    EXPECT_EQ(PictureOf(window).At(80, 10), RGB(30, 31, 32));
    edit->Enable(FALSE);
    EXPECT_EQ(PictureOf(window).At(80, 10), RGB(60, 61, 62));
}

}  // namespace
