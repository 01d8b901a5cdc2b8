#include "host/win32/rollup_title.h"

#include <gtest/gtest.h>

#include <optional>

#include "host/win32/color_manager.h"
#include "tests/host/win32/control_stage.h"

namespace {

class RollupTitle : public testing::Test {
  protected:
    ~RollupTitle() override { DeleteObject(font); }
    Picture Drawn(UINT state, bool open) const {
        return PictureOf(200, 20, RGB(255, 0, 255), [&](HDC dc) {
            SelectObject(dc, font);
            DRAWITEMSTRUCT item{};
            item.itemState = state;
            item.hwndItem = title;
            item.hDC = dc;
            item.rcItem = {0, 0, 200, 20};
            host::DrawRollupTitle(item, open);
        });
    }

    ControlStage stage;
    HFONT font = host::CreateRollupTitleFont();
    HWND title = host::CreateRollupTitle(stage.window, _M("Objects & Materials"), font);
};

TEST_F(RollupTitle, AnAmpersandIsPartOfTheText) {
    // As a button writes one that marks no key.
    EXPECT_EQ(TextOf(title), L"Objects && Materials");
    HWND untitled = host::CreateRollupTitle(stage.window, nullptr, font);
    EXPECT_EQ(TextOf(untitled), L"");
}

TEST_F(RollupTitle, StandsBelowItsSiblingsForTheTabKey) {
    HWND other = stage.Add(L"Static", 5);
    EXPECT_EQ(GetNextWindow(title, GW_HWNDNEXT), other);
    EXPECT_TRUE(GetWindowLongW(title, GWL_STYLE) & WS_TABSTOP);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(title, WM_GETFONT, 0, 0)), font);
}

TEST_F(RollupTitle, IsHigherThanItsText) {
    LOGFONTW letters{};
    GetObjectW(font, sizeof letters, &letters);
    EXPECT_EQ(letters.lfWeight, FW_BOLD);
    EXPECT_GT(host::RollupTitleHeight(font), std::abs(letters.lfHeight) + 4);
}

TEST_F(RollupTitle, FillsItsPlaceAndShowsItsState) {
    const Picture closed = Drawn(0, false);
    EXPECT_EQ(closed.Count(RGB(255, 0, 255)), 0);
    EXPECT_EQ(closed.pixels, Drawn(0, false).pixels);
    EXPECT_NE(closed.pixels, Drawn(0, true).pixels);
    EXPECT_NE(closed.pixels, Drawn(ODS_SELECTED, false).pixels);
    EXPECT_NE(closed.pixels, Drawn(ODS_FOCUS, false).pixels);
    // Until the keyboard is used the system hides where it is.
    EXPECT_EQ(closed.pixels, Drawn(ODS_FOCUS | ODS_NOFOCUSRECT, false).pixels);
}

TEST_F(RollupTitle, HasTheColoursOfTheHost) {
    host::SetThemeColor(COLOR_BTNFACE, RGB(10, 20, 30));
    host::SetThemeColor(COLOR_BTNTEXT, RGB(200, 210, 220));
    const Picture dark = Drawn(0, true);
    host::SetThemeColor(COLOR_BTNFACE, std::nullopt);
    host::SetThemeColor(COLOR_BTNTEXT, std::nullopt);
    EXPECT_GT(dark.Count(RGB(10, 20, 30)), 200 * 20 / 2);
    EXPECT_GT(dark.Count(RGB(200, 210, 220)), 20);
    EXPECT_EQ(Drawn(0, true).Count(RGB(10, 20, 30)), 0);
}

}  // namespace
