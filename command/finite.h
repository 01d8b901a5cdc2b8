// Pixels without NaN and infinity, which no document can hold.
#pragma once

#include <cstddef>
#include <cstdint>

namespace command {

// NaN becomes 0, an infinity the largest finite value of its sign. Returns how many values were
// changed. Halfs are given by their bits.
std::uint64_t MakeFinite(std::uint16_t* halfs, std::size_t count);
std::uint64_t MakeFinite(float* floats, std::size_t count);

}  // namespace command
