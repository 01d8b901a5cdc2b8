// What the process holds of the system's, to tell whether something is left behind.
#pragma once

#include <windows.h>

#include <cstring>
#include <ostream>

#include "host/win32/control_classes.h"

struct ObjectCounts {
    int gdi = 0;
    // Windows of this thread, at any depth.
    int windows = 0;
    // The host's own controls.
    int controls = 0;
    bool operator==(const ObjectCounts&) const = default;
};

inline void PrintTo(const ObjectCounts& counts, std::ostream* out) {
    *out << counts.gdi << " GDI objects, " << counts.windows << " windows, " << counts.controls
         << " controls";
}

// Where the system doesn't count GDI's objects (it answers 0), those in its table: at a fixed place
// of the process's environment, with entries of 24 bytes, whose 15th is 0 for a free one.
inline int CountGdiObjects() {
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) {
        return static_cast<int>(counted);
    }
    const auto* const environment = reinterpret_cast<const char*>(__readgsqword(0x60));
    const char* table = nullptr;
    std::memcpy(&table, environment + 0xf8, sizeof table);
    int count = 0;
    for (int i = 0; i < 0x10000; ++i)
        count += table[i * 24 + 14] != 0;
    return count;
}

inline BOOL CALLBACK CountOneWindow(HWND window, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    const bool top = !(GetWindowLongW(window, GWL_STYLE) & WS_CHILD);
    // Goes through those below them too.
    if (top) EnumChildWindows(window, CountOneWindow, count);
    return TRUE;
}

inline ObjectCounts CountObjects() {
    ObjectCounts counts;
    counts.gdi = CountGdiObjects();
    EnumThreadWindows(GetCurrentThreadId(), CountOneWindow,
                      reinterpret_cast<LPARAM>(&counts.windows));
    counts.controls = host::LivingControls();
    return counts;
}
