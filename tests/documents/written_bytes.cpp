// Bytes to text and back.

#include "tests/documents/written_bytes.h"

#include <sstream>

#include "psdfile/stream_state.h"

namespace psdfile {

std::string Hex(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string hex;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (!hex.empty()) hex += ' ';
        hex += digits[value >> 4];
        hex += digits[value & 15];
    }
    return hex;
}

std::string FromHex(std::string_view hex) {
    std::string digits;
    for (const char character : hex) {
        if (character != ' ') digits += character;
    }
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

std::string WrittenBytes(PSDPart& part, bool psb) {
    std::stringstream stream;
    PSBMode(stream) = psb ? 1 : 0;
    stream << part;
    return stream.good() ? stream.str() : "the stream failed";
}

std::string WrittenHex(PSDPart& part, bool psb) {
    return Hex(WrittenBytes(part, psb));
}

std::string WrittenHex(PSDPart&& part, bool psb) {
    return WrittenHex(part, psb);
}

}  // namespace psdfile
