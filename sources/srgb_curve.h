// The sRGB transfer curve (IEC 61966-2-1), and its table in the shape of the host's gamma tables.
#pragma once

#include <array>
#include <cstdint>

namespace sources {

// Linear to encoded, both 0 to 1.
double SRGB(double linear);

// Entry i is the 16-bit encoded value of i / 8191. Process-wide; made at the first call.
const std::array<std::uint16_t, 8192>& SRGBTable();

}  // namespace sources
