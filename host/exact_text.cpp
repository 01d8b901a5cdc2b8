#include "host/exact_text.h"

#include <cstddef>
#include <utility>

#include "host/text.h"

namespace host {
namespace {

using Units = std::basic_string<MCHAR>;

bool IsSurrogate(MCHAR unit) {
    return unit >= 0xd800 && unit <= 0xdfff;
}

bool IsHighSurrogate(MCHAR unit) {
    return unit >= 0xd800 && unit <= 0xdbff;
}

bool IsPair(const Units& text, std::size_t at) {
    return IsHighSurrogate(text[at]) && at + 1 < text.size() && IsSurrogate(text[at + 1]) &&
           !IsHighSurrogate(text[at + 1]);
}

// ED A0 80 to ED BF BF.
bool IsSurrogateAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t offset) {
        return at + offset < text.size() ? static_cast<unsigned char>(text[at + offset]) : 0U;
    };
    return byte(0) == 0xed && byte(1) >= 0xa0 && byte(1) <= 0xbf && byte(2) >= 0x80 &&
           byte(2) <= 0xbf;
}

std::size_t FindSurrogate(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && !IsSurrogateAt(text, at))
        ++at;
    return at;
}

}  // namespace

std::string ToExactText(const MCHAR* text) {
    const Units units = text ? Units(text) : Units();
    std::string bytes;
    std::size_t start = 0;
    for (std::size_t at = 0; at < units.size(); ++at) {
        if (!IsSurrogate(units[at])) continue;
        if (IsPair(units, at)) {
            ++at;
            continue;
        }
        bytes += ToUtf8(units.substr(start, at - start).c_str());
        const auto unit = static_cast<unsigned>(units[at]);
        for (const unsigned byte :
             {0xe0U | (unit >> 12), 0x80U | ((unit >> 6) & 0x3fU), 0x80U | (unit & 0x3fU)}) {
            bytes += static_cast<char>(byte);
        }
        start = at + 1;
    }
    return bytes + ToUtf8(units.c_str() + start);
}

MSTR FromExactText(std::string_view text) {
    Units units;
    while (!text.empty()) {
        const std::size_t at = FindSurrogate(text);
        units += FromUtf8(text.substr(0, at)).data();
        text.remove_prefix(at);
        if (text.empty()) break;
        const auto bits = [&](std::size_t byte) {
            return static_cast<unsigned>(static_cast<unsigned char>(text[byte])) & 0x3fU;
        };
        units += static_cast<MCHAR>(0xd000U | (bits(1) << 6) | bits(2));
        text.remove_prefix(3);
    }
    return MSTR(std::move(units));
}

bool HasLoneSurrogate(std::string_view exactText) {
    return FindSurrogate(exactText) < exactText.size();
}

}  // namespace host
