#include <gtest/gtest.h>
#include <random.h>

#include <algorithm>
#include <vector>

#include "host/application.h"

namespace {

std::vector<std::uint32_t> Draw(int count) {
    Random random;
    std::vector<std::uint32_t> numbers(static_cast<std::size_t>(count));
    std::generate(numbers.begin(), numbers.end(), [&] { return random.get(); });
    return numbers;
}

TEST(RandomNumbers, StayWithinTheirRangeAndReachBothHalvesOfIt) {
    host::ResetApplication();
    int upper = 0;
    for (const std::uint32_t number : Draw(10000)) {
        EXPECT_LE(number, Random::s_rand_max);
        upper += number > Random::s_rand_max / 2;
    }
    EXPECT_GT(upper, 4500);
    EXPECT_LT(upper, 5500);
}

TEST(RandomNumbers, DifferFromGeneratorToGenerator) {
    host::ResetApplication();
    EXPECT_NE(Draw(4), Draw(4));
}

TEST(RandomNumbers, WithAFixedSeedARunRepeatsAnotherGeneratorForGenerator) {
    host::ResetApplication();
    host::App().settings.randomSeed = 5;
    const auto first = Draw(4);
    const auto second = Draw(4);
    EXPECT_NE(first, second);
    host::ResetApplication();
    host::App().settings.randomSeed = 5;
    EXPECT_EQ(Draw(4), first);
    EXPECT_EQ(Draw(4), second);
    host::ResetApplication();
}

}  // namespace
