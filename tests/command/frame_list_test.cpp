#include "command/frame_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

using testing::ElementsAre;

constexpr const char* hint = "; a list of frames looks like 1-10,20-40x2";

std::string FrameListComplaint(const std::string& list) {
    return FaultText<UsageError>([&] { ParseFrames(list); });
}

TEST(FrameList, RangesAndStepsGiveTheirFrames) {
    EXPECT_THAT(ParseFrames("1-3,10-16x2"), ElementsAre(1, 2, 3, 10, 12, 14, 16));
}

TEST(FrameList, ASingleNumberIsOneFrame) {
    EXPECT_THAT(ParseFrames("7"), ElementsAre(7));
}

TEST(FrameList, FramesComeAscendingAndOnce) {
    EXPECT_THAT(ParseFrames("5,1-3,2-5"), ElementsAre(1, 2, 3, 4, 5));
}

TEST(FrameList, NegativeFramesAreTold) {
    EXPECT_THAT(ParseFrames("-2"), ElementsAre(-2));
    EXPECT_THAT(ParseFrames("-2-1"), ElementsAre(-2, -1, 0, 1));
    EXPECT_THAT(ParseFrames("-5--3"), ElementsAre(-5, -4, -3));
}

TEST(FrameList, AStepThatPassesTheEndStopsBeforeIt) {
    EXPECT_THAT(ParseFrames("1-6x4"), ElementsAre(1, 5));
    EXPECT_THAT(ParseFrames("1-6x100"), ElementsAre(1));
}

TEST(FrameList, BlanksAroundCommasAreAllowed) {
    EXPECT_THAT(ParseFrames(" 1 , 3 "), ElementsAre(1, 3));
}

TEST(FrameList, TheEndsOfTheRangeOfFramesAreAllowed) {
    EXPECT_THAT(ParseFrames("-999999,9999999"), ElementsAre(-999999, 9999999));
}

TEST(FrameList, AnEmptyListIsRefused) {
    EXPECT_EQ(FrameListComplaint(""),
              std::string("--frames : expected a frame number, at character 1") + hint);
}

TEST(FrameList, ACommaAtTheEndIsRefused) {
    EXPECT_EQ(FrameListComplaint("1,"),
              std::string("--frames 1,: expected a frame number, at character 3") + hint);
}

TEST(FrameList, AnOpenRangeIsRefused) {
    EXPECT_EQ(
        FrameListComplaint("1-"),
        std::string("--frames 1-: expected the last frame of the range, at character 3") + hint);
}

TEST(FrameList, ABackwardRangeIsRefused) {
    EXPECT_EQ(FrameListComplaint("3-1"),
              std::string("--frames 3-1: the range runs backwards, at character 4") + hint);
}

TEST(FrameList, AStepOfZeroIsRefused) {
    EXPECT_EQ(FrameListComplaint("1-3x0"),
              std::string("--frames 1-3x0: the step must lie between 1 and "
                          "10999998, at character 5") +
                  hint);
}

TEST(FrameList, AnythingElseBehindANumberIsRefused) {
    EXPECT_EQ(FrameListComplaint("1;2"),
              std::string("--frames 1;2: expected a comma, at character 2") + hint);
    EXPECT_EQ(FrameListComplaint("1x2"),
              std::string("--frames 1x2: expected a comma, at character 2") + hint);
}

TEST(FrameList, AFrameBeyondTheHostsTimeIsRefused) {
    const std::string range = " must lie between -999999 and 9999999, at character ";
    EXPECT_EQ(FrameListComplaint("10000000"),
              "--frames 10000000: a frame number" + range + "1" + hint);
    EXPECT_EQ(FrameListComplaint("1-99999999999999"),
              "--frames 1-99999999999999: the last frame of the range" + range + "3" + hint);
}

TEST(FrameList, AMillionFramesAreTheMost) {
    EXPECT_EQ(ParseFrames("1-1000000").size(), 1000000U);
    EXPECT_EQ(FrameListComplaint("0-1000000"),
              std::string("--frames 0-1000000: more than 1000000 frames, at character 10") + hint);
    EXPECT_EQ(
        FrameListComplaint("1-1000000,5"),
        std::string("--frames 1-1000000,5: more than 1000000 frames, at character 12") + hint);
}

}  // namespace
}  // namespace command
