#include "plugin/load_string.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace plugin {

int LoadTableString(std::span<const StringRow> table, int id, MCHAR* buffer, int size) {
    const auto row = std::find_if(table.begin(), table.end(), [&](const StringRow& other) {
        return other.id == (id & 0xffff);
    });
    std::basic_string_view<MCHAR> text;
    if (row != table.end()) text = row->text;
    text = text.substr(0, static_cast<std::size_t>(size) - 1);
    *std::copy(text.begin(), text.end(), buffer) = 0;
    return static_cast<int>(text.size());
}

}  // namespace plugin
