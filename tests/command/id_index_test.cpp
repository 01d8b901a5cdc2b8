#include "command/id_index.h"

#include <gtest/gtest.h>

#include <random>
#include <unordered_map>

namespace command {
namespace {

TEST(IdIndex, GivesNumbersInTheOrderOfAdding) {
    IdIndex index;
    EXPECT_EQ(index.Add(0xdba7ec85), 0U);
    EXPECT_EQ(index.Add(7), 1U);
    EXPECT_EQ(index.Add(0xdba7ec85), 0U);
    EXPECT_EQ(index.Size(), 2U);
    EXPECT_EQ(index.Find(7), 1U);
}

TEST(IdIndex, FindsNothingThatWasNotAdded) {
    IdIndex index;
    EXPECT_EQ(index.Find(0), IdIndex::none);
    index.Add(1);
    EXPECT_EQ(index.Find(0), IdIndex::none);
    EXPECT_EQ(index.Find(2), IdIndex::none);
}

TEST(IdIndex, TakesEveryIdZeroAndAllBitsIncluded) {
    const std::uint32_t ids[] = {0, 0xffffffff, 0x80000000};
    const IdIndex index(ids);
    EXPECT_EQ(index.Find(0), 0U);
    EXPECT_EQ(index.Find(0xffffffff), 1U);
    EXPECT_EQ(index.Find(0x80000000), 2U);
    EXPECT_EQ(index.Size(), 3U);
}

TEST(IdIndex, IsRightForManyIdsOfAnyKind) {
    // Whole numbers as renderers count them, floats of whole numbers, and hashes.
    std::mt19937 generator(1);
    const auto random = [&] { return static_cast<std::uint32_t>(generator()); };
    std::unordered_map<std::uint32_t, std::uint32_t> expected;
    IdIndex index;
    for (std::uint32_t i = 0; i < 200'000; ++i) {
        const std::uint32_t id = i % 3 == 0 ? i : i % 3 == 1 ? i << 13 : random();
        const auto number = static_cast<std::uint32_t>(expected.size());
        const std::uint32_t given = expected.try_emplace(id, number).first->second;
        ASSERT_EQ(index.Add(id), given);
    }
    ASSERT_EQ(index.Size(), expected.size());
    for (const auto& [id, number] : expected)
        ASSERT_EQ(index.Find(id), number);
    for (int i = 0; i < 100'000; ++i) {
        const std::uint32_t id = random();
        if (expected.contains(id)) continue;
        ASSERT_EQ(index.Find(id), IdIndex::none);
    }
}

}  // namespace
}  // namespace command
