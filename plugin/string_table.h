// The library's texts for the user.
#pragma once

#include <maxtypes.h>

namespace plugin {

// Text `id` of the string table. Null for one that isn't there, and before the library is attached
// (library.h). The result lies in one buffer of 512 units for all callers: it lives until the next
// call.
const MCHAR* GetString(int id);

}  // namespace plugin
