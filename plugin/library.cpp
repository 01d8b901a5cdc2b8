#include "plugin/library.h"

#include <notify.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#ifdef _WIN32
#include <commctrl.h>
#endif

#include "effect/psd_output.h"
#include "plugin/string_table.h"

namespace plugin {
namespace {

constexpr DWORD processDetach = 0;

constexpr int notifications[] = {NOTIFY_SYSTEM_POST_RESET, NOTIFY_SYSTEM_POST_NEW,
                                 NOTIFY_FILE_POST_OPEN,    NOTIFY_FILE_POST_SAVE,
                                 NOTIFY_SYSTEM_STARTUP,    NOTIFY_SYSTEM_SHUTDOWN};

struct Library {
    HINSTANCE module = nullptr;
    bool attached = false;
    // Units with the terminator.
    MCHAR name[64] = {};
};

constinit Library library;

void KeepName() {
    const MCHAR* text = GetString(29);
    if (!text) return;
    const std::basic_string_view<MCHAR> name(text);
    const std::size_t length = std::min(name.size(), std::size(library.name) - 1);
    *std::copy_n(name.begin(), length, library.name) = 0;
}

void AttachProcess() {
#ifdef _WIN32
    InitCommonControls();
#endif
    KeepName();
    for (int code : notifications)
        RegisterNotification(effect::OnEffectNotification, nullptr, code);
}

}  // namespace

BOOL LibraryMain(HINSTANCE module, DWORD reason) {
    library.module = module;
    if (!library.attached) {
        library.attached = true;
        AttachProcess();
    }
    if (reason == processDetach) {
        for (int code : notifications)
            UnRegisterNotification(effect::OnEffectNotification, nullptr, code);
    }
    return TRUE;
}

HINSTANCE Module() {
    return library.module;
}

const MCHAR* LibraryName() {
    return library.name;
}

}  // namespace plugin
