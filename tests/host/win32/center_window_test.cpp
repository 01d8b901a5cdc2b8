#include "host/win32/center_window.h"

#include <gtest/gtest.h>
#include <winutil.h>

#include <string>

namespace {

constexpr RECT SCREEN{0, 0, 1920, 1040};

std::string PlaceText(POINT place) {
    return std::to_string(place.x) + ", " + std::to_string(place.y);
}

TEST(CenterWindow, TheMiddlesFallTogether) {
    EXPECT_EQ(PlaceText(host::CenteredPlace({200, 100}, {300, 200, 900, 800}, SCREEN)), "500, 450");
}

TEST(CenterWindow, AnOddPixelGoesToTheRightAndBelow) {
    EXPECT_EQ(PlaceText(host::CenteredPlace({201, 101}, {300, 200, 900, 800}, SCREEN)), "499, 449");
}

TEST(CenterWindow, AParentAtAnEdgeDoesNotPushItOut) {
    EXPECT_EQ(PlaceText(host::CenteredPlace({200, 100}, {-50, -20, 50, 20}, SCREEN)), "0, 0");
    EXPECT_EQ(PlaceText(host::CenteredPlace({200, 100}, {1900, 1020, 2000, 1120}, SCREEN)),
              "1720, 940");
}

TEST(CenterWindow, AMonitorToTheLeftHasPlacesBelowNothing) {
    constexpr RECT LEFT{-1280, -200, 0, 824};
    EXPECT_EQ(PlaceText(host::CenteredPlace({200, 100}, {-900, 0, -700, 200}, LEFT)), "-900, 50");
    EXPECT_EQ(PlaceText(host::CenteredPlace({200, 100}, {-60, -250, 40, -150}, LEFT)),
              "-200, -200");
}

TEST(CenterWindow, TheLeftUpperPartOfATooLargeOneIsSeen) {
    EXPECT_EQ(PlaceText(host::CenteredPlace({2500, 1200}, {300, 200, 900, 800}, SCREEN)), "0, 0");
}

struct PlacedWindow {
    PlacedWindow(RECT place, HWND parent = nullptr)
        : window(CreateWindowExW(0, L"Static", L"", parent ? WS_CHILD : WS_POPUP, place.left,
                                 place.top, place.right - place.left, place.bottom - place.top,
                                 parent, nullptr, nullptr, nullptr)) {}
    PlacedWindow(const PlacedWindow&) = delete;
    PlacedWindow& operator=(const PlacedWindow&) = delete;
    ~PlacedWindow() { DestroyWindow(window); }

    std::string Place() const {
        RECT place;
        GetWindowRect(window, &place);
        return PlaceText({place.left, place.top}) + " to " + PlaceText({place.right, place.bottom});
    }

    HWND window;
};

RECT WorkArea() {
    RECT area;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

TEST(CenterWindow, KeepsItsSizeInTheMiddleOfTheParent) {
    const PlacedWindow parent({100, 100, 400, 300});
    const PlacedWindow window({0, 0, 100, 50});
    CenterWindow(window.window, parent.window);
    EXPECT_EQ(window.Place(), "200, 175 to 300, 225");
}

TEST(CenterWindow, StaysOnTheScreenOfAParentAtItsEdge) {
    const RECT area = WorkArea();
    const PlacedWindow parent({area.right - 20, area.bottom - 20, area.right, area.bottom});
    const PlacedWindow window({0, 0, 100, 50});
    CenterWindow(window.window, parent.window);
    EXPECT_EQ(window.Place(), PlaceText({area.right - 100, area.bottom - 50}) + " to " +
                                  PlaceText({area.right, area.bottom}));
}

TEST(CenterWindow, WithoutAParentIsInTheMiddleOfTheScreen) {
    const RECT area = WorkArea();
    const PlacedWindow window({0, 0, 100, 50});
    CenterWindow(window.window, nullptr);
    const POINT place{(area.left + area.right - 100) / 2, (area.top + area.bottom - 50) / 2};
    EXPECT_EQ(window.Place(), PlaceText(place) + " to " + PlaceText({place.x + 100, place.y + 50}));
}

TEST(CenterWindow, AMinimisedParentHasNoMiddle) {
    const RECT area = WorkArea();
    const PlacedWindow parent({100, 100, 400, 300});
    ShowWindow(parent.window, SW_SHOWMINNOACTIVE);
    ASSERT_TRUE(IsIconic(parent.window));
    const PlacedWindow window({0, 0, 100, 50});
    CenterWindow(window.window, parent.window);
    const POINT place{(area.left + area.right - 100) / 2, (area.top + area.bottom - 50) / 2};
    EXPECT_EQ(window.Place(), PlaceText(place) + " to " + PlaceText({place.x + 100, place.y + 50}));
}

TEST(CenterWindow, AChildGoesToTheSamePlaceOfTheScreen) {
    const PlacedWindow outer({100, 100, 500, 500});
    const PlacedWindow child({0, 0, 100, 50}, outer.window);
    const PlacedWindow parent({100, 100, 400, 300});
    CenterWindow(child.window, parent.window);
    EXPECT_EQ(child.Place(), "200, 175 to 300, 225");
}

TEST(CenterWindow, LeavesAWindowThatIsNoneAlone) {
    const PlacedWindow window({7, 8, 107, 58});
    CenterWindow(nullptr, window.window);
    EXPECT_EQ(window.Place(), "7, 8 to 107, 58");
}

}  // namespace
