// The folders that the host is set up with.
#pragma once

#include "Path.h"

constexpr int APP_SCENE_DIR = 1;
constexpr int APP_PLUGCFG_DIR = 9;
constexpr int APP_RENDER_OUTPUT_DIR = 21;

class IPathConfigMgr {
  public:
    // Null when the host has no paths set up.
    static IPathConfigMgr* GetPathConfigMgr();

    // Absolute; empty for a number that isn't set up.
    virtual const MCHAR* GetDir(int which) = 0;

    // The form in which the scene is to keep the path of a file: absolute, or relative to the
    // project's folder where the user wants that and the file is in it.
    virtual void NormalizePathAccordingToSettings(MaxSDK::Util::Path& path) const = 0;

  protected:
    ~IPathConfigMgr() = default;
};
