// Numbers as text, the same under every locale.
#pragma once

#include <array>
#include <charconv>
#include <string>

namespace host {

// The shortest that reads back as the same number; whole numbers have no point.
inline std::string NumberText(double value) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

// With `decimals` digits behind the point.
inline std::string NumberText(double value, int decimals) {
    std::array<char, 512> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::fixed, decimals);
    return {text.data(), result.ptr};
}

}  // namespace host
