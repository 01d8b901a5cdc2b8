#include "command/id_lists.h"

#include <gtest/gtest.h>

#include <array>

namespace command {
namespace {

std::string List(std::initializer_list<std::uint32_t> numbers, std::uint32_t largest = 65535) {
    NumberSet set;
    for (const std::uint32_t number : numbers)
        set.Add(number);
    return set.List(largest);
}

TEST(NumberSet, ListsRunsAsRanges) {
    EXPECT_EQ(List({7, 1, 3, 2}), "1-3, 7");
    EXPECT_EQ(List({1, 2}), "1-2");
    EXPECT_EQ(List({5}), "5");
    EXPECT_EQ(List({65534, 65535}), "65534-65535");
}

TEST(NumberSet, KeepsNumbersFrom1To65535) {
    EXPECT_EQ(List({0}), "");
    EXPECT_EQ(List({65536, 0xffffffff}), "");
    EXPECT_EQ(List({0, 65536, 9}), "9");
}

TEST(NumberSet, ListsNothingAboveTheLargest) {
    EXPECT_EQ(List({254, 255, 256, 300}, 255), "254-255");
    EXPECT_EQ(List({256}, 255), "");
}

TEST(NumberSet, KnowsItsLargest) {
    NumberSet set;
    EXPECT_EQ(set.Largest(), 0U);
    set.Add(0);
    set.Add(300);
    set.Add(7);
    EXPECT_EQ(set.Largest(), 300U);
}

TEST(NumberSet, IsEmptyUntilANumberIsThereThatCounts) {
    NumberSet set;
    EXPECT_TRUE(set.IsEmpty());
    set.Add(0);
    EXPECT_TRUE(set.IsEmpty());
    set.Add(1);
    EXPECT_FALSE(set.IsEmpty());
}

TEST(NumberSet, ARowAddsAllItsNumbers) {
    NumberSet set;
    set.AddRow(std::array<std::uint32_t, 7>{0, 4, 4, 0, 4, 9, 70000});
    EXPECT_EQ(set.List(65535), "4, 9");
    set.AddRow({});
    EXPECT_EQ(set.List(65535), "4, 9");
}

}  // namespace
}  // namespace command
