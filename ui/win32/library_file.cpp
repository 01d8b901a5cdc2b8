#include "ui/win32/library_file.h"

#include <windows.h>

#include <array>

#include "plugin/library.h"

namespace ui {

MSTR LibraryFile() {
    std::array<wchar_t, 4096> name{};
    GetModuleFileNameW(plugin::Module(), name.data(), static_cast<DWORD>(name.size()));
    return MSTR(name.data());
}

}  // namespace ui
