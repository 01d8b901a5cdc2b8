#include "host/win32/rollup_focus.h"

#include <gtest/gtest.h>

#include "tests/host/win32/rollup_stage.h"

namespace {

class RollupFocus : public testing::Test {
  protected:
    RollupFocus() {
        stage.Append(SAMPLE_ROLLUP_MORE);
        below = GetDlgItem(stage.rollups->GetPanelDlg(0), SAMPLE_ID_OTHER);
    }
    ~RollupFocus() override { HoldMouse(false); }
    static void HoldMouse(bool down) {
        BYTE keys[256] = {};
        keys[VK_LBUTTON] = down ? 0x80 : 0;
        SetKeyboardState(keys);
    }
    LONG Bottom() const { return stage.Place(below).bottom; }

    RollupStage stage;
    HWND below = nullptr;
};

TEST_F(RollupFocus, TheKeyboardsControlIsBroughtIntoView) {
    EXPECT_GT(Bottom(), 300);
    SetFocus(below);
    EXPECT_LE(Bottom(), 300);
}

TEST_F(RollupFocus, WhatTheMouseClicksOnStaysUnderIt) {
    HoldMouse(true);
    SetFocus(below);
    EXPECT_GT(Bottom(), 300);
}

TEST_F(RollupFocus, EndsWithTheLastWindowOfRollups) {
    // One more and one less leaves it on.
    host::StartFollowingFocus();
    host::StopFollowingFocus();
    SetFocus(below);
    EXPECT_LE(Bottom(), 300);
    SetFocus(stage.Title(0));
    EXPECT_GE(stage.Place(stage.Title(0)).top, 0);
    // This window's own.
    host::StopFollowingFocus();
    SetFocus(below);
    EXPECT_GT(Bottom(), 300);
    host::StartFollowingFocus();
}

}  // namespace
