#include "host/nearest_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace host {
namespace {

using testing::ElementsAre;

TEST(EditDistance, CountsLettersToChange) {
    EXPECT_EQ(EditDistance("", ""), 0U);
    EXPECT_EQ(EditDistance("", "abc"), 3U);
    EXPECT_EQ(EditDistance("abc", ""), 3U);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
    EXPECT_EQ(EditDistance("ab", "ba"), 2U);
}

TEST(EditDistance, DoesntMindCase) {
    EXPECT_EQ(EditDistance("BitDepth", "bitdepth"), 0U);
}

TEST(NearestNames, ComeNearestFirst) {
    EXPECT_THAT(NearestNames("colour", {"depth", "color", "colours", "dolor"}),
                ElementsAre("color", "colours", "dolor"));
}

TEST(NearestNames, ANameThatContainsTheWordIsNear) {
    EXPECT_THAT(NearestNames("depth", {"legacyBitDepth", "autoSort", "path"}),
                ElementsAre("legacyBitDepth", "path"));
}

TEST(NearestNames, GiveAtLeastOne) {
    EXPECT_THAT(NearestNames("zzz", {"abcdefgh", "ijk"}), ElementsAre("ijk"));
    EXPECT_THAT(NearestNames("", {"b", "ab"}), ElementsAre("b"));
    EXPECT_THAT(NearestNames("a", {}), ElementsAre());
}

TEST(Joined, PutsCommasBetween) {
    EXPECT_EQ(Joined({}), "");
    EXPECT_EQ(Joined({"a", "b"}), "a, b");
}

}  // namespace
}  // namespace host
