#include "command/input_range.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>
#include <string_view>

namespace command {
namespace {

constexpr std::string_view lineEnds = "\r\n";
constexpr std::string_view startsOfRows = "+-.0123456789";

bool IsKeyword(std::string_view word) {
    return word == "LUT_3D_INPUT_RANGE" || word == "LUT_1D_INPUT_RANGE";
}

// Nothing for a line without the keyword, or with other words than two numbers behind it.
std::optional<InputRange> RangeOf(std::string_view line) {
    std::istringstream words{std::string(line)};
    words.imbue(std::locale::classic());
    std::string keyword;
    InputRange range;
    std::string more;
    if (!(words >> keyword) || !IsKeyword(keyword)) return std::nullopt;
    if (!(words >> range.min >> range.max) || words >> more) return std::nullopt;
    const bool isRange =
        std::isfinite(range.min) && std::isfinite(range.max) && range.min < range.max;
    return isRange ? std::optional(range) : std::nullopt;
}

}  // namespace

std::optional<InputRange> TakeInputRange(std::string& text) {
    const std::string_view view = text;
    std::size_t start = 0;
    while (start < view.size() && startsOfRows.find(view[start]) == std::string_view::npos) {
        const std::size_t end = std::min(view.find_first_of(lineEnds, start), view.size());
        const std::string_view line = view.substr(start, end - start);
        if (const auto range = RangeOf(line)) {
            text[start] = '#';
            return range;
        }
        start = std::min(view.find_first_not_of(lineEnds, end), view.size());
    }
    return std::nullopt;
}

}  // namespace command
