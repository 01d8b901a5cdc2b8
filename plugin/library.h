// What happens when a process takes the library in and lets it go.
#pragma once

#include <maxtypes.h>

namespace plugin {

// The body of the library's entry function, with the system's reasons: 1 the process attaches, 0 it
// detaches, 2 and 3 a thread does. A program that has the library linked in calls it by itself (see
// Attach in entry.h). Always TRUE.
//
// The first call of a process registers the effects' notification callback for six codes with no
// effect, for which it does nothing; a detach takes these back. A call after that registers
// nothing again.
BOOL LibraryMain(HINSTANCE module, DWORD reason);

// The module handle that LibraryMain was given last; null before.
HINSTANCE Module();

// The library's own name (string 29), read at the first call; empty before.
const MCHAR* LibraryName();

}  // namespace plugin
