#include "sources/dither.h"

#include <gtest/gtest.h>

namespace {

// The generator once more, step by step, in wide arithmetic.
std::uint32_t SecondWay(std::uint64_t& x, std::uint64_t& y) {
    x = (36969 * (x % 65536) + x / 65536) % 4294967296;
    y = (18000 * (y % 65536) + y / 65536) % 4294967296;
    return static_cast<std::uint32_t>((x * 65536 + y) % 256);
}

TEST(Dither, IsSeededFromTheAddressAndFollowsItsTwoRecurrences) {
    const auto address = std::uintptr_t{0x0000123456789ABC};
    sources::SeedDither(reinterpret_cast<const void*>(address));
    const std::uint64_t seed = 0x56789ABC ^ 0x00001234;
    std::uint64_t x = seed ^ 0x159A55E5;
    std::uint64_t y = seed ^ 0x1F123BB5;
    for (int i = 0; i < 100000; ++i)
        ASSERT_EQ(sources::NextDither(), SecondWay(x, y)) << i;
}

}  // namespace
