#include "command/frame_pattern.h"

#include <gtest/gtest.h>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

std::string PathOf(const std::string& path, int frame) {
    const auto pattern = FindFramePattern(path);
    return pattern ? pattern->PathOf(frame) : "none";
}

std::string Stripped(const std::string& path) {
    return WithoutFramePattern(FindFramePattern(path).value());
}

TEST(FramePattern, HashesStandForThatManyDigits) {
    EXPECT_EQ(PathOf("a.####.exr", 7), "a.0007.exr");
    EXPECT_EQ(PathOf("a#.exr", 7), "a7.exr");
    EXPECT_EQ(PathOf("a.####.exr", 12345), "a.12345.exr");
}

TEST(FramePattern, PercentGivesItsWidth) {
    EXPECT_EQ(PathOf("a.%04d.exr", 7), "a.0007.exr");
    EXPECT_EQ(PathOf("a.%d.exr", 7), "a.7.exr");
    EXPECT_EQ(PathOf("a.%5d.exr", 7), "a.00007.exr");
}

TEST(FramePattern, DollarFGivesItsWidth) {
    EXPECT_EQ(PathOf("a.$F4.exr", 7), "a.0007.exr");
    EXPECT_EQ(PathOf("a.$F.exr", 7), "a.7.exr");
}

TEST(FramePattern, ANegativeFrameCountsItsSignAsADigit) {
    EXPECT_EQ(PathOf("a.####.exr", -5), "a.-005.exr");
}

TEST(FramePattern, AWidthBeyondReasonIsCutTo20) {
    EXPECT_EQ(PathOf("%999999999999999999999d", 7), "none");
    EXPECT_EQ(PathOf("%999d", 7), "00000000000000000007");
    EXPECT_EQ(PathOf(std::string(30, '#'), 7), "00000000000000000007");
}

TEST(FramePattern, FoldersAreNotLookedAt) {
    EXPECT_EQ(PathOf("shot##/a.exr", 1), "none");
    EXPECT_EQ(PathOf("shot##/a.##.exr", 1), "shot##/a.01.exr");
}

TEST(FramePattern, OtherPercentsAndDollarsAreLetters) {
    EXPECT_EQ(PathOf("100%.exr", 1), "none");
    EXPECT_EQ(PathOf("a%04x.exr", 1), "none");
    EXPECT_EQ(PathOf("$HOME.exr", 1), "none");
}

TEST(FramePattern, TwoPatternsAreRefused) {
    EXPECT_EQ(FaultText<UsageError>([] { FindFramePattern("a#_%04d.exr"); }),
              "a#_%04d.exr: the name holds more than one place for the frame number; leave one of "
              "them");
}

TEST(FramePattern, WithoutItThePathKeepsTheMarkBeforeTheNumber) {
    EXPECT_EQ(Stripped("in/a.####.exr"), "in/a..exr");
    EXPECT_EQ(Stripped("a_%04d.exr"), "a_.exr");
    EXPECT_EQ(Stripped("a$F4.exr"), "a.exr");
    EXPECT_EQ(Stripped("####.exr"), ".exr");
}

TEST(FramePattern, APatternInTheMiddleMovesToTheEndWithItsMark) {
    EXPECT_EQ(Stripped("a.####.beauty.exr"), "a.beauty..exr");
    EXPECT_EQ(Stripped("a_####_beauty.exr"), "a_beauty_.exr");
    EXPECT_EQ(Stripped("a####b.exr"), "ab.exr");
}

TEST(FramePattern, TellsWhetherItStandsBeforeTheExtension) {
    EXPECT_TRUE(IsBeforeExtension(FindFramePattern("a.####.psd").value()));
    EXPECT_FALSE(IsBeforeExtension(FindFramePattern("a.####.b.psd").value()));
    EXPECT_FALSE(IsBeforeExtension(FindFramePattern("a####b.psd").value()));
    EXPECT_TRUE(IsBeforeExtension(FindFramePattern("a####").value()));
}

}  // namespace
}  // namespace command
