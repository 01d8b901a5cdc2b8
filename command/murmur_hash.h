// The hash that Cryptomatte makes ids of.
#pragma once

#include <cstdint>
#include <string_view>

namespace command {

// MurmurHash3 of 32 bits in its variant for 32-bit processors; the same on every machine.
std::uint32_t MurmurHash3(std::string_view bytes, std::uint32_t seed = 0);

}  // namespace command
