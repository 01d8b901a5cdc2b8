// Letters without regard to case, for names of objects.
#pragma once

#include <maxtypes.h>

namespace host {

// The small letter of a capital one, in the scripts that have both in ranges: Latin, Greek,
// Cyrillic and Armenian. Any other unit as it is.
MCHAR LowerCase(MCHAR unit);

}  // namespace host
