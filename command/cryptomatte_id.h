// Ids of Cryptomatte: 32 bits, which the pixels hold as a float. They are compared by their bits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace command {

// What pixels hold for a hash: with the lowest exponent bit flipped where the float would be zero,
// denormal, infinite or no number. Flipped once, it stays.
std::uint32_t PixelID(std::uint32_t hash);

// The id of a UTF-8 name.
std::uint32_t CryptomatteID(std::string_view name);

// 8 digits, lower case: the name of a matte that no manifest names.
std::string HexText(std::uint32_t id);

// Whether a half float could hold it. One id in some thousands is so by chance; a frame of nothing
// else went through half floats, and its ids are no longer those of the manifest.
bool FitsHalf(std::uint32_t id);

}  // namespace command
