// Numbers with 16 bits behind the point, as resolutions and curves of profiles have them.
#pragma once

#include <cmath>
#include <cstdint>

namespace psdfile {

// Truncated towards 0, and cut to the low 32 bits; 0 for what is no number of 64 bits. Negative
// numbers are in two's complement.
inline std::uint32_t FixedPoint16(double number) {
    const double scaled = number * 65536.0;
    if (!(std::abs(scaled) < 9.2e18)) return 0;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(scaled));
}

}  // namespace psdfile
