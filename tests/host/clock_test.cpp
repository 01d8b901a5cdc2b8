#include <gtest/gtest.h>
#include <maxtypes.h>

#include "host/application.h"

namespace {

TEST(Clock, TicksPerFrameFollowTheFrameRate) {
    host::ResetApplication();
    EXPECT_EQ(GetTicksPerFrame(), 160);
    host::App().settings.frameRate = 25;
    EXPECT_EQ(GetTicksPerFrame(), 192);
}

TEST(Clock, AFrameRateOutOfRangeStillGivesTicksAboveZero) {
    host::ResetApplication();
    host::App().settings.frameRate = 100000;
    EXPECT_EQ(GetTicksPerFrame(), 1);
    host::App().settings.frameRate = 0;
    EXPECT_EQ(GetTicksPerFrame(), 4800);
}

}  // namespace
