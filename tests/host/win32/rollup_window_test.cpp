#include "host/win32/rollup_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/leak_rounds.h"
#include "tests/host/win32/object_counts.h"
#include "tests/host/win32/rollup_stage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int tallDialog = SAMPLE_ROLLUP_MORE;

// What the dialogs of rollups hear of their own lives.
struct DialogLife {
    IRollupWindow* rollups = nullptr;
    int numberWhenMade = -2;
    int numberWhenDestroyed = -2;
};

INT_PTR CALLBACK KeepLife(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        auto& life = *reinterpret_cast<DialogLife*>(lParam);
        life.numberWhenMade = life.rollups->GetPanelIndex(dialog);
    } else if (message == WM_DESTROY) {
        auto& life = *reinterpret_cast<DialogLife*>(GetWindowLongPtrW(dialog, DWLP_USER));
        life.numberWhenDestroyed = life.rollups->GetPanelIndex(dialog);
    }
    return FALSE;
}

class KeepsChanges final : public IRollupCallback {
  public:
    void HandleOpenChange(int index, BOOL open) override { changes.emplace_back(index, open); }
    std::vector<std::pair<int, BOOL>> changes;
};

TEST(RollupWindow, AnAppendedRollupIsTheLastAndOpen) {
    const RollupStage stage;
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
    EXPECT_EQ(stage.Append(SAMPLE_ROLLUP_MAIN, _M("First & foremost")), 0);
    EXPECT_EQ(stage.Append(tallDialog, _M("Second")), 1);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 2);
    EXPECT_TRUE(stage.rollups->IsPanelOpen(1));
    HWND dialog = stage.rollups->GetPanelDlg(1);
    EXPECT_NE(GetDlgItem(dialog, SAMPLE_ID_NODES), nullptr);
    EXPECT_TRUE(IsWindowVisible(dialog));
    EXPECT_EQ(stage.rollups->GetPanelIndex(dialog), 1);
    // "&&" is how a button shows one.
    EXPECT_EQ(TextOf(stage.Title(0)), L"First && foremost");
    EXPECT_EQ(TextOf(stage.Title(1)), L"Second");
}

TEST(RollupWindow, TheDialogGetsItsParameterAndHasItsNumberAtOnce) {
    const RollupStage stage;
    stage.Append(tallDialog);
    DialogLife life{stage.rollups};
    stage.Append(tallDialog, _M("Kept"), 0, KeepLife, reinterpret_cast<LPARAM>(&life));
    EXPECT_EQ(life.numberWhenMade, 1);
}

TEST(RollupWindow, NumbersAndWindowsThatAreNotThereAreAnswered) {
    const RollupStage stage;
    stage.Append(tallDialog);
    EXPECT_EQ(stage.rollups->GetPanelDlg(1), nullptr);
    EXPECT_EQ(stage.rollups->GetPanelDlg(-1), nullptr);
    EXPECT_EQ(stage.rollups->GetPanelIndex(stage.window), -1);
    EXPECT_EQ(stage.rollups->GetPanelIndex(nullptr), -1);
    EXPECT_FALSE(stage.rollups->IsPanelOpen(1));
    EXPECT_EQ(stage.rollups->GetPageDlgHeight(1), 0);
    stage.rollups->SetPanelOpen(1, TRUE);
    stage.rollups->SetPageDlgHeight(1, 10);
    stage.rollups->DeleteRollup(1, 1);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 1);
}

TEST(RollupWindow, ADialogThatCannotBeMadeLeavesNothing) {
    const RollupStage stage;
    stage.Append(tallDialog);
    const ObjectCounts before = CountObjects();
    EXPECT_EQ(stage.Append(SAMPLE_ROLLUP_BROKEN), -1);
    EXPECT_EQ(stage.Append(999), -1);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 1);
    EXPECT_EQ(CountObjects(), before);
}

TEST(RollupWindow, ATemplateWithAFrameLosesIt) {
    const RollupStage stage;
    stage.Append(SAMPLE_ROLLUP_FRAMED);
    HWND dialog = stage.rollups->GetPanelDlg(0);
    EXPECT_EQ(GetParent(dialog), stage.rollupWindow);
    const DWORD frame = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE)) & frame, 0U);
    RECT client{};
    GetClientRect(dialog, &client);
    EXPECT_EQ(client.bottom, stage.rollups->GetPageDlgHeight(0));
}

TEST(RollupWindow, AClickOnATitleClosesAndOpensItsDialog) {
    const RollupStage stage(800);
    KeepsChanges kept;
    stage.rollups->RegisterRollupCallback(&kept);
    stage.Append(SAMPLE_ROLLUP_MAIN);
    stage.Append(SAMPLE_ROLLUP_FRAMED);
    HWND dialog = stage.rollups->GetPanelDlg(0);
    HWND title = stage.Title(0);
    const LONG below = stage.Place(stage.Title(1)).top;
    EXPECT_THAT(kept.changes, IsEmpty());

    stage.Click(title);
    EXPECT_FALSE(stage.rollups->IsPanelOpen(0));
    EXPECT_FALSE(IsWindowVisible(dialog));
    EXPECT_LT(stage.Place(stage.Title(1)).top, below);
    EXPECT_THAT(kept.changes, ElementsAre(std::pair(0, FALSE)));

    stage.Click(title);
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
    EXPECT_TRUE(IsWindowVisible(dialog));
    EXPECT_EQ(stage.Place(stage.Title(1)).top, below);
    EXPECT_THAT(kept.changes, ElementsAre(std::pair(0, FALSE), std::pair(0, TRUE)));
}

TEST(RollupWindow, AQuickSecondClickIsAClickToo) {
    const RollupStage stage;
    stage.Append(tallDialog);
    HWND title = stage.Title(0);
    stage.Click(title);
    SendMessageW(title, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageW(title, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
}

TEST(RollupWindow, TheSpaceKeyOpensAndCloses) {
    const RollupStage stage;
    stage.Append(tallDialog);
    SetFocus(stage.Title(0));
    DialogKey(stage.window, VK_SPACE);
    EXPECT_FALSE(stage.rollups->IsPanelOpen(0));
    DialogKey(stage.window, VK_SPACE);
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
}

TEST(RollupWindow, TheTabKeyGoesFromATitleThroughItsDialogToTheNextTitle) {
    const RollupStage stage(800);
    stage.Append(SAMPLE_ROLLUP_FRAMED);
    stage.Append(SAMPLE_ROLLUP_MAIN);
    stage.Append(tallDialog, _M("Closed"), APPENDROLL_CLOSED);
    SetFocus(stage.Title(0));
    std::vector<int> ids;
    for (int i = 0; i < 9; ++i) {
        DialogKey(stage.window, VK_TAB);
        ids.push_back(GetDlgCtrlID(GetFocus()));
    }
    // A title has no id, and no dialog of a closed one is entered.
    EXPECT_THAT(ids, ElementsAre(0, SAMPLE_ID_ON, SAMPLE_ID_FOLDER, SAMPLE_ID_8_BITS,
                                 SAMPLE_ID_NUMBER, SAMPLE_ID_TEXT, SAMPLE_ID_COMBO, 0, 0));
    EXPECT_EQ(GetFocus(), stage.Title(0));
}

TEST(RollupWindow, ARollupCanBeAppendedClosed) {
    const RollupStage stage;
    EXPECT_EQ(stage.Append(tallDialog, _M("Closed"), APPENDROLL_CLOSED), 0);
    EXPECT_FALSE(stage.rollups->IsPanelOpen(0));
    EXPECT_FALSE(IsWindowVisible(stage.rollups->GetPanelDlg(0)));
}

TEST(RollupWindow, WhoRegisteredHearsOfProgramsTooAndOnlyOfChanges) {
    const RollupStage stage;
    KeepsChanges kept;
    KeepsChanges other;
    stage.rollups->RegisterRollupCallback(&kept);
    stage.Append(tallDialog);
    stage.rollups->SetPanelOpen(0, TRUE);
    EXPECT_THAT(kept.changes, IsEmpty());
    stage.rollups->SetPanelOpen(0, FALSE);
    EXPECT_THAT(kept.changes, ElementsAre(std::pair(0, FALSE)));
    // Another's taking itself away leaves this one.
    stage.rollups->UnRegisterRollupCallback(&other);
    stage.rollups->SetPanelOpen(0, TRUE);
    EXPECT_EQ(kept.changes.size(), 2U);
    stage.rollups->UnRegisterRollupCallback(&kept);
    stage.rollups->SetPanelOpen(0, FALSE);
    EXPECT_EQ(kept.changes.size(), 2U);
}

TEST(RollupWindow, ADeletedRollupStillHasItsNumberWhileItGoes) {
    const RollupStage stage;
    std::vector<DialogLife> lives(4, DialogLife{stage.rollups});
    for (DialogLife& life : lives) {
        stage.Append(SAMPLE_ROLLUP_FRAMED, _M("Kept"), 0, KeepLife,
                     reinterpret_cast<LPARAM>(&life));
    }
    HWND gone = stage.rollups->GetPanelDlg(1);
    HWND last = stage.rollups->GetPanelDlg(3);
    stage.rollups->DeleteRollup(1, 2);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 2);
    EXPECT_FALSE(IsWindow(gone));
    EXPECT_EQ(stage.rollups->GetPanelIndex(last), 1);
    EXPECT_EQ(lives[1].numberWhenDestroyed, 1);
    EXPECT_EQ(lives[2].numberWhenDestroyed, 1);
    EXPECT_EQ(lives[3].numberWhenDestroyed, -2);
    // More than there are.
    stage.rollups->DeleteRollup(0, 9);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
}

TEST(RollupWindow, WhatIsBelowMovesWithADialogsHeight) {
    const RollupStage stage(800);
    stage.Append(SAMPLE_ROLLUP_FRAMED);
    stage.Append(SAMPLE_ROLLUP_FRAMED);
    const int height = stage.rollups->GetPageDlgHeight(0);
    const RECT before = stage.Place(stage.Title(1));
    stage.rollups->SetPageDlgHeight(0, height + 40);
    EXPECT_EQ(stage.rollups->GetPageDlgHeight(0), height + 40);
    EXPECT_EQ(stage.Place(stage.Title(1)).top, before.top + 40);
}

int TopOfRollups(const RollupStage& stage) {
    return static_cast<int>(stage.Place(stage.Title(0)).top);
}

void Turn(HWND window, int delta) {
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
}

MSG WheelOver(HWND window) {
    MSG message{};
    message.hwnd = window;
    message.message = WM_MOUSEWHEEL;
    message.wParam = MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA));
    return message;
}

TEST(RollupWindow, TheWheelOverAClosedDropDownListScrolls) {
    const RollupStage stage;
    stage.Append(tallDialog);
    stage.Append(tallDialog);
    HWND dialog = stage.rollups->GetPanelDlg(0);
    HWND combo = CreateWindowExW(0, L"COMBOBOX", L"", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, 0,
                                 0, 80, 90, dialog, nullptr, nullptr, nullptr);
    for (const wchar_t* item : {L"PSD", L"PSB"})
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    SendMessageW(combo, CB_SETCURSEL, 0, 0);
    const int start = TopOfRollups(stage);
    EXPECT_TRUE(host::ScrollByWheel(WheelOver(combo)));
    EXPECT_LT(TopOfRollups(stage), start);
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 0);

    // An open one has something to choose.
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_FALSE(host::ScrollByWheel(WheelOver(combo)));
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
    // What is no combo, and what is in no rollups, have the message as it comes.
    EXPECT_FALSE(host::ScrollByWheel(WheelOver(dialog)));
    HWND elsewhere = CreateWindowExW(0, L"COMBOBOX", L"", WS_POPUP | CBS_DROPDOWNLIST, 0, 0, 80, 90,
                                     nullptr, nullptr, nullptr, nullptr);
    EXPECT_FALSE(host::ScrollByWheel(WheelOver(elsewhere)));
    DestroyWindow(elsewhere);
    MSG other = WheelOver(combo);
    other.message = WM_MOUSEMOVE;
    EXPECT_FALSE(host::ScrollByWheel(other));
}

TEST(RollupWindow, TheWheelScrollsAndStopsAtTheEnds) {
    const RollupStage stage;
    stage.Append(tallDialog);
    stage.Append(tallDialog);
    const int start = TopOfRollups(stage);
    // The dialog gives on what it doesn't use itself.
    HWND dialog = stage.rollups->GetPanelDlg(0);
    Turn(dialog, -WHEEL_DELTA);
    const int notch = start - TopOfRollups(stage);
    EXPECT_GT(notch, 0);
    // Fine wheels give less at a time.
    Turn(dialog, -WHEEL_DELTA / 2);
    Turn(dialog, -WHEEL_DELTA / 2);
    EXPECT_EQ(start - TopOfRollups(stage), 2 * notch);
    Turn(dialog, 9 * WHEEL_DELTA);
    EXPECT_EQ(TopOfRollups(stage), start);
    Turn(dialog, -100 * WHEEL_DELTA);
    RECT client{};
    GetClientRect(stage.rollupWindow, &client);
    const RECT last = stage.Place(stage.rollups->GetPanelDlg(1));
    EXPECT_LE(last.bottom, client.bottom);
    EXPECT_GT(last.bottom, client.bottom - 10);
}

TEST(RollupWindow, TheScrollBarScrolls) {
    const RollupStage stage;
    stage.Append(tallDialog);
    stage.Append(tallDialog);
    const int start = TopOfRollups(stage);
    const auto scroll = [&](int code, int position = 0) {
        SendMessageW(stage.rollupWindow, WM_VSCROLL, MAKEWPARAM(code, position), 0);
        return start - TopOfRollups(stage);
    };
    const int line = scroll(SB_LINEDOWN);
    EXPECT_GT(line, 0);
    EXPECT_EQ(scroll(SB_LINEUP), 0);
    const int page = scroll(SB_PAGEDOWN);
    EXPECT_GT(page, line);
    EXPECT_EQ(scroll(SB_PAGEUP), 0);
    const int end = scroll(SB_BOTTOM);
    EXPECT_GT(end, page);
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL;
    GetScrollInfo(stage.rollupWindow, SB_VERT, &bar);
    EXPECT_EQ(bar.nPos, end);
    EXPECT_EQ(bar.nMax + 1 - static_cast<int>(bar.nPage), end);
    EXPECT_EQ(scroll(SB_TOP), 0);
}

TEST(RollupWindow, WhatIsClosedOrShrunkTakesTheViewBack) {
    const RollupStage stage;
    stage.Append(tallDialog);
    stage.Append(tallDialog);
    const int start = TopOfRollups(stage);
    SendMessageW(stage.rollupWindow, WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_LT(TopOfRollups(stage), start);
    stage.rollups->SetPanelOpen(0, FALSE);
    stage.rollups->SetPageDlgHeight(1, 20);
    EXPECT_EQ(TopOfRollups(stage), start);
}

TEST(RollupWindow, AnEmptyPartOfADialogIsDragged) {
    const RollupStage stage;
    stage.Append(tallDialog);
    const int start = TopOfRollups(stage);
    HWND dialog = stage.rollups->GetPanelDlg(0);
    IRollupWindow& rollups = *stage.rollups;
    // Without a press nothing is dragged.
    rollups.DlgMouseMessage(dialog, WM_MOUSEMOVE, 0, MAKELPARAM(10, 70));
    EXPECT_EQ(TopOfRollups(stage), start);
    rollups.DlgMouseMessage(dialog, WM_LBUTTONDOWN, 0, MAKELPARAM(10, 100));
    EXPECT_EQ(GetCapture(), dialog);
    rollups.DlgMouseMessage(dialog, WM_MOUSEMOVE, 0, MAKELPARAM(10, 70));
    EXPECT_EQ(TopOfRollups(stage), start - 30);
    // The dialog is now where the mouse is: it didn't move.
    rollups.DlgMouseMessage(dialog, WM_MOUSEMOVE, 0, MAKELPARAM(10, 100));
    EXPECT_EQ(TopOfRollups(stage), start - 30);
    rollups.DlgMouseMessage(dialog, WM_LBUTTONUP, 0, MAKELPARAM(10, 100));
    EXPECT_EQ(GetCapture(), nullptr);
    rollups.DlgMouseMessage(dialog, WM_MOUSEMOVE, 0, MAKELPARAM(10, 10));
    EXPECT_EQ(TopOfRollups(stage), start - 30);
}

TEST(RollupWindow, TheEmptyPartBelowAllIsDraggedToo) {
    const RollupStage stage;
    stage.Append(tallDialog);
    const int start = TopOfRollups(stage);
    Mouse(stage.rollupWindow, WM_LBUTTONDOWN, 450, 100);
    Mouse(stage.rollupWindow, WM_MOUSEMOVE, 450, 60);
    Mouse(stage.rollupWindow, WM_LBUTTONUP, 450, 60);
    EXPECT_EQ(TopOfRollups(stage), start - 40);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(RollupWindow, ADragEndsWithItsDialog) {
    const RollupStage stage;
    stage.Append(tallDialog);
    stage.Append(tallDialog);
    const auto press = [&] {
        HWND dialog = stage.rollups->GetPanelDlg(0);
        stage.rollups->DlgMouseMessage(dialog, WM_LBUTTONDOWN, 0, MAKELPARAM(10, 100));
    };
    press();
    stage.rollups->SetPanelOpen(0, FALSE);
    EXPECT_EQ(GetCapture(), nullptr);
    stage.rollups->SetPanelOpen(0, TRUE);
    press();
    stage.rollups->DeleteRollup(0, 1);
    EXPECT_EQ(GetCapture(), nullptr);
    const int start = TopOfRollups(stage);
    stage.rollups->DlgMouseMessage(stage.rollups->GetPanelDlg(0), WM_MOUSEMOVE, 0,
                                   MAKELPARAM(10, 10));
    EXPECT_EQ(TopOfRollups(stage), start);
}

TEST(RollupWindow, AControlThatGetsTheKeyboardIsScrolledIntoView) {
    const RollupStage stage;
    stage.Append(tallDialog);
    stage.Append(SAMPLE_ROLLUP_MAIN);
    RECT client{};
    GetClientRect(stage.rollupWindow, &client);
    const auto isSeen = [&](HWND control) {
        const RECT place = stage.Place(control);
        return place.top >= 0 && place.bottom <= client.bottom;
    };
    HWND below = GetDlgItem(stage.rollups->GetPanelDlg(0), SAMPLE_ID_OTHER);
    HWND above = GetDlgItem(stage.rollups->GetPanelDlg(0), SAMPLE_ID_LIVE_TEXT);
    EXPECT_FALSE(isSeen(below));
    SetFocus(below);
    EXPECT_TRUE(isSeen(below));
    EXPECT_FALSE(isSeen(above));
    SetFocus(above);
    EXPECT_TRUE(isSeen(above));
    SetFocus(stage.Title(1));
    EXPECT_TRUE(isSeen(stage.Title(1)));
}

TEST(RollupWindow, TheKeyboardLeavesADialogThatCloses) {
    const RollupStage stage;
    stage.Append(tallDialog);
    SetFocus(GetDlgItem(stage.rollups->GetPanelDlg(0), SAMPLE_ID_OTHER));
    stage.rollups->SetPanelOpen(0, FALSE);
    EXPECT_EQ(GetFocus(), stage.Title(0));
}

TEST(RollupWindow, WhatAClickOpensIsBroughtIntoView) {
    const RollupStage stage;
    for (int i = 0; i < 5; ++i)
        stage.Append(SAMPLE_ROLLUP_MAIN, _M("Closed"), APPENDROLL_CLOSED);
    stage.rollups->SetPanelOpen(0, TRUE);
    const int start = TopOfRollups(stage);
    stage.Click(stage.Title(4));
    EXPECT_LT(TopOfRollups(stage), start);
    RECT client{};
    GetClientRect(stage.rollupWindow, &client);
    EXPECT_LE(stage.Place(stage.rollups->GetPanelDlg(4)).bottom, client.bottom);
    EXPECT_GE(stage.Place(stage.Title(4)).top, 0);
}

TEST(RollupWindow, ItsWidthIsThatOfTheWidestDialog) {
    const RollupStage stage;
    stage.Append(SAMPLE_ROLLUP_FRAMED);
    const int narrow = host::RollupWindowWidth(stage.rollupWindow);
    stage.Append(tallDialog, _M("Closed"), APPENDROLL_CLOSED);
    const int wide = host::RollupWindowWidth(stage.rollupWindow);
    EXPECT_GT(wide, narrow);
    SetWindowPos(stage.rollupWindow, nullptr, 0, 0, wide, 300, SWP_NOMOVE | SWP_NOZORDER);
    stage.rollups->SetPanelOpen(1, TRUE);
    RECT client{};
    GetClientRect(stage.rollupWindow, &client);
    const RECT dialog = stage.Place(stage.rollups->GetPanelDlg(1));
    EXPECT_EQ(dialog.left, client.right - dialog.right);
    EXPECT_EQ(host::RollupWindowWidth(stage.window), 0);
}

TEST(RollupWindow, OnlyAWindowOfTheClassHasRollups) {
    const RollupStage stage;
    EXPECT_EQ(GetIRollup(stage.window), nullptr);
    EXPECT_EQ(GetIRollup(nullptr), nullptr);
    ReleaseIRollup(nullptr);
    EXPECT_EQ(stage.rollups->GetHwnd(), stage.rollupWindow);
}

TEST(RollupWindow, WhatWasGotAnswersWhenItsWindowIsGone) {
    RollupStage stage;
    DialogLife life{stage.rollups};
    stage.Append(tallDialog, _M("Kept"), 0, KeepLife, reinterpret_cast<LPARAM>(&life));
    DestroyWindow(stage.window);
    // The dialog went with the window, and could ask for its number.
    EXPECT_EQ(life.numberWhenDestroyed, 0);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
    EXPECT_EQ(stage.rollups->GetHwnd(), nullptr);
    EXPECT_EQ(stage.Append(tallDialog), -1);
}

TEST(RollupWindow, AnyNumberOfWindowsLeavesNothingBehind) {
    const RollupStage stage;
    const auto liveAndDie = [&] {
        HWND window =
            CreateWindowExW(0, ROLLUPWINDOWCLASS, L"", WS_CHILD | WS_VISIBLE, 0, 0, 400, 200,
                            stage.window, nullptr, GetModuleHandleW(nullptr), nullptr);
        IRollupWindow* rollups = GetIRollup(window);
        HMODULE module = GetModuleHandleW(nullptr);
        rollups->AppendRollup(module, MAKEINTRESOURCEW(SAMPLE_ROLLUP_FRAMED), nullptr, _M("Open"));
        rollups->AppendRollup(module, MAKEINTRESOURCEW(SAMPLE_ROLLUP_FRAMED), nullptr, _M("Closed"),
                              0, APPENDROLL_CLOSED);
        rollups->SetTooltip(true, _M("Tool tip"));
        UpdateWindow(window);
        rollups->SetPanelOpen(1, TRUE);
        rollups->DlgMouseMessage(rollups->GetPanelDlg(0), WM_LBUTTONDOWN, 0, 0);
        ReleaseIRollup(rollups);
        DestroyWindow(window);
    };
    // What the system keeps of the first.
    for (int i = 0; i < 3; ++i)
        liveAndDie();
    const ObjectCounts before = CountObjects();
    for (int i = 0; i < LeakRounds(); ++i)
        liveAndDie();
    EXPECT_EQ(CountObjects(), before);
    EXPECT_EQ(GetCapture(), nullptr);
}

}  // namespace
