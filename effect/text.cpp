#include "effect/text.h"

#include <array>

#ifdef _WIN32
#include <windows.h>
#endif

namespace effect {

std::u16string WideText(const MCHAR* text) {
    std::u16string units;
    for (; text && *text; ++text)
        units.push_back(static_cast<char16_t>(*text));
    return units;
}

MSTR NumberText(int number) {
    const std::string digits = std::to_string(number);
    return MSTR(std::basic_string<MCHAR>(digits.begin(), digits.end()));
}

#ifdef _WIN32

std::string AnsiText(const MCHAR* text) {
    if (!text) return {};
    const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, "?", nullptr);
    if (size <= 1) return {};
    std::string ansi(static_cast<std::size_t>(size) - 1, '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, ansi.data(), size, "?", nullptr);
    return ansi;
}

#else

namespace {

// Windows-1252 from 0x80 to 0x9F; 0 where the code page has no character. Source: the mapping table
// of the Unicode consortium (MAPPINGS/VENDORS/MICSFT/WINDOWS/CP1252.TXT).
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char Windows1252(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
    for (std::size_t i = 0; i < upperControls.size(); ++i) {
        if (upperControls[i] == unit) return static_cast<char>(0x80 + i);
    }
    return '?';
}

constexpr bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

std::string AnsiText(const MCHAR* text) {
    std::string ansi;
    for (; text && *text; ++text) {
        ansi.push_back(Windows1252(*text));
        // A pair is one character, and so one "?".
        if (IsHighSurrogate(*text) && IsLowSurrogate(text[1])) ++text;
    }
    return ansi;
}

#endif

}  // namespace effect
