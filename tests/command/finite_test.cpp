#include "command/finite.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace command {
namespace {

TEST(Finite, HalfsLoseNaNAndInfinity) {
    std::vector<std::uint16_t> halfs{0x7c00, 0xfc00, 0x7e00, 0xfc01,
                                     0x7bff, 0xfbff, 0x0001, 0x3c00};
    EXPECT_EQ(MakeFinite(halfs.data(), halfs.size()), 4U);
    EXPECT_EQ(halfs,
              (std::vector<std::uint16_t>{0x7bff, 0xfbff, 0, 0, 0x7bff, 0xfbff, 0x0001, 0x3c00}));
}

TEST(Finite, FloatsLoseNaNAndInfinity) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float largest = std::numeric_limits<float>::max();
    std::vector<float> floats{infinity, -infinity, std::nanf(""), -1.5F, 1e-42F};
    EXPECT_EQ(MakeFinite(floats.data(), floats.size()), 3U);
    EXPECT_EQ(floats, (std::vector<float>{largest, -largest, 0.0F, -1.5F, 1e-42F}));
}

TEST(Finite, ANegativeNaNBecomesPlusZero) {
    float value = -std::nanf("");
    EXPECT_EQ(MakeFinite(&value, 1), 1U);
    EXPECT_FALSE(std::signbit(value));
}

TEST(Finite, FiniteValuesAreLeft) {
    std::vector<float> floats(1000, 0.25F);
    EXPECT_EQ(MakeFinite(floats.data(), floats.size()), 0U);
    EXPECT_EQ(floats, std::vector<float>(1000, 0.25F));
}

}  // namespace
}  // namespace command
