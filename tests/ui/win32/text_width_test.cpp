#include "ui/win32/text_width.h"

#include <gtest/gtest.h>

#include "tests/host/win32/control_stage.h"

namespace {

TEST(TextWidth, IsThatOfTheControlsFont) {
    const ControlStage stage;
    HWND label = stage.Add(L"Static", 1);
    // Of a fixed pitch, 10 pixels a unit.
    HFONT fixed = CreateFontW(20, 10, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0,
                              0, FIXED_PITCH | FF_MODERN, L"Courier New");
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(fixed), FALSE);
    const int one = ui::TextWidthIn(label, MSTR(L"x"));
    EXPECT_GT(one, 0);
    EXPECT_EQ(ui::TextWidthIn(label, MSTR(L"xi.W")), 4 * one);
    EXPECT_EQ(ui::TextWidthIn(label, MSTR()), 0);
    // The screen's own font again.
    SendMessageW(label, WM_SETFONT, 0, FALSE);
    EXPECT_NE(ui::TextWidthIn(label, MSTR(L"iiii")), ui::TextWidthIn(label, MSTR(L"WWWW")));
    DeleteObject(fixed);
}

}  // namespace
