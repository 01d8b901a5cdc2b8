// The system's way of reading a text of a string table, for systems without one.
#pragma once

#include <maxtypes.h>

#include <span>

namespace plugin {

struct StringRow {
    int id;
    const MCHAR* text;
};

// As the system's LoadString: copies the text of the row that has the low 16 bits of `id` to
// `buffer`, cut to `size` - 1 units and with a NUL behind it. The number of units without the NUL;
// 0, with `buffer` empty, for a row that isn't there or has no text. `size` is above 0.
int LoadTableString(std::span<const StringRow> table, int id, MCHAR* buffer, int size);

}  // namespace plugin
