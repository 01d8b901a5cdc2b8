#include "host/win32/effect_rollups.h"

#include <gtest/gtest.h>

#include "host/application.h"
#include "tests/host/win32/rollup_stage.h"

namespace {

INT_PTR CALLBACK KeepParameter(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    return FALSE;
}

HWND AddPage(IRendParams& place, int dlgTemplate, const MCHAR* title, DWORD flags = 0) {
    return place.AddRollupPage(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dlgTemplate),
                               KeepParameter, title, 77, flags);
}

TEST(EffectRollups, PagesAreRollupsOfTheWindow) {
    const RollupStage stage;
    host::EffectRollups place(stage.rollupWindow);
    EXPECT_EQ(place.GetRollupWindow(), stage.rollups);
    HWND first = AddPage(place, SAMPLE_ROLLUP_MAIN, _M("First"));
    HWND second = AddPage(place, SAMPLE_ROLLUP_MORE, _M("Second"), APPENDROLL_CLOSED);
    EXPECT_EQ(stage.rollups->GetPanelIndex(first), 0);
    EXPECT_EQ(stage.rollups->GetPanelIndex(second), 1);
    EXPECT_TRUE(stage.rollups->IsPanelOpen(0));
    EXPECT_FALSE(stage.rollups->IsPanelOpen(1));
    EXPECT_EQ(GetWindowLongPtrW(second, DWLP_USER), 77);
    place.DeleteRollupPage(first);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(stage.rollups->GetPanelIndex(second), 0);
}

TEST(EffectRollups, APageThatCannotBeMadeIsNull) {
    const RollupStage stage;
    host::EffectRollups place(stage.rollupWindow);
    EXPECT_EQ(AddPage(place, 999, _M("None")), nullptr);
    EXPECT_EQ(stage.rollups->GetNumPanels(), 0);
}

TEST(EffectRollups, AWindowThatIsNoPageIsNotDeleted) {
    const RollupStage stage;
    host::EffectRollups place(stage.rollupWindow);
    AddPage(place, SAMPLE_ROLLUP_MAIN, _M("First"));
    place.DeleteRollupPage(stage.window);
    place.DeleteRollupPage(nullptr);
    EXPECT_TRUE(IsWindow(stage.window));
    EXPECT_EQ(stage.rollups->GetNumPanels(), 1);
}

TEST(EffectRollups, TheMouseOnAPageScrolls) {
    const RollupStage stage(100);
    host::EffectRollups place(stage.rollupWindow);
    HWND page = AddPage(place, SAMPLE_ROLLUP_MORE, _M("Page"));
    const LONG before = stage.Place(page).top;
    place.RollupMouseMessage(page, WM_LBUTTONDOWN, 0, MAKELPARAM(300, 60));
    place.RollupMouseMessage(page, WM_MOUSEMOVE, 0, MAKELPARAM(300, 40));
    place.RollupMouseMessage(page, WM_LBUTTONUP, 0, MAKELPARAM(300, 60));
    EXPECT_EQ(stage.Place(page).top, before - 20);
}

TEST(EffectRollups, TheTimeIsTheHosts) {
    host::ResetApplication();
    host::App().settings.time = 960;
    host::EffectRollups place(nullptr);
    EXPECT_EQ(place.GetTime(), 960);
    host::ResetApplication();
}

TEST(EffectRollups, WithoutItsWindowNothingIsShown) {
    RollupStage stage;
    host::EffectRollups place(stage.rollupWindow);
    HWND page = AddPage(place, SAMPLE_ROLLUP_MAIN, _M("First"));
    DestroyWindow(stage.window);
    EXPECT_EQ(place.GetRollupWindow(), nullptr);
    EXPECT_EQ(AddPage(place, SAMPLE_ROLLUP_MAIN, _M("Second")), nullptr);
    place.RollupMouseMessage(page, WM_LBUTTONDOWN, 0, 0);
    place.DeleteRollupPage(page);
}

}  // namespace
