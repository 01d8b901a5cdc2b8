#include "host/path_config.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "host/application.h"
#include "host/text.h"

namespace {

std::string Dir(host::PathConfig& paths, int which) {
    return host::ToUtf8(paths.GetDir(which));
}

TEST(PathConfig, SceneAndOutputStartAtTheCurrentFolder) {
    host::PathConfig paths;
    const MSTR current = host::FromNativePath(std::filesystem::current_path());
    EXPECT_EQ(Dir(paths, APP_SCENE_DIR), host::ToUtf8(current));
    EXPECT_EQ(Dir(paths, APP_RENDER_OUTPUT_DIR), host::ToUtf8(current));
}

TEST(PathConfig, AFolderIsMadeAbsoluteAndAnEmptyOneTakesTheNumberAway) {
    host::PathConfig paths;
    paths.SetDir(APP_SCENE_DIR, MSTR(_M("scenes")));
    EXPECT_EQ(Dir(paths, APP_SCENE_DIR),
              host::ToUtf8(host::FromNativePath(std::filesystem::current_path() / "scenes")));
    paths.SetDir(APP_SCENE_DIR, MSTR());
    EXPECT_EQ(Dir(paths, APP_SCENE_DIR), "");
    EXPECT_EQ(Dir(paths, 12345), "");
}

TEST(PathConfig, TheHostHasNoManagerWithoutPaths) {
    host::ResetApplication();
    EXPECT_EQ(IPathConfigMgr::GetPathConfigMgr(), &host::App().paths);
    host::App().paths.Clear();
    EXPECT_EQ(IPathConfigMgr::GetPathConfigMgr(), nullptr);
    host::ResetApplication();
}

#ifndef _WIN32
// Sets a variable of the environment, or takes it away, until the end of the test.
class Variable {
  public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) {
            old_ = old;
        }
        Put(value);
    }
    ~Variable() { Put(old_ ? old_->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    void Put(const char* value) {
        if (value) {
            setenv(name_, value, 1);
        } else {
            unsetenv(name_);
        }
    }
    const char* name_;
    std::optional<std::string> old_;
};

TEST(PathConfig, ConfigurationIsWhereTheUsersConfigurationsAre) {
    const Variable home("HOME", "/home/user");
    {
        const Variable config("XDG_CONFIG_HOME", "/etc/user");
        host::PathConfig paths;
        EXPECT_EQ(Dir(paths, APP_PLUGCFG_DIR), "/etc/user/veltrane");
    }
    {
        const Variable config("XDG_CONFIG_HOME", "relative");
        host::PathConfig paths;
        EXPECT_EQ(Dir(paths, APP_PLUGCFG_DIR), "/home/user/.config/veltrane");
    }
    const Variable config("XDG_CONFIG_HOME", nullptr);
    host::PathConfig paths;
    EXPECT_EQ(Dir(paths, APP_PLUGCFG_DIR), "/home/user/.config/veltrane");
}

TEST(PathConfig, ConfigurationIsNotSetUpWithoutAHome) {
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const Variable home("HOME", nullptr);
    host::PathConfig paths;
    EXPECT_EQ(Dir(paths, APP_PLUGCFG_DIR), "");
}
#endif

MSTR Normal(const host::PathConfig& paths, const std::filesystem::path& file) {
    MaxSDK::Util::Path path(host::FromNativePath(file).data());
    paths.NormalizePathAccordingToSettings(path);
    return MSTR(path.GetCStr());
}

TEST(PathConfig, KeepsPathsAbsoluteOrRelativeToTheScenesFolderAsTheUserWants) {
    host::PathConfig paths;
    const std::filesystem::path folder = std::filesystem::current_path() / "scenes";
    paths.SetDir(APP_SCENE_DIR, host::FromNativePath(folder));
    const std::filesystem::path inside = folder / "out" / "a.psd";
    const std::filesystem::path outside = folder.parent_path() / "a.psd";
    EXPECT_EQ(Normal(paths, inside), host::FromNativePath(inside));
    EXPECT_EQ(Normal(paths, folder / "out" / ".." / "b.psd"),
              host::FromNativePath(folder / "b.psd"));
    paths.keepsRelativePaths = true;
    EXPECT_EQ(Normal(paths, inside), host::FromNativePath(std::filesystem::path("out") / "a.psd"));
    EXPECT_EQ(Normal(paths, outside), host::FromNativePath(outside));
}

}  // namespace
