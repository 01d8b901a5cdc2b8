#include "command/win32/program_folder.h"

#include <windows.h>

#include <IPathConfigMgr.h>

#include <system_error>
#include <vector>

#include "command/ascii_case.h"
#include "command/native_path.h"
#include "host/application.h"

namespace command {

std::filesystem::path ProgramFolder() {
    // The longest path that the system knows.
    std::vector<wchar_t> name(32768);
    GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return std::filesystem::path(name.data()).parent_path();
}

void MakeConfigurationFolder() {
    const std::filesystem::path folder(host::App().paths.GetDir(APP_PLUGCFG_DIR));
    std::error_code none;
    if (!folder.empty()) std::filesystem::create_directories(folder, none);
}

bool IsSceneFile(const std::string& path) {
    return AsciiLower(Utf8(Native(path).extension())) == ".json";
}

}  // namespace command
