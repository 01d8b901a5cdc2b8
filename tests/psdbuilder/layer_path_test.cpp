// How a path is taken apart, slash by slash.

#include "psdbuilder/layer_path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace psdbuilder {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Path = LayerPath<char>;

TEST(LayerPath, IsSplitAtSlashes) {
    EXPECT_THAT(Path("A/B/C").tokens, ElementsAre("A", "B", "C"));
    EXPECT_THAT(Path("A").tokens, ElementsAre("A"));
}

TEST(LayerPath, KeepsBothSlashesOfADoubledOne) {
    EXPECT_THAT(Path("a//b").tokens, ElementsAre("a//b"));
    EXPECT_THAT(Path("a////b").tokens, ElementsAre("a////b"));
}

TEST(LayerPath, IsSplitAtTheFirstSlashOfARunOfOddLength) {
    EXPECT_THAT(Path("a///b").tokens, ElementsAre("a", "//b"));
    EXPECT_THAT(Path("a/////b/c").tokens, ElementsAre("a", "////b", "c"));
}

TEST(LayerPath, DropsEmptyTokens) {
    EXPECT_THAT(Path("/A/").tokens, ElementsAre("A"));
    EXPECT_THAT(Path("").tokens, IsEmpty());
    EXPECT_THAT(Path("/").tokens, IsEmpty());
    EXPECT_THAT(Path("//").tokens, ElementsAre("//"));
    EXPECT_THAT(Path("///").tokens, ElementsAre("//"));
}

TEST(LayerPath, IsAbsoluteWithOneLeadingSlashOnly) {
    EXPECT_TRUE(Path("/A").absolute);
    EXPECT_TRUE(Path("/").absolute);
    EXPECT_FALSE(Path("A/B").absolute);
    EXPECT_FALSE(Path("").absolute);
    EXPECT_FALSE(Path("//A").absolute);
    EXPECT_FALSE(Path("///A").absolute);
}

TEST(LayerPath, HasALeafAndAParent) {
    EXPECT_EQ(Path("/A/B//b").Leaf(), "B//b");
    EXPECT_THAT(Path("/A/B//b").Parent().tokens, ElementsAre("A"));
    EXPECT_TRUE(Path("/A").Parent().absolute);
    EXPECT_THAT(Path("/A").Parent().tokens, IsEmpty());
    EXPECT_EQ(Path("").Leaf(), "");
    EXPECT_THAT(Path("").Parent().tokens, IsEmpty());
}

TEST(LayerPath, OfUTF16FollowsTheSameRules) {
    const LayerPath<char16_t> path(u"/ä//ö///ü");
    EXPECT_TRUE(path.absolute);
    EXPECT_THAT(path.tokens, ElementsAre(u"ä//ö", u"//ü"));
}

}  // namespace
}  // namespace psdbuilder
