#include "host/win32/spinner_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

#include "tests/host/win32/control_stage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Of the arrows: 16 pixels wide, each 12 high.
constexpr int UP = 4;
constexpr int DOWN = 18;
constexpr UINT_PTR TIMER = 1;

class Spinner : public testing::Test {
  protected:
    Spinner() {
        spinner->SetRange(1.0F, 100.0F);
        spinner->SetValue(72.0F);
        spinner->LinkToEdit(4);
    }
    ~Spinner() override { host::ReleaseSpinner(spinner); }
    // The mouse is pressed, and let go without having moved.
    void Click(int y) const {
        Mouse(window, WM_LBUTTONDOWN, 5, y);
        Mouse(window, WM_LBUTTONUP, 5, y);
    }
    void Enter(const wchar_t* text) const {
        SendMessageW(field, EM_SETSEL, 0, -1);
        SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
        Key(field, WM_KEYDOWN, VK_RETURN);
    }

    ControlStage stage;
    HWND field = stage.Add(CUSTEDITWINDOWCLASS, 4, L"", 0, {10, 10, 90, 34});
    HWND window = stage.Add(SPINNERWINDOWCLASS, 5, L"", 0, {90, 10, 106, 34});
    host::Spinner* spinner = host::GetSpinner(window);
};

TEST_F(Spinner, ShowsItsValueInTheField) {
    EXPECT_EQ(TextOf(field), L"72.0");
    for (const auto& [value, text] :
         {std::pair(50.0F, L"50.0"), std::pair(1.5F, L"1.5"), std::pair(33.125F, L"33.125"),
          std::pair(12.34567F, L"12.346"), std::pair(99.9999F, L"100.0")}) {
        spinner->SetValue(value);
        EXPECT_EQ(TextOf(field), text);
        EXPECT_EQ(spinner->Value(), value);
    }
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(Spinner, ShowsNoNegativeNothing) {
    spinner->SetRange(-1.0F, 1.0F);
    spinner->SetValue(-0.0001F);
    EXPECT_EQ(TextOf(field), L"0.0");
}

TEST_F(Spinner, ShowsTheLargestNumbers) {
    spinner->SetRange(std::numeric_limits<float>::lowest(), std::numeric_limits<float>::max());
    spinner->SetValue(std::numeric_limits<float>::lowest());
    EXPECT_EQ(TextOf(field), L"-340282346638528859811704183484516925440.0");
}

TEST_F(Spinner, KeepsToItsRange) {
    spinner->SetValue(0.5F);
    EXPECT_EQ(spinner->Value(), 1.0F);
    spinner->SetValue(1000.0F);
    EXPECT_EQ(spinner->Value(), 100.0F);
    spinner->SetRange(5.0F, 50.0F);
    EXPECT_EQ(spinner->Value(), 50.0F);
    EXPECT_EQ(TextOf(field), L"50.0");
    spinner->SetValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(spinner->Value(), 50.0F);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(Spinner, AnArrowStepsOnce) {
    Click(UP);
    EXPECT_EQ(spinner->Value(), 73.0F);
    EXPECT_EQ(TextOf(field), L"73.0");
    EXPECT_THAT(stage.Told(), ElementsAre("pressed 5", "spun 5 1", "let go 5 1"));
    Click(DOWN);
    Click(DOWN);
    EXPECT_EQ(spinner->Value(), 71.0F);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Spinner, StepsAsFarAsItIsTold) {
    spinner->SetStep(2.5F);
    Click(UP);
    EXPECT_EQ(spinner->Value(), 74.5F);
    spinner->SetStep(0.0F);
    spinner->SetStep(-1.0F);
    Click(UP);
    EXPECT_EQ(spinner->Value(), 77.0F);
}

TEST_F(Spinner, StopsAtTheEndOfItsRange) {
    spinner->SetValue(99.5F);
    Click(UP);
    EXPECT_EQ(spinner->Value(), 100.0F);
    stage.Told();
    Click(UP);
    EXPECT_THAT(stage.Told(), ElementsAre("pressed 5", "let go 5 1"));
}

TEST_F(Spinner, StepsOnWhileItIsHeld) {
    Mouse(window, WM_LBUTTONDOWN, 5, UP);
    SendMessageW(window, WM_TIMER, TIMER, 0);
    SendMessageW(window, WM_TIMER, TIMER, 0);
    EXPECT_EQ(spinner->Value(), 75.0F);
    // Not while the pointer is elsewhere.
    Mouse(window, WM_MOUSEMOVE, 40, UP);
    SendMessageW(window, WM_TIMER, TIMER, 0);
    EXPECT_EQ(spinner->Value(), 75.0F);
    Mouse(window, WM_LBUTTONUP, 5, UP);
    SendMessageW(window, WM_TIMER, TIMER, 0);
    EXPECT_EQ(spinner->Value(), 75.0F);
    EXPECT_THAT(stage.Told(),
                ElementsAre("pressed 5", "spun 5 1", "spun 5 1", "spun 5 1", "let go 5 1"));
}

TEST_F(Spinner, TheSystemsTimerStepsWhileItIsHeld) {
    Mouse(window, WM_LBUTTONDOWN, 5, UP);
    const ULONGLONG end = GetTickCount64() + 20000;
    MSG message;
    // The real pointer's messages wait: it is somewhere else.
    while (spinner->Value() < 75.0F && GetTickCount64() < end)
        if (GetMessageW(&message, window, WM_TIMER, WM_TIMER) > 0) DispatchMessageW(&message);
    Mouse(window, WM_LBUTTONUP, 5, UP);
    EXPECT_GE(spinner->Value(), 75.0F);
    EXPECT_FALSE(KillTimer(window, TIMER));
}

TEST_F(Spinner, DraggingCountsFromWhereItBegan) {
    Mouse(window, WM_LBUTTONDOWN, 5, UP);
    Mouse(window, WM_MOUSEMOVE, 5, UP - 20);
    EXPECT_EQ(spinner->Value(), 92.0F);
    EXPECT_FALSE(KillTimer(window, TIMER));
    Mouse(window, WM_MOUSEMOVE, 5, UP - 500);
    EXPECT_EQ(spinner->Value(), 100.0F);
    Mouse(window, WM_MOUSEMOVE, 5, UP + 30);
    EXPECT_EQ(spinner->Value(), 42.0F);
    EXPECT_EQ(TextOf(field), L"42.0");
    Mouse(window, WM_LBUTTONUP, 5, UP + 30);
    EXPECT_EQ(spinner->Value(), 42.0F);
    EXPECT_THAT(stage.Told(), ElementsAre("pressed 5", "spun 5 1", "spun 5 1", "spun 5 1",
                                          "spun 5 1", "let go 5 1"));
}

TEST_F(Spinner, ARightClickGivesTheFormerValueBack) {
    Mouse(window, WM_LBUTTONDOWN, 5, UP);
    Mouse(window, WM_MOUSEMOVE, 5, UP - 20);
    stage.Told();
    Mouse(window, WM_RBUTTONDOWN, 5, UP - 20);
    EXPECT_EQ(spinner->Value(), 72.0F);
    EXPECT_EQ(TextOf(field), L"72.0");
    EXPECT_THAT(stage.Told(), ElementsAre("spun 5 1", "let go 5 0"));
    Mouse(window, WM_LBUTTONUP, 5, UP - 20);
    EXPECT_THAT(stage.Told(), IsEmpty());
}

TEST_F(Spinner, WhateverTakesTheMouseAwayCancels) {
    for (const int how : {0, 1, 2}) {
        Mouse(window, WM_LBUTTONDOWN, 5, UP);
        EXPECT_EQ(spinner->Value(), 73.0F);
        stage.Told();
        if (how == 0) SetCapture(stage.window);
        if (how == 1) spinner->Enable(FALSE);
        if (how == 2) DestroyWindow(window);
        EXPECT_EQ(spinner->Value(), 72.0F);
        EXPECT_THAT(stage.Told(), ElementsAre("spun 5 1", "let go 5 0"));
        ReleaseCapture();
        spinner->Enable(TRUE);
    }
}

TEST_F(Spinner, DestroyedInTheMiddleOfAStepEnds) {
    bool first = true;
    stage.onNotice = [&](const std::string& notice) {
        if (notice == "spun 5 1" && std::exchange(first, false)) DestroyWindow(window);
    };
    Mouse(window, WM_LBUTTONDOWN, 5, UP);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(stage.Told(), ElementsAre("pressed 5", "spun 5 1", "spun 5 1", "let go 5 0"));
}

TEST_F(Spinner, DisabledDoesNothing) {
    spinner->Enable(FALSE);
    EXPECT_FALSE(spinner->IsEnabled());
    EXPECT_FALSE(IsWindowEnabled(field));
    Click(UP);
    EXPECT_THAT(stage.Told(), IsEmpty());
    spinner->Enable(TRUE);
    EXPECT_TRUE(IsWindowEnabled(field));
}

TEST_F(Spinner, TheFieldsTextCountsWithTheEnterKey) {
    Enter(L"80.25");
    EXPECT_EQ(spinner->Value(), 80.25F);
    EXPECT_EQ(stage.Told().at(0), "spun 5 0");
}

TEST_F(Spinner, TheFieldsTextCountsWhenTheFocusLeaves) {
    SetFocus(field);
    SendMessageW(field, EM_SETSEL, 0, -1);
    Type(field, L"55");
    EXPECT_EQ(spinner->Value(), 72.0F);
    SetFocus(stage.window);
    EXPECT_EQ(spinner->Value(), 55.0F);
    EXPECT_EQ(TextOf(field), L"55.0");
    EXPECT_THAT(stage.Told(), ElementsAre("focused 4", "spun 5 0", "left 4"));
}

TEST_F(Spinner, TextsThatAreNumbers) {
    for (const auto& [text, value] :
         {std::pair(L"5", 5.0F), std::pair(L" 6.5\t", 6.5F), std::pair(L"+7", 7.0F),
          std::pair(L"8,25", 8.25F), std::pair(L".5e1", 5.0F), std::pair(L"1e99", 100.0F),
          std::pair(L"-3", 1.0F), std::pair(L"0", 1.0F)}) {
        spinner->SetValue(72.0F);
        Enter(text);
        EXPECT_EQ(spinner->Value(), value) << value;
    }
}

TEST_F(Spinner, TextsThatAreNot) {
    for (const wchar_t* text : {L"", L"  ", L"abc", L"5x", L"1 2", L"+-5", L"+", L"1e999", L"nan",
                                L"inf", L"\x0665", L"1.000,5"}) {
        stage.Told();
        Enter(text);
        EXPECT_EQ(spinner->Value(), 72.0F);
        EXPECT_EQ(TextOf(field), L"72.0");
        for (const std::string& notice : stage.Told())
            EXPECT_NE(notice, "spun 5 0");
    }
}

TEST_F(Spinner, AValueIsNotCutToWhatIsShown) {
    spinner->SetValue(12.34567F);
    SetFocus(field);
    SetFocus(stage.window);
    EXPECT_EQ(spinner->Value(), 12.34567F);
    EXPECT_THAT(stage.Told(), ElementsAre("focused 4", "left 4"));
}

TEST_F(Spinner, TheUpAndDownKeysOfTheFieldStep) {
    Key(field, WM_KEYDOWN, VK_UP);
    EXPECT_EQ(spinner->Value(), 73.0F);
    Key(field, WM_KEYDOWN, VK_DOWN);
    Key(field, WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(spinner->Value(), 71.0F);
    EXPECT_THAT(stage.Told(), ElementsAre("spun 5 0", "spun 5 0", "spun 5 0"));
    // From what is in the field by then.
    SendMessageW(field, EM_SETSEL, 0, -1);
    Type(field, L"20");
    Key(field, WM_KEYDOWN, VK_UP);
    EXPECT_EQ(TextOf(field), L"21.0");
}

TEST_F(Spinner, AnArrowTakesTheFieldsTextFirst) {
    SendMessageW(field, EM_SETSEL, 0, -1);
    Type(field, L"20");
    Click(UP);
    EXPECT_EQ(spinner->Value(), 21.0F);
    EXPECT_THAT(stage.Told(), ElementsAre("spun 5 0", "pressed 5", "spun 5 1", "let go 5 1"));
}

TEST_F(Spinner, ControlAndAltChangeTheStep) {
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    BYTE held[256] = {};
    held[VK_CONTROL] = 0x80;
    SetKeyboardState(held);
    Click(UP);
    EXPECT_EQ(spinner->Value(), 82.0F);
    held[VK_CONTROL] = 0;
    held[VK_MENU] = 0x80;
    SetKeyboardState(held);
    Click(DOWN);
    EXPECT_EQ(spinner->Value(), 81.9F);
    // With that key held the system sends others their keys so.
    Key(field, WM_SYSKEYDOWN, VK_UP);
    EXPECT_EQ(spinner->Value(), 82.0F);
    SetKeyboardState(keys);
}

TEST_F(Spinner, WorksWithTheSystemsOwnEdit) {
    HWND plain = stage.Add(L"Edit", 8);
    spinner->LinkToEdit(8);
    EXPECT_EQ(TextOf(plain), L"72.0");
    SendMessageW(plain, EM_SETSEL, 0, -1);
    SendMessageW(plain, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"30"));
    Key(plain, WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(spinner->Value(), 30.0F);
    // The former field is nothing to it.
    Key(field, WM_KEYDOWN, VK_UP);
    EXPECT_EQ(spinner->Value(), 30.0F);
    EXPECT_EQ(TextOf(field), L"72.0");
}

TEST_F(Spinner, WithoutAFieldStillSpins) {
    spinner->LinkToEdit(99);
    Click(UP);
    EXPECT_EQ(spinner->Value(), 73.0F);
    EXPECT_EQ(TextOf(field), L"72.0");
}

TEST_F(Spinner, TheFieldMayGoFirst) {
    DestroyWindow(field);
    Click(UP);
    EXPECT_EQ(spinner->Value(), 73.0F);
}

TEST_F(Spinner, TheFieldMayStay) {
    DestroyWindow(window);
    Key(field, WM_KEYDOWN, VK_UP);
    SetWindowTextW(field, L"5");
    Key(field, WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(TextOf(field), L"5");
    EXPECT_THAT(stage.Told(), ElementsAre("given 4"));
}

TEST_F(Spinner, IsNotAControlOfAnotherClass) {
    EXPECT_EQ(host::GetSpinner(field), nullptr);
    EXPECT_EQ(host::GetSpinner(nullptr), nullptr);
    host::ReleaseSpinner(nullptr);
    EXPECT_EQ(spinner->GetHwnd(), window);
}

TEST_F(Spinner, ShowsWhichArrowIsPressed) {
    const Picture before = PictureOf(window);
    Mouse(window, WM_LBUTTONDOWN, 5, UP);
    const Picture pressed = PictureOf(window);
    EXPECT_NE(pressed.At(2, UP), before.At(2, UP));
    EXPECT_EQ(pressed.At(2, DOWN), before.At(2, DOWN));
    Mouse(window, WM_LBUTTONUP, 5, UP);
    Mouse(window, WM_MOUSEMOVE, 5, DOWN);
    const Picture hot = PictureOf(window);
    EXPECT_EQ(hot.At(2, UP), before.At(2, UP));
    EXPECT_NE(hot.At(2, DOWN), before.At(2, DOWN));
    SendMessageW(window, WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(PictureOf(window).pixels, before.pixels);
    spinner->Enable(FALSE);
    EXPECT_EQ(PictureOf(window).Count(GetSysColor(COLOR_BTNTEXT)), 0);
    EXPECT_GT(before.Count(GetSysColor(COLOR_BTNTEXT)), 10);
}

}  // namespace
