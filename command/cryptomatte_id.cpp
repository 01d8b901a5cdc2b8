#include "command/cryptomatte_id.h"

#include <bit>

#include "command/murmur_hash.h"

namespace command {
namespace {

std::uint32_t ExponentOf(std::uint32_t bits) {
    return bits >> 23 & 0xff;
}

}  // namespace

std::uint32_t PixelID(std::uint32_t hash) {
    const std::uint32_t exponent = ExponentOf(hash);
    return exponent == 0 || exponent == 255 ? hash ^ std::uint32_t{1} << 23 : hash;
}

std::uint32_t CryptomatteID(std::string_view name) {
    return PixelID(MurmurHash3(name));
}

std::string HexText(std::uint32_t id) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (int shift = 28; shift >= 0; shift -= 4)
        text += digits[id >> shift & 15];
    return text;
}

bool FitsHalf(std::uint32_t id) {
    // A half has 10 bits of mantissa where a float has 23, and exponents from -14 to 15 (a float's
    // 113 to 142). Below them it loses a bit of mantissa with each step, down to 2 to the -24.
    const std::uint32_t exponent = ExponentOf(id);
    const int zeros = std::countr_zero(id & 0x7fffff);
    if (exponent == 255 || (exponent >= 113 && exponent <= 142)) return zeros >= 13;
    if (exponent >= 103 && exponent < 113) return zeros >= 13 + static_cast<int>(113 - exponent);
    return (id & 0x7fffffff) == 0;
}

}  // namespace command
