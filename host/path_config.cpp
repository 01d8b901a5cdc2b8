#include "host/path_config.h"

#include <cstdlib>

#include "host/application.h"
#include "host/text.h"

namespace host {
namespace {

#ifndef _WIN32
std::filesystem::path EnvironmentFolder(const char* name) {
    const char* value = std::getenv(name);
    std::filesystem::path folder(value ? value : "");
    return folder.is_absolute() ? folder : std::filesystem::path();
}
#endif

// Empty when the user has no folder for configurations.
std::filesystem::path ConfigurationFolder() {
#ifdef _WIN32
    const wchar_t* value = _wgetenv(L"APPDATA");
    const std::filesystem::path base(value ? value : L"");
#else
    std::filesystem::path base = EnvironmentFolder("XDG_CONFIG_HOME");
    if (base.empty()) {
        const std::filesystem::path home = EnvironmentFolder("HOME");
        base = home.empty() ? home : home / ".config";
    }
#endif
    return base.is_absolute() ? base / "veltrane" : std::filesystem::path();
}

std::filesystem::path CurrentFolder() {
    std::error_code error;
    return std::filesystem::current_path(error);
}

}  // namespace

PathConfig::PathConfig() {
    SetDir(APP_SCENE_DIR, FromNativePath(CurrentFolder()));
    SetDir(APP_RENDER_OUTPUT_DIR, FromNativePath(CurrentFolder()));
    SetDir(APP_PLUGCFG_DIR, FromNativePath(ConfigurationFolder()));
}

const MCHAR* PathConfig::GetDir(int which) {
    const auto found = folders_.find(which);
    return found == folders_.end() ? _M("") : found->second.data();
}

void PathConfig::SetDir(int which, const MSTR& folder) {
    MaxSDK::Util::Path path(folder);
    if (path.ConvertToAbsolute()) {
        folders_[which] = MSTR(path.GetCStr());
    } else {
        folders_.erase(which);
    }
}

void PathConfig::NormalizePathAccordingToSettings(MaxSDK::Util::Path& path) const {
    if (!path.ConvertToAbsolute() || !keepsRelativePaths) return;
    const auto folder = folders_.find(APP_SCENE_DIR);
    if (folder == folders_.end()) return;
    const std::filesystem::path inFolder =
        ToNativePath(path.GetCStr()).lexically_relative(ToNativePath(folder->second));
    if (!inFolder.empty() && *inFolder.begin() != "..") {
        path = MaxSDK::Util::Path(FromNativePath(inFolder).data());
    }
}

}  // namespace host

IPathConfigMgr* IPathConfigMgr::GetPathConfigMgr() {
    host::PathConfig& paths = host::App().paths;
    return paths.IsEmpty() ? nullptr : &paths;
}
