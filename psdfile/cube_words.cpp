// Words and numbers off the front of a text.

#include "psdfile/cube_words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>

namespace psdfile {

namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool EndsNumber(const char* position, const char* end) {
    return position == end || IsCubeBlank(*position);
}

// Digits with or without a point among them, which is nearly every number of a table. It takes only
// what one division rounds correctly: digits that make an integer below 2^53, over a power of ten
// that a double holds exactly. Null for all else, which may be a number nevertheless.
const char* ParsePlainDecimal(const char* begin, const char* end, double& number) {
    constexpr std::array<double, 19> powersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                                 1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                                 1e14, 1e15, 1e16, 1e17, 1e18};
    constexpr std::uint64_t exactIntegers = std::uint64_t{1} << 53;
    const char* const limit = begin + std::min(end - begin, std::ptrdiff_t{19});
    std::uint64_t digits = 0;
    const char* position = begin;
    for (; position != limit && IsDigit(*position); ++position) {
        digits = digits * 10 + static_cast<std::uint64_t>(*position - '0');
    }
    std::ptrdiff_t digitCount = position - begin;
    std::ptrdiff_t decimals = 0;
    if (position != limit && *position == '.') {
        const char* const point = position++;
        for (; position != limit && IsDigit(*position); ++position) {
            digits = digits * 10 + static_cast<std::uint64_t>(*position - '0');
        }
        decimals = position - point - 1;
        digitCount += decimals;
    }
    if (digitCount == 0 || digits >= exactIntegers || !EndsNumber(position, end)) return nullptr;
    number = static_cast<double>(digits) / powersOfTen[static_cast<std::size_t>(decimals)];
    return position;
}

const char* ParseUnsigned(const char* begin, const char* end, double& number) {
    const char* const next = ParsePlainDecimal(begin, end, number);
    if (next != nullptr) return next;
    const auto [position, error] = std::from_chars(begin, end, number);
    return error == std::errc{} ? position : nullptr;
}

const char* ParseUnsigned(const char* begin, const char* end, int& number) {
    const auto [position, error] = std::from_chars(begin, end, number);
    return error == std::errc{} ? position : nullptr;
}

template <class Number>
bool Take(std::string_view& text, Number& number) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    while (begin != end && IsCubeBlank(*begin)) {
        ++begin;
    }
    const bool negative = begin != end && *begin == '-';
    if (begin != end && (*begin == '-' || *begin == '+')) ++begin;
    if (begin == end || (!IsDigit(*begin) && *begin != '.')) return false;
    const char* const next = ParseUnsigned(begin, end, number);
    if (next == nullptr || !EndsNumber(next, end)) return false;
    if (negative) number = -number;
    text = {next, static_cast<std::size_t>(end - next)};
    return true;
}

}  // namespace

std::string_view WithoutLeadingBlanks(std::string_view text) {
    const auto begin = std::find_if_not(text.begin(), text.end(), IsCubeBlank);
    text.remove_prefix(static_cast<std::size_t>(begin - text.begin()));
    return text;
}

std::string_view TakeWord(std::string_view& text) {
    text = WithoutLeadingBlanks(text);
    const auto end = std::find_if(text.begin(), text.end(), IsCubeBlank);
    const std::string_view word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(word.size());
    return word;
}

bool TakeNumber(std::string_view& text, double& number) {
    return Take(text, number);
}

bool TakeNumber(std::string_view& text, int& number) {
    return Take(text, number);
}

}  // namespace psdfile
