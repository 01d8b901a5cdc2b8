// The entry function that Windows calls when a process loads the library. Programs that have the
// library linked in leave it out: nothing there asks for it.
#include <windows.h>

#include "plugin/library.h"
#include "ui/win32/attach.h"

// NOLINTNEXTLINE(misc-use-internal-linkage): the C run-time calls it.
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) ui::AttachPanel();
    return plugin::LibraryMain(module, reason);
}
