#include "host/text.h"

#include <cstdint>

namespace host {
namespace {

constexpr char32_t REPLACEMENT = 0xfffd;

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xd800 && unit <= 0xdbff;
}
bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xdc00 && unit <= 0xdfff;
}

// Takes one character off the front. What can begin no character, and each beginning that breaks
// off, is one replacement character.
char32_t TakeUtf8(std::string_view& text) {
    const auto byteAt = [&](std::size_t at) { return static_cast<std::uint8_t>(text[at]); };
    const std::uint8_t lead = byteAt(0);
    std::size_t taken = 1;
    char32_t point = lead;
    std::size_t length = 1;
    // The range of the second byte, by which overlong forms, surrogates and what is above U+10FFFF
    // are told at once.
    std::uint8_t low = 0x80;
    std::uint8_t high = 0xbf;
    if (lead >= 0xc2 && lead <= 0xdf) {
        length = 2;
        point = lead & 0x1fU;
    } else if (lead >= 0xe0 && lead <= 0xef) {
        length = 3;
        point = lead & 0x0fU;
        low = lead == 0xe0 ? 0xa0 : low;
        high = lead == 0xed ? 0x9f : high;
    } else if (lead >= 0xf0 && lead <= 0xf4) {
        length = 4;
        point = lead & 0x07U;
        low = lead == 0xf0 ? 0x90 : low;
        high = lead == 0xf4 ? 0x8f : high;
    } else if (lead >= 0x80) {
        point = REPLACEMENT;
    }
    while (taken < length && taken < text.size() && byteAt(taken) >= low && byteAt(taken) <= high) {
        point = (point << 6) | (byteAt(taken) & 0x3fU);
        ++taken;
        low = 0x80;
        high = 0xbf;
    }
    text.remove_prefix(taken);
    return taken < length ? REPLACEMENT : point;
}

// Takes one character off the front; a lone surrogate comes as it is.
char32_t TakeUtf16(const MCHAR*& text) {
    const auto first = static_cast<char32_t>(*text++);
    if (IsHighSurrogate(first) && IsLowSurrogate(static_cast<char32_t>(*text))) {
        const auto second = static_cast<char32_t>(*text++);
        return 0x10000 + ((first - 0xd800) << 10) + (second - 0xdc00);
    }
    return first;
}

void AppendUtf8(std::string& text, char32_t point) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    const auto tail = [](char32_t bits) { return 0x80U | (bits & 0x3fU); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xc0U | (point >> 6));
        put(tail(point));
    } else if (point < 0x10000) {
        put(0xe0U | (point >> 12));
        put(tail(point >> 6));
        put(tail(point));
    } else {
        put(0xf0U | (point >> 18));
        put(tail(point >> 12));
        put(tail(point >> 6));
        put(tail(point));
    }
}

MCHAR AsciiLower(MCHAR unit) {
    return unit >= _M('A') && unit <= _M('Z') ? static_cast<MCHAR>(unit - _M('A') + _M('a')) : unit;
}

}  // namespace

MSTR FromUtf8(std::string_view text) {
    std::basic_string<MCHAR> units;
    units.reserve(text.size());
    while (!text.empty()) {
        const char32_t point = TakeUtf8(text);
        if (point < 0x10000) {
            units += static_cast<MCHAR>(point);
        } else {
            units += static_cast<MCHAR>(0xd800 + ((point - 0x10000) >> 10));
            units += static_cast<MCHAR>(0xdc00 + (point & 0x3ffU));
        }
    }
    return MSTR(std::move(units));
}

std::string ToUtf8(const MCHAR* text) {
    std::string bytes;
    while (text && *text) {
        const char32_t point = TakeUtf16(text);
        AppendUtf8(bytes, IsHighSurrogate(point) || IsLowSurrogate(point) ? REPLACEMENT : point);
    }
    return bytes;
}

bool IsValidUtf16(const MCHAR* text) {
    while (*text) {
        const char32_t point = TakeUtf16(text);
        if (IsHighSurrogate(point) || IsLowSurrogate(point)) {
            return false;
        }
    }
    return true;
}

std::filesystem::path ToNativePath(const MCHAR* path) {
#ifdef _WIN32
    return std::filesystem::path(path);
#else
    return std::filesystem::path(ToUtf8(path));
#endif
}

MSTR FromNativePath(const std::filesystem::path& path) {
#ifdef _WIN32
    return MSTR(path.c_str());
#else
    return FromUtf8(path.native());
#endif
}

bool EqualIgnoringAsciiCase(const MCHAR* left, const MCHAR* right) {
    for (; *left && *right; ++left, ++right) {
        if (AsciiLower(*left) != AsciiLower(*right)) {
            return false;
        }
    }
    return *left == *right;
}

}  // namespace host
