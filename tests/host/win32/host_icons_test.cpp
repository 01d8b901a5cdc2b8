#include "host/win32/host_icons.h"

#include <gtest/gtest.h>

#include "tests/host/win32/control_stage.h"

namespace {

constexpr COLORREF PAPER = RGB(255, 255, 255);
constexpr COLORREF INK = RGB(0, 0, 0);
constexpr COLORREF FRONT = RGB(200, 100, 50);
constexpr const wchar_t* ICON_NAMES[] = {
    L"Common/Settings", L"Common/Folder", L"Common/UIComponents/ArrowUp",
    L"Common/UIComponents/ArrowDown", L"MergeAnimation/UpdateList"};

Picture Drawn(const wchar_t* name, int side, int margin = 0) {
    return PictureOf(side + 2 * margin, side + 2 * margin, PAPER, [&](HDC dc) {
        host::DrawIcon(dc, {margin, margin, margin + side, margin + side}, name, {INK, FRONT});
    });
}

TEST(HostIcons, AreKnownByTheirNames) {
    for (const wchar_t* name : ICON_NAMES)
        EXPECT_TRUE(host::HasIcon(name));
    for (const wchar_t* name : {L"", L"Common", L"common/folder", L"Common/Folder ", L"Folder"})
        EXPECT_FALSE(host::HasIcon(name));
    EXPECT_FALSE(host::HasIcon(nullptr));
}

TEST(HostIcons, OfAnUnknownNameNothingIsDrawn) {
    bool drawn = true;
    const Picture picture = PictureOf(16, 16, PAPER, [&](HDC dc) {
        drawn = host::DrawIcon(dc, {0, 0, 16, 16}, L"Common/Nothing", {INK, FRONT});
    });
    EXPECT_FALSE(drawn);
    EXPECT_EQ(picture.Count(PAPER), 256);
}

TEST(HostIcons, InARectangleWithoutAPixelNothingIsDrawn) {
    bool drawn = true;
    const Picture picture = PictureOf(16, 16, PAPER, [&](HDC dc) {
        drawn = host::DrawIcon(dc, {4, 4, 4, 12}, L"Common/Folder", {INK, FRONT});
    });
    EXPECT_FALSE(drawn);
    EXPECT_EQ(picture.Count(PAPER), 256);
}

TEST(HostIcons, AtEverySizeStayInTheirPlace) {
    for (const wchar_t* name : ICON_NAMES) {
        for (const int side : {8, 16, 20, 24, 32, 48}) {
            const Picture picture = Drawn(name, side, 3);
            int inside = 0;
            int outside = 0;
            for (int y = 0; y < picture.height; ++y) {
                for (int x = 0; x < picture.width; ++x) {
                    const bool in = x >= 3 && y >= 3 && x < 3 + side && y < 3 + side;
                    (in ? inside : outside) += picture.At(x, y) != PAPER;
                }
            }
            EXPECT_EQ(outside, 0);
            // A picture and no dot.
            EXPECT_GT(inside, side * side / 6);
            EXPECT_LT(inside, side * side);
        }
    }
}

TEST(HostIcons, AreAllDifferent) {
    for (const wchar_t* first : ICON_NAMES) {
        for (const wchar_t* second : ICON_NAMES)
            EXPECT_EQ(Drawn(first, 16).pixels == Drawn(second, 16).pixels, first == second);
    }
}

TEST(HostIcons, TheArrowsPointUpAndDown) {
    const Picture up = Drawn(L"Common/UIComponents/ArrowUp", 16);
    const Picture down = Drawn(L"Common/UIComponents/ArrowDown", 16);
    for (int y = 8; y < 14; ++y) {
        for (int x = 6; x < 10; ++x) {
            EXPECT_EQ(up.At(x, y), INK);
            EXPECT_EQ(down.At(x, 15 - y), INK);
        }
        EXPECT_EQ(up.At(4, y), PAPER);
        EXPECT_EQ(up.At(11, y), PAPER);
    }
    // The head is wider than the shaft.
    EXPECT_EQ(up.At(4, 7), INK);
    EXPECT_EQ(up.At(11, 7), INK);
    EXPECT_EQ(down.At(4, 8), INK);
    EXPECT_EQ(down.At(11, 8), INK);
    EXPECT_EQ(up.At(0, 0), PAPER);
}

TEST(HostIcons, AFolderHasAFrontOfItsOwnColor) {
    const Picture folder = Drawn(L"Common/Folder", 16);
    EXPECT_EQ(folder.At(8, 9), FRONT);
    EXPECT_EQ(folder.At(1, 9), INK);
    EXPECT_EQ(folder.At(14, 9), INK);
    EXPECT_EQ(folder.At(0, 9), PAPER);
}

TEST(HostIcons, AHalfCoveredPixelIsHalfMixed) {
    // The folder's upper edge runs through the middle of row 4.
    EXPECT_EQ(Drawn(L"Common/Folder", 16).At(11, 4), RGB(127, 127, 127));
    EXPECT_EQ(Drawn(L"Common/Folder", 32).At(22, 8), PAPER);
    EXPECT_EQ(Drawn(L"Common/Folder", 32).At(22, 9), INK);
}

TEST(HostIcons, TheWheelHasAHole) {
    const Picture wheel = Drawn(L"Common/Settings", 16);
    EXPECT_EQ(wheel.At(8, 8), PAPER);
    EXPECT_EQ(wheel.At(12, 8), INK);
    EXPECT_EQ(wheel.At(8, 4), INK);
    EXPECT_EQ(wheel.At(0, 0), PAPER);
}

}  // namespace
