// Four-character codes as the 32-bit numbers whose big-endian bytes spell them.
#pragma once

#include <cstdint>

namespace psdfile {

consteval std::uint32_t FourCharCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) {
        code = code << 8 | static_cast<unsigned char>(text[i]);
    }
    return code;
}

}  // namespace psdfile
