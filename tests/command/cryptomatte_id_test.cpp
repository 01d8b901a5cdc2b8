#include "command/cryptomatte_id.h"

#include <gtest/gtest.h>

#include <Imath/half.h>
#include <bit>
#include <cmath>

namespace command {
namespace {

TEST(CryptomatteID, IsTheHashOfTheName) {
    EXPECT_EQ(CryptomatteID("bunny"), 0x13851a76U);
    EXPECT_EQ(CryptomatteID("W\xc3\xbcrfel"), 0xc959a2b5U);
}

TEST(CryptomatteID, NeverMakesAFloatThatChanges) {
    // Its hash would be a denormal float.
    EXPECT_EQ(CryptomatteID("Pot/Lid"), 0x00c720e2U);
    for (const std::uint32_t hash : {0x00000000U, 0x007fffffU, 0x80000001U, 0x004720e2U,
                                     0x7f800000U, 0x7fc00000U, 0xffffffffU}) {
        EXPECT_TRUE(std::isnormal(std::bit_cast<float>(PixelID(hash)))) << hash;
        EXPECT_EQ(PixelID(PixelID(hash)), PixelID(hash)) << hash;
        EXPECT_EQ(PixelID(hash) ^ hash, 0x00800000U) << hash;
    }
    EXPECT_EQ(PixelID(0x00800000), 0x00800000U);
    EXPECT_EQ(PixelID(0x7f7fffff), 0x7f7fffffU);
}

TEST(HexText, HasEightDigitsInLowerCase) {
    EXPECT_EQ(HexText(0x00c720e2), "00c720e2");
    EXPECT_EQ(HexText(0xDBA7EC85), "dba7ec85");
    EXPECT_EQ(HexText(0), "00000000");
}

TEST(FitsHalf, IsTrueForEveryHalfAndForNothingElse) {
    for (std::uint32_t bits = 0; bits < 0x10000; ++bits) {
        Imath::half half;
        half.setBits(static_cast<unsigned short>(bits));
        const auto id = std::bit_cast<std::uint32_t>(static_cast<float>(half));
        ASSERT_TRUE(FitsHalf(id)) << bits;
        // One bit more than a half has; what a signalling NaN becomes is of no interest.
        const std::uint32_t odd = id ^ 1;
        if (std::isnan(std::bit_cast<float>(odd))) continue;
        ASSERT_FALSE(FitsHalf(odd)) << bits;
    }
    // Exponents beyond a half's.
    EXPECT_FALSE(FitsHalf(std::bit_cast<std::uint32_t>(65536.0F)));
    EXPECT_FALSE(FitsHalf(std::bit_cast<std::uint32_t>(std::ldexp(1.0F, -25))));
    EXPECT_FALSE(FitsHalf(std::bit_cast<std::uint32_t>(std::ldexp(3.0F, -25))));
    EXPECT_FALSE(FitsHalf(CryptomatteID("bunny")));
}

}  // namespace
}  // namespace command
