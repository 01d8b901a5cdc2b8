#include "effect/utf8.h"

#include <cstdint>

namespace effect {
namespace {

constexpr char32_t replacement = 0xFFFD;

struct Lead {
    int following;
    char32_t bits;
    // Below it a character is written with fewer bytes.
    char32_t lowest;
};

// `following` is -1 for a byte that begins no character.
Lead LeadOf(std::uint8_t byte) {
    if (byte < 0x80) return {0, byte, 0};
    if ((byte & 0xE0) == 0xC0) return {1, byte & 0x1FU, 0x80};
    if ((byte & 0xF0) == 0xE0) return {2, byte & 0x0FU, 0x800};
    if ((byte & 0xF8) == 0xF0) return {3, byte & 0x07U, 0x10000};
    return {-1, replacement, 0};
}

bool IsCharacter(char32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// The character at `text`, which moves behind it.
char32_t Take(const char*& text) {
    const Lead lead = LeadOf(static_cast<std::uint8_t>(*text++));
    if (lead.following < 0) return replacement;
    char32_t code = lead.bits;
    const char* next = text;
    for (int i = 0; i < lead.following; ++i) {
        const auto byte = static_cast<std::uint8_t>(*next);
        // The terminator fails here too.
        if ((byte & 0xC0) != 0x80) return replacement;
        code = code << 6 | (byte & 0x3FU);
        ++next;
    }
    if (code < lead.lowest || !IsCharacter(code)) return replacement;
    text = next;
    return code;
}

}  // namespace

std::basic_string<MCHAR> FromUtf8(const char* text) {
    std::basic_string<MCHAR> units;
    while (text && *text) {
        const char32_t code = Take(text);
        if (code < 0x10000) {
            units.push_back(static_cast<MCHAR>(code));
            continue;
        }
        units.push_back(static_cast<MCHAR>(0xD800 + ((code - 0x10000) >> 10)));
        units.push_back(static_cast<MCHAR>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    }
    return units;
}

}  // namespace effect
