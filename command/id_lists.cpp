#include "command/id_lists.h"

#include <algorithm>

namespace command {

// Neighbours mostly have the same number.
void NumberSet::AddRow(std::span<const std::uint32_t> row) {
    std::uint32_t last = 0;
    for (const std::uint32_t number : row) {
        if (number == last) continue;
        last = number;
        Add(number);
    }
}

std::uint32_t NumberSet::Largest() const {
    for (std::size_t number = numbers.size() - 1; number > 0; --number) {
        if (numbers.test(number)) return static_cast<std::uint32_t>(number);
    }
    return 0;
}

std::string NumberSet::List(std::uint32_t largest) const {
    std::string list;
    const std::size_t end = std::min<std::size_t>(std::size_t{largest} + 1, numbers.size());
    for (std::size_t first = 1; first < end; ++first) {
        if (!numbers.test(first)) continue;
        std::size_t last = first;
        while (last + 1 < end && numbers.test(last + 1))
            ++last;
        if (!list.empty()) list += ", ";
        list += std::to_string(first);
        if (last > first) list += "-" + std::to_string(last);
        first = last;
    }
    return list;
}

}  // namespace command
