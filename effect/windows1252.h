// The code page of 8-bit text where the system has none of its own.
#pragma once

#include <array>

namespace effect {

// Windows-1252 from 0x80 to 0x9F; 0 where the code page has no character. Source: the mapping table
// of the Unicode consortium (MAPPINGS/VENDORS/MICSFT/WINDOWS/CP1252.TXT). All other bytes are the
// characters of their own numbers.
inline constexpr std::array<char16_t, 32> windows1252Controls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace effect
