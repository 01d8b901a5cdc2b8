// Sizes of files and of memory, for the user.
#pragma once

#include <cstdint>
#include <string>

#include "command/number_text.h"

namespace command {

// "12.3 kB", from 100 kB on "0.1 MB".
inline std::string SizeText(std::uintmax_t bytes) {
    const auto number = static_cast<double>(bytes);
    return bytes < 100'000 ? NumberText(number / 1e3, 1) + " kB"
                           : NumberText(number / 1e6, 1) + " MB";
}

}  // namespace command
