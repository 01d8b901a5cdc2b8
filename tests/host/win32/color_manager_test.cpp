#include "host/win32/color_manager.h"

#include <gtest/gtest.h>
#include <icolorman.h>

namespace {

class Colors : public testing::Test {
  protected:
    ~Colors() override {
        for (const int which : {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE})
            host::SetThemeColor(which, std::nullopt);
    }
};

COLORREF BrushColor(HBRUSH brush) {
    LOGBRUSH description{};
    GetObjectW(brush, sizeof description, &description);
    return description.lbColor;
}

TEST_F(Colors, AreTheSystemsAtFirst) {
    IColorManager& manager = *GetColorManager();
    for (const int which : {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_HIGHLIGHT, COLOR_BTNFACE,
                            COLOR_BTNSHADOW, COLOR_GRAYTEXT}) {
        EXPECT_EQ(manager.CustSysColor(which), GetSysColor(which));
        EXPECT_EQ(BrushColor(manager.CustSysColorBrush(which)), GetSysColor(which));
    }
}

TEST_F(Colors, ListsHaveTheColorsOfAWindowAndItsText) {
    EXPECT_EQ(GetColorManager()->GetColor(7), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetColorManager()->GetColor(12), GetSysColor(COLOR_WINDOWTEXT));
}

TEST_F(Colors, OfAnUnknownNumberIsBlack) {
    host::SetThemeColor(COLOR_WINDOW, RGB(1, 2, 3));
    EXPECT_EQ(GetColorManager()->GetColor(99), RGB(0, 0, 0));
}

TEST_F(Colors, AThemeGoesBeforeTheSystem) {
    IColorManager& manager = *GetColorManager();
    host::SetThemeColor(COLOR_WINDOW, RGB(40, 41, 42));
    host::SetThemeColor(COLOR_WINDOWTEXT, RGB(220, 221, 222));
    EXPECT_EQ(manager.CustSysColor(COLOR_WINDOW), RGB(40, 41, 42));
    EXPECT_EQ(manager.GetColor(kWindow), RGB(40, 41, 42));
    EXPECT_EQ(manager.GetColor(kWindowText), RGB(220, 221, 222));
    EXPECT_EQ(BrushColor(manager.CustSysColorBrush(COLOR_WINDOW)), RGB(40, 41, 42));
    EXPECT_EQ(manager.CustSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNFACE));
    host::SetThemeColor(COLOR_WINDOW, std::nullopt);
    EXPECT_EQ(manager.CustSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOW));
}

TEST_F(Colors, ABrushStaysGoodWhenTheThemeChanges) {
    IColorManager& manager = *GetColorManager();
    host::SetThemeColor(COLOR_WINDOW, RGB(40, 41, 42));
    HBRUSH dark = manager.CustSysColorBrush(COLOR_WINDOW);
    host::SetThemeColor(COLOR_WINDOW, RGB(240, 241, 242));
    EXPECT_EQ(BrushColor(manager.CustSysColorBrush(COLOR_WINDOW)), RGB(240, 241, 242));
    EXPECT_EQ(BrushColor(dark), RGB(40, 41, 42));
}

TEST_F(Colors, AThemeThatComesBackHasTheSameBrush) {
    IColorManager& manager = *GetColorManager();
    host::SetThemeColor(COLOR_WINDOW, RGB(40, 41, 42));
    HBRUSH first = manager.CustSysColorBrush(COLOR_WINDOW);
    host::SetThemeColor(COLOR_WINDOW, std::nullopt);
    host::SetThemeColor(COLOR_BTNFACE, RGB(40, 41, 42));
    EXPECT_EQ(manager.CustSysColorBrush(COLOR_BTNFACE), first);
}

TEST_F(Colors, AreMixedPartByPart) {
    EXPECT_EQ(host::MixedColor(RGB(0, 100, 200), RGB(100, 200, 0), 0), RGB(0, 100, 200));
    EXPECT_EQ(host::MixedColor(RGB(0, 100, 200), RGB(100, 200, 0), 100), RGB(100, 200, 0));
    EXPECT_EQ(host::MixedColor(RGB(0, 100, 200), RGB(100, 200, 0), 25), RGB(25, 125, 150));
    EXPECT_EQ(host::MixedColor(RGB(0, 0, 0), RGB(255, 1, 3), 50), RGB(128, 1, 2));
}

}  // namespace
