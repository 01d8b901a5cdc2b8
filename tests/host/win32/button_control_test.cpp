#include "host/win32/button_control.h"

#include <windows.h>

#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <icolorman.h>

#include <string>

#include "host/win32/color_manager.h"
#include "host/win32/ui_scale.h"
#include "tests/host/win32/control_stage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CustomButton : public testing::Test {
  protected:
    ~CustomButton() override {
        ReleaseICustButton(button);
        host::SetUIScaleFactor(std::nullopt);
        for (const int which : {COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_HIGHLIGHT})
            host::SetThemeColor(which, std::nullopt);
    }
    int Check() const { return static_cast<int>(SendMessageW(window, BM_GETCHECK, 0, 0)); }
    bool Pushed() const { return (SendMessageW(window, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0; }

    ControlStage stage;
    HWND window = stage.Add(CUSTBUTTONWINDOWCLASS, 7, L"Files...");
    ICustButton* button = GetICustButton(window);
};

TEST_F(CustomButton, IsClickedWhenItIsPressedAndLetGo) {
    Mouse(window, WM_LBUTTONDOWN);
    EXPECT_TRUE(Pushed());
    EXPECT_EQ(GetCapture(), window);
    EXPECT_EQ(GetFocus(), window);
    EXPECT_THAT(stage.Told(), IsEmpty());
    Mouse(window, WM_LBUTTONUP);
    EXPECT_FALSE(Pushed());
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7"));
}

TEST_F(CustomButton, TwoClicksInARowAreTwo) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        Mouse(window, message);
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7", "clicked 7"));
}

TEST_F(CustomButton, LetGoOutsideIsNoClick) {
    Mouse(window, WM_LBUTTONDOWN);
    Mouse(window, WM_MOUSEMOVE, 200, 5);
    EXPECT_FALSE(Pushed());
    Mouse(window, WM_LBUTTONUP, 200, 5);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, DraggedOutAndBackIsAClick) {
    Mouse(window, WM_LBUTTONDOWN);
    Mouse(window, WM_MOUSEMOVE, -1, 5);
    EXPECT_FALSE(Pushed());
    Mouse(window, WM_MOUSEMOVE, 0, 0);
    EXPECT_TRUE(Pushed());
    Mouse(window, WM_LBUTTONUP, 0, 0);
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7"));
}

TEST_F(CustomButton, LetGoWithoutBeingPressedIsNoClick) {
    Mouse(window, WM_LBUTTONUP);
    Mouse(window, WM_MOUSEMOVE);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, WhoTakesTheMouseAwayCancels) {
    Mouse(window, WM_LBUTTONDOWN);
    SetCapture(stage.window);
    EXPECT_FALSE(Pushed());
    Mouse(window, WM_LBUTTONUP);
    ReleaseCapture();
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, WhatTakesTheFocusAwayCancels) {
    Mouse(window, WM_LBUTTONDOWN);
    SetFocus(stage.window);
    EXPECT_FALSE(Pushed());
    EXPECT_EQ(GetCapture(), nullptr);
    Mouse(window, WM_LBUTTONUP);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, DisablingCancels) {
    Mouse(window, WM_LBUTTONDOWN);
    button->Enable(FALSE);
    EXPECT_FALSE(Pushed());
    EXPECT_EQ(GetCapture(), nullptr);
    button->Enable(TRUE);
    Mouse(window, WM_LBUTTONUP);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, DisabledHearsNothing) {
    button->SetRightClickNotify(TRUE);
    button->Enable(FALSE);
    EXPECT_FALSE(button->IsEnabled());
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_RBUTTONDOWN, WM_RBUTTONUP})
        Mouse(window, message);
    Key(window, WM_KEYDOWN, VK_SPACE);
    Key(window, WM_KEYUP, VK_SPACE);
    SendMessageW(window, BM_CLICK, 0, 0);
    SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
    EXPECT_THAT(stage.Told(), IsEmpty());
    button->Enable();
    EXPECT_TRUE(button->IsEnabled());
    SendMessageW(window, BM_CLICK, 0, 0);
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7"));
}

TEST_F(CustomButton, TheSpaceKeyPresses) {
    SetFocus(window);
    Key(window, WM_KEYDOWN, VK_SPACE);
    EXPECT_TRUE(Pushed());
    SendMessageW(window, WM_KEYDOWN, VK_SPACE, 1 << 30 | 1);
    EXPECT_THAT(stage.Told(), IsEmpty());
    Key(window, WM_KEYUP, VK_SPACE);
    EXPECT_FALSE(Pushed());
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7"));
}

TEST_F(CustomButton, TheEnterKeyPressesAtOnce) {
    SetFocus(window);
    EXPECT_TRUE(SendMessageW(window, WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTMESSAGE);
    Key(window, WM_KEYDOWN, VK_RETURN);
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7"));
    // Held on, and let go.
    SendMessageW(window, WM_KEYDOWN, VK_RETURN, 1 << 30 | 1);
    Key(window, WM_KEYUP, VK_RETURN);
    EXPECT_THAT(stage.Told(), IsEmpty());
    EnableWindow(window, FALSE);
    Key(window, WM_KEYDOWN, VK_RETURN);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, AnotherKeyCancelsTheSpaceKey) {
    SetFocus(window);
    Key(window, WM_KEYDOWN, VK_SPACE);
    Key(window, WM_KEYDOWN, VK_ESCAPE);
    EXPECT_FALSE(Pushed());
    Key(window, WM_KEYUP, VK_SPACE);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, OtherKeysDoNothing) {
    SetFocus(window);
    for (const WPARAM key : {VK_ESCAPE, VK_F5}) {
        Key(window, WM_KEYDOWN, key);
        Key(window, WM_KEYUP, key);
    }
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, PushedByMouseItDoesNotStayIn) {
    SendMessageW(window, BM_CLICK, 0, 0);
    EXPECT_FALSE(button->IsChecked());
    EXPECT_EQ(Check(), BST_UNCHECKED);
}

TEST_F(CustomButton, OfCheckTypeChangesItsStateBeforeItTells) {
    button->SetType(CBT_CHECK);
    std::string states;
    stage.onNotice = [&](const std::string&) { states += button->IsChecked() ? "1" : "0"; };
    Mouse(window, WM_LBUTTONDOWN);
    EXPECT_FALSE(button->IsChecked());
    Mouse(window, WM_LBUTTONUP);
    EXPECT_EQ(Check(), BST_CHECKED);
    Key(window, WM_KEYDOWN, VK_SPACE);
    Key(window, WM_KEYUP, VK_SPACE);
    SendMessageW(window, BM_CLICK, 0, 0);
    EXPECT_EQ(states, "101");
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7", "clicked 7", "clicked 7"));
}

TEST_F(CustomButton, ACancelledClickLeavesTheState) {
    button->SetType(CBT_CHECK);
    Mouse(window, WM_LBUTTONDOWN);
    Mouse(window, WM_LBUTTONUP, 500, 500);
    EXPECT_FALSE(button->IsChecked());
}

TEST_F(CustomButton, TheStateIsSetWithoutANotification) {
    for (const CustButType type : {CBT_PUSH, CBT_CHECK}) {
        button->SetType(type);
        button->SetCheck(TRUE);
        EXPECT_TRUE(button->IsChecked());
        EXPECT_EQ(Check(), BST_CHECKED);
        EXPECT_EQ(SendMessageW(window, BM_GETSTATE, 0, 0) & BST_CHECKED, BST_CHECKED);
        SendMessageW(window, BM_SETCHECK, BST_UNCHECKED, 0);
        EXPECT_FALSE(button->IsChecked());
        SendMessageW(window, BM_SETCHECK, BST_CHECKED, 0);
        EXPECT_TRUE(button->IsChecked());
        button->SetCheck(FALSE);
        EXPECT_EQ(Check(), BST_UNCHECKED);
    }
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, ARightClickIsToldWhenThatIsWanted) {
    button->SetRightClickNotify(TRUE);
    Mouse(window, WM_RBUTTONDOWN);
    EXPECT_FALSE(Pushed());
    EXPECT_THAT(stage.Told(), IsEmpty());
    Mouse(window, WM_RBUTTONUP);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(stage.Told(), ElementsAre("right-clicked 7"));
    SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
    EXPECT_THAT(stage.Told(), ElementsAre("right-clicked 7"));
}

TEST_F(CustomButton, ARightClickThatIsLetGoOutsideIsNone) {
    button->SetRightClickNotify(TRUE);
    Mouse(window, WM_RBUTTONDOWN);
    Mouse(window, WM_RBUTTONUP, 5, 100);
    Mouse(window, WM_RBUTTONUP);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(CustomButton, RightClicksAreTheParentsAtFirst) {
    for (const BOOL asked : {FALSE, TRUE}) {
        button->SetRightClickNotify(asked);
        button->SetRightClickNotify(FALSE);
        Mouse(window, WM_RBUTTONDOWN);
        Mouse(window, WM_RBUTTONUP);
        EXPECT_THAT(stage.Told(), IsEmpty());
    }
}

TEST_F(CustomButton, MayBeDestroyedByWhatItTells) {
    stage.onNotice = [&](const std::string&) { DestroyWindow(window); };
    Mouse(window, WM_LBUTTONDOWN);
    Mouse(window, WM_LBUTTONUP);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_THAT(stage.Told(), ElementsAre("clicked 7"));
}

TEST_F(CustomButton, AnswersAsEmptyWhenItsWindowHasGone) {
    DestroyWindow(window);
    EXPECT_EQ(button->GetHwnd(), nullptr);
    EXPECT_FALSE(button->IsEnabled());
    button->SetText(L"Text");
    button->SetCheck(TRUE);
    button->Enable(TRUE);
    button->SetTooltip(true, L"Text");
    EXPECT_FALSE(button->IsEnabled());
}

TEST_F(CustomButton, KeepsItsTextUnderAPicture) {
    EXPECT_EQ(TextOf(window), L"Files...");
    button->SetIconByName(MSTR(_M("Common/Folder")), 16, 16);
    EXPECT_EQ(TextOf(window), L"Files...");
    SetWindowTextW(window, L"Group");
    EXPECT_EQ(TextOf(window), L"Group");
    button->SetText(nullptr);
    EXPECT_EQ(TextOf(window), L"");
}

TEST_F(CustomButton, HasTheFontThatItWasGiven) {
    EXPECT_EQ(SendMessageW(window, WM_GETFONT, 0, 0), 0);
    HFONT font = CreateFontW(-30, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, L"Arial");
    const Picture before = PictureOf(window);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EXPECT_EQ(SendMessageW(window, WM_GETFONT, 0, 0), reinterpret_cast<LRESULT>(font));
    EXPECT_NE(PictureOf(window).pixels, before.pixels);
    DeleteObject(font);
}

TEST_F(CustomButton, IsAButtonToADialog) {
    EXPECT_EQ(SendMessageW(window, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
    SendMessageW(window, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_EQ(SendMessageW(window, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
    SendMessageW(window, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    EXPECT_EQ(SendMessageW(window, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
    button->SetType(CBT_CHECK);
    EXPECT_EQ(SendMessageW(window, WM_GETDLGCODE, 0, 0), DLGC_BUTTON);
}

TEST_F(CustomButton, IsNotAControlOfAnotherClass) {
    EXPECT_EQ(GetICustButton(stage.Add(L"Button", 8)), nullptr);
    EXPECT_EQ(GetICustButton(stage.Add(CUSTEDITWINDOWCLASS, 9)), nullptr);
    EXPECT_EQ(GetICustButton(nullptr), nullptr);
    EXPECT_EQ(GetICustEdit(window), nullptr);
    ReleaseICustButton(nullptr);
    EXPECT_EQ(button->GetHwnd(), window);
}

// How the states look is told apart by the pictures, in a theme whose colours can be counted.
class CustomButtonLook : public CustomButton {
  protected:
    CustomButtonLook() {
        host::SetThemeColor(COLOR_BTNFACE, FACE);
        host::SetThemeColor(COLOR_BTNSHADOW, FRAME);
        host::SetThemeColor(COLOR_HIGHLIGHT, LIGHT);
        button->SetText(L"");
    }

    static constexpr COLORREF FACE = RGB(100, 100, 100);
    static constexpr COLORREF FRAME = RGB(50, 50, 50);
    static constexpr COLORREF LIGHT = RGB(0, 100, 200);
};

TEST_F(CustomButtonLook, HasAFrameAsWideAsTheScaleSays) {
    for (const auto& [scale, width] :
         {std::pair(1.0F, 1), std::pair(1.5F, 2), std::pair(2.0F, 2)}) {
        host::SetUIScaleFactor(scale);
        const Picture picture = PictureOf(window);
        EXPECT_EQ(picture.At(width - 1, 12), FRAME);
        EXPECT_EQ(picture.At(width, 12), FACE);
        EXPECT_EQ(picture.At(40, 12), FACE);
        EXPECT_EQ(picture.At(79, 23), FRAME);
    }
}

TEST_F(CustomButtonLook, EachStateHasAnotherFace) {
    // Of 100 parts the highlight has 18 under the pointer, 32 checked, 40 both, 45 pressed.
    Mouse(window, WM_MOUSEMOVE);
    EXPECT_EQ(PictureOf(window).At(40, 12), RGB(82, 100, 118));
    Mouse(window, WM_LBUTTONDOWN);
    EXPECT_EQ(PictureOf(window).At(40, 12), RGB(55, 100, 145));
    Mouse(window, WM_LBUTTONUP);
    button->SetCheck(TRUE);
    EXPECT_EQ(PictureOf(window).At(40, 12), RGB(60, 100, 140));
    SendMessageW(window, WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(PictureOf(window).At(40, 12), RGB(68, 100, 132));
    EXPECT_EQ(PictureOf(window).At(0, 12), LIGHT);
    button->SetCheck(FALSE);
    EXPECT_EQ(PictureOf(window).At(40, 12), FACE);
    SendMessageW(window, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(PictureOf(window).At(40, 12), RGB(55, 100, 145));
}

TEST_F(CustomButtonLook, FlatIsThereOnlyUnderThePointerOrChecked) {
    button->Execute(I_EXEC_CB_NO_BORDER);
    const COLORREF behind = GetSysColor(COLOR_BTNFACE);
    Picture picture = PictureOf(window);
    EXPECT_EQ(picture.Count(behind), picture.width * picture.height);
    Mouse(window, WM_MOUSEMOVE);
    EXPECT_EQ(PictureOf(window).At(0, 12), FRAME);
    SendMessageW(window, WM_MOUSELEAVE, 0, 0);
    button->SetCheck(TRUE);
    EXPECT_EQ(PictureOf(window).At(0, 12), LIGHT);
}

TEST_F(CustomButtonLook, AnUnknownCommandChangesNothing) {
    button->Execute(I_EXEC_CB_NO_BORDER + 1);
    EXPECT_EQ(PictureOf(window).At(0, 12), FRAME);
}

TEST_F(CustomButtonLook, OfTheDefaultButtonTheFrameStandsOut) {
    SendMessageW(window, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_EQ(PictureOf(window).At(0, 12), LIGHT);
}

TEST_F(CustomButtonLook, ShowsItsText) {
    const Picture empty = PictureOf(window);
    button->SetText(L"Text");
    const Picture text = PictureOf(window);
    EXPECT_GT(text.Count(GetSysColor(COLOR_BTNTEXT)), 5);
    EXPECT_EQ(empty.Count(GetSysColor(COLOR_BTNTEXT)), 0);
    SetWindowTextW(window, L"");
    EXPECT_EQ(PictureOf(window).pixels, empty.pixels);
}

TEST_F(CustomButtonLook, DisabledLooksDisabled) {
    button->SetText(L"Text");
    button->Enable(FALSE);
    Picture picture = PictureOf(window);
    EXPECT_EQ(picture.Count(GetSysColor(COLOR_BTNTEXT)), 0);
    EXPECT_GT(picture.Count(GetSysColor(COLOR_GRAYTEXT)), 5);
    EXPECT_EQ(picture.At(0, 12), RGB(75, 75, 75));
    button->SetIconByName(MSTR(_M("Common/UIComponents/ArrowUp")));
    picture = PictureOf(window);
    EXPECT_EQ(picture.Count(GetSysColor(COLOR_BTNTEXT)), 0);
    EXPECT_GT(picture.Count(GetSysColor(COLOR_GRAYTEXT)), 20);
}

TEST_F(CustomButtonLook, APictureStandsInTheMiddleAtTheScreensScale) {
    const COLORREF ink = GetSysColor(COLOR_BTNTEXT);
    button->SetText(L"Text");
    button->SetIconByName(MSTR(_M("Common/UIComponents/ArrowUp")), 16, 16);
    Picture picture = PictureOf(window);
    // Of 80 by 24 pixels; the arrow's shaft is 4 pixels wide and 6 high.
    EXPECT_EQ(picture.At(40, 4 + 13), ink);
    EXPECT_EQ(picture.At(38, 4 + 8), ink);
    EXPECT_EQ(picture.At(37, 4 + 10), FACE);
    EXPECT_EQ(picture.At(40, 4 + 14), FACE);
    // 24 pixels, as high as the button.
    host::SetUIScaleFactor(1.5F);
    picture = PictureOf(window);
    EXPECT_EQ(picture.At(40, 20), ink);
    EXPECT_EQ(picture.At(37, 14), ink);
    EXPECT_EQ(picture.At(36, 16), FACE);
}

TEST_F(CustomButtonLook, APictureThatTheHostDoesNotHaveLeavesTheText) {
    button->SetText(L"Text");
    const Picture before = PictureOf(window);
    button->SetIconByName(MSTR(_M("Common/Nothing")), 16, 16);
    EXPECT_EQ(PictureOf(window).pixels, before.pixels);
    button->SetIconByName(MSTR(_M("Common/Folder")));
    EXPECT_NE(PictureOf(window).pixels, before.pixels);
    button->SetText(L"Text");
    EXPECT_EQ(PictureOf(window).pixels, before.pixels);
}

// The system keeps what a dialog hides, but not every system does.
LRESULT CALLBACK HideFocus(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                           DWORD_PTR /*data*/) {
    return message == WM_QUERYUISTATE ? UISF_HIDEFOCUS
                                      : DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(CustomButtonLook, TheFocusIsShownUnlessTheDialogHidesIt) {
    const Picture without = PictureOf(window);
    SetFocus(window);
    EXPECT_EQ(SendMessageW(window, BM_GETSTATE, 0, 0) & BST_FOCUS, BST_FOCUS);
    const Picture with = PictureOf(window);
    EXPECT_NE(with.pixels, without.pixels);
    EXPECT_EQ(with.At(40, 12), without.At(40, 12));
    SetWindowSubclass(window, &HideFocus, 1, 0);
    EXPECT_EQ(PictureOf(window).pixels, without.pixels);
    RemoveWindowSubclass(window, &HideFocus, 1);
    EXPECT_EQ(PictureOf(window).pixels, with.pixels);
}

TEST_F(CustomButtonLook, PaintsItsWindow) {
    UpdateWindow(window);
    HDC dc = GetDC(window);
    EXPECT_EQ(GetPixel(dc, 40, 12), FACE);
    button->SetCheck(TRUE);
    UpdateWindow(window);
    EXPECT_EQ(GetPixel(dc, 40, 12), RGB(68, 100, 132));
    ReleaseDC(window, dc);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

}  // namespace
