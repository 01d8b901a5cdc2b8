// The entry function that Windows calls when a process loads the library. Programs that have the
// library linked in leave it out: nothing there asks for it.
#include <windows.h>

#include "plugin/library.h"

// NOLINTNEXTLINE(misc-use-internal-linkage): the C run-time calls it.
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    return plugin::LibraryMain(module, reason);
}
