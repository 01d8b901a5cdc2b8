#include "effect/text.h"

#ifdef _WIN32
#include <windows.h>
#else
#include "effect/windows1252.h"
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

char Windows1252(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
    for (std::size_t i = 0; i < windows1252Controls.size(); ++i) {
        if (windows1252Controls[i] == unit) return static_cast<char>(0x80 + i);
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
