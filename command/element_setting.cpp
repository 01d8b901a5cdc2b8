#include "command/element_setting.h"

#include <algorithm>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "plugin/entry.h"

namespace command {
namespace {

constexpr std::string_view option = "--element";

bool IsLetterOrDigit(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || letter == '#';
}

// The colon before "SETTING=": the last one that a name and an equals sign follow.
std::size_t FindColon(std::string_view text) {
    std::size_t colon = text.rfind(':');
    while (colon != std::string_view::npos) {
        const auto* start = text.begin() + colon + 1;
        const auto* end = std::find_if_not(start, text.end(), IsLetterOrDigit);
        if (end != start && end != text.end() && *end == '=') return colon;
        colon = colon == 0 ? std::string_view::npos : text.rfind(':', colon - 1);
    }
    return colon;
}

// Goes back to the last star when what follows it doesn't fit.
bool Fits(std::string_view pattern, std::string_view name) {
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t retry = 0;
    for (std::size_t n = 0; n < name.size();) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            retry = n;
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++retry;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

ElementSetting ParseElementSetting(std::string_view text) {
    const std::size_t colon = FindColon(text);
    if (colon == std::string_view::npos || colon == 0) {
        throw UsageError(std::string(option) + " " + std::string(text) +
                         ": expected NAME:SETTING=VALUE, such as Shadow:visible=false");
    }
    return {std::string(text.substr(0, colon)),
            ParseSetting(text.substr(colon + 1), plugin::LayerParameters(), option)};
}

bool IsFor(const ElementSetting& setting, std::string_view elementName) {
    return Fits(AsciiLower(setting.element), AsciiLower(std::string(elementName)));
}

}  // namespace command
