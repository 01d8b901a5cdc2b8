#include "ui/splitter_limits.h"

#include <gtest/gtest.h>

namespace {

TEST(SplitterLimits, LieBelowTheListInsetFromItsSides) {
    const ui::SplitterPlace place = ui::SplitterBelow(10, 300, 200);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 200);
    EXPECT_EQ(place.width, 230);
    EXPECT_EQ(place.height, 6);
    EXPECT_EQ(ui::SplitterBelow(10, 50, 200).width, 0);
}

TEST(SplitterLimits, FollowTheMouseFromWhereItGrips) {
    // The list from 50 to 200, gripped 3 pixels below its bottom.
    const ui::SplitterDrag drag(50, 200, 1000, 203);
    EXPECT_EQ(drag.Bottom(203), 200);
    EXPECT_EQ(drag.Difference(203), 0);
    EXPECT_EQ(drag.Bottom(243), 240);
    EXPECT_EQ(drag.Difference(243), 40);
    EXPECT_EQ(drag.Difference(193), -10);
}

TEST(SplitterLimits, LeaveTheListItsLeastAndGreatestHeight) {
    const ui::SplitterDrag drag(50, 200, 1000, 203);
    EXPECT_EQ(drag.Bottom(92), 89);
    EXPECT_EQ(drag.Bottom(91), 89);
    EXPECT_EQ(drag.Bottom(-5000), 89);
    EXPECT_EQ(drag.Difference(-5000), -111);
    EXPECT_EQ(drag.Bottom(853), 850);
    EXPECT_EQ(drag.Bottom(5000), 850);
    EXPECT_EQ(drag.Difference(5000), 650);
}

TEST(SplitterLimits, EndWithThePanel) {
    const ui::SplitterDrag drag(50, 200, 400, 200);
    EXPECT_EQ(drag.Bottom(400), 400);
    EXPECT_EQ(drag.Bottom(401), 400);
}

TEST(SplitterLimits, OfAListNearThePanelsEndAreItsLeastHeight) {
    const ui::SplitterDrag drag(50, 200, 60, 200);
    EXPECT_EQ(drag.Bottom(210), 89);
    EXPECT_EQ(drag.Difference(200), 0) << "a click alone changes nothing";
    EXPECT_EQ(drag.Difference(201), -111);
}

}  // namespace
