#include "ui/hot_zones.h"

#include <gtest/gtest.h>

namespace {

using ui::HotZone;

constexpr ui::ZoneRectangle aboutZone{3, 4, 30, 15};
constexpr ui::ZoneRectangle helpZone{185, 4, 208, 14};

HotZone ZoneAt(int x, int y) {
    return ui::HotZoneAt({x, y}, aboutZone, helpZone);
}

TEST(HotZones, APointInsideIsInItsZone) {
    EXPECT_EQ(ZoneAt(10, 10), HotZone::About);
    EXPECT_EQ(ZoneAt(200, 10), HotZone::Help);
    EXPECT_EQ(ZoneAt(100, 10), HotZone::None);
}

TEST(HotZones, ThePointsNextToTheSidesAreInside) {
    for (const auto& [x, y] : {std::pair{4, 5}, {29, 5}, {4, 14}, {29, 14}})
        EXPECT_EQ(ZoneAt(x, y), HotZone::About) << x << ' ' << y;
}

TEST(HotZones, ThePointsOnTheSidesAreNot) {
    for (const auto& [x, y] : {std::pair{3, 10}, {30, 10}, {10, 4}, {10, 15}})
        EXPECT_EQ(ZoneAt(x, y), HotZone::None) << x << ' ' << y;
}

TEST(HotZones, TheButtonThatComesUpOpensTheZone) {
    const ui::HotZoneAnswer about = ui::OnHotZoneMessage(514, HotZone::About);
    EXPECT_TRUE(about.handled);
    EXPECT_EQ(about.opens, HotZone::About);
    EXPECT_EQ(ui::OnHotZoneMessage(514, HotZone::Help).opens, HotZone::Help);
}

TEST(HotZones, MovesPressesAndTheCursorOnlyShowTheHand) {
    for (const UINT message : {32U, 512U, 513U}) {
        const ui::HotZoneAnswer answer = ui::OnHotZoneMessage(message, HotZone::Help);
        EXPECT_TRUE(answer.handled) << message;
        EXPECT_EQ(answer.opens, HotZone::None) << message;
    }
}

TEST(HotZones, AllElseGoesOn) {
    for (const UINT message : {31U, 33U, 511U, 515U, 516U, 0U})
        EXPECT_FALSE(ui::OnHotZoneMessage(message, HotZone::About).handled) << message;
    for (const UINT message : {32U, 512U, 514U}) {
        const ui::HotZoneAnswer answer = ui::OnHotZoneMessage(message, HotZone::None);
        EXPECT_FALSE(answer.handled) << message;
        EXPECT_EQ(answer.opens, HotZone::None) << message;
    }
}

}  // namespace
