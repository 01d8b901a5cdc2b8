#include "sources/render_id_set.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

namespace {

using sources::RenderIDSet;
using testing::ElementsAre;

std::vector<std::uint16_t> Members(const RenderIDSet& ids) {
    std::vector<std::uint16_t> members;
    ids.ForEach([&members](std::uint16_t id) { members.push_back(id); });
    return members;
}

TEST(RenderIDSet, HasWhatWasAddedAndNothingElse) {
    RenderIDSet ids;
    ids.Add(100);
    EXPECT_TRUE(ids.Contains(100));
    for (const std::uint16_t id :
         std::initializer_list<std::uint16_t>{0, 36, 63, 64, 99, 101, 127, 128, 164, 65535}) {
        EXPECT_FALSE(ids.Contains(id)) << id;
    }
    EXPECT_THAT(Members(ids), ElementsAre(100));
}

TEST(RenderIDSet, IsEmptyAtFirst) {
    const RenderIDSet ids;
    EXPECT_FALSE(ids.Contains(0));
    EXPECT_FALSE(ids.Contains(65535));
    EXPECT_THAT(Members(ids), ElementsAre());
}

TEST(RenderIDSet, GrowsInBothDirections) {
    RenderIDSet ids;
    for (const std::uint16_t id :
         std::initializer_list<std::uint16_t>{40000, 65535, 0, 40000, 63, 64}) {
        ids.Add(id);
    }
    EXPECT_THAT(Members(ids), ElementsAre(0, 63, 64, 40000, 65535));
}

TEST(RenderIDSet, BehavesAsASetOfTheStandardLibrary) {
    std::mt19937 random(3);
    for (int round = 0; round < 20; ++round) {
        RenderIDSet ids;
        std::set<std::uint16_t> expected;
        for (int i = 0; i < 200; ++i) {
            const auto id = static_cast<std::uint16_t>(random() % (round % 2 ? 300 : 65536));
            ids.Add(id);
            expected.insert(id);
        }
        for (unsigned id = 0; id < 65536; ++id) {
            ASSERT_EQ(ids.Contains(static_cast<std::uint16_t>(id)),
                      expected.count(static_cast<std::uint16_t>(id)) == 1);
        }
        EXPECT_TRUE(std::ranges::equal(Members(ids), expected));
    }
}

}  // namespace
