#include "command/win32/program_folder.h"

#include <windows.h>

#include <vector>

#include "command/ascii_case.h"
#include "command/native_path.h"

namespace command {

std::filesystem::path ProgramFolder() {
    // The longest path that the system knows.
    std::vector<wchar_t> name(32768);
    GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return std::filesystem::path(name.data()).parent_path();
}

bool IsSceneFile(const std::string& path) {
    return AsciiLower(Utf8(Native(path).extension())) == ".json";
}

}  // namespace command
