// The folders that the application is set up with.
#pragma once

#include <map>

#include <IPathConfigMgr.h>
#include <strclass.h>

namespace host {

class PathConfig final : public IPathConfigMgr {
  public:
    // The scene and render output folders are the current folder; the plug-ins' configuration is in
    // "veltrane" of $XDG_CONFIG_HOME, or of ~/.config where that is not an absolute path, or of
    // %APPDATA% on Windows, and isn't set up where there is none of them.
    PathConfig();

    const MCHAR* GetDir(int which) override;
    void NormalizePathAccordingToSettings(MaxSDK::Util::Path& path) const override;
    // Made absolute; an empty folder takes the number away.
    void SetDir(int which, const MSTR& folder);
    bool IsEmpty() const { return folders_.empty(); }
    void Clear() { folders_.clear(); }

    // Paths of files in the scene's folder or below it are kept relative to it.
    bool keepsRelativePaths = false;

  private:
    std::map<int, MSTR> folders_;
};

}  // namespace host
