#include "command/win32/program_folder.h"

#include <IPathConfigMgr.h>
#include <gtest/gtest.h>

#include "host/application.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

TEST(ProgramFolder, HoldsTheRunningProgram) {
    EXPECT_TRUE(std::filesystem::is_regular_file(ProgramFolder() / "test_command.exe"));
}

class MakeConfigurationFolderTest : public FolderTest {
  protected:
    MakeConfigurationFolderTest() { host::ResetApplication(); }
    ~MakeConfigurationFolderTest() override { host::ResetApplication(); }
    static void SetFolder(const std::filesystem::path& path) {
        host::App().paths.SetDir(APP_PLUGCFG_DIR, MSTR(path.wstring()));
    }
};

TEST_F(MakeConfigurationFolderTest, MakesWhatIsMissingOfThePath) {
    SetFolder(folder / "a" / "b");
    MakeConfigurationFolder();
    EXPECT_TRUE(std::filesystem::is_directory(folder / "a" / "b"));
    // There already.
    MakeConfigurationFolder();
    EXPECT_TRUE(std::filesystem::is_empty(folder / "a" / "b"));
}

TEST_F(MakeConfigurationFolderTest, LeavesAFileInItsPlaceAlone) {
    Write("a", "text");
    SetFolder(folder / "a" / "b");
    MakeConfigurationFolder();
    EXPECT_TRUE(std::filesystem::is_regular_file(folder / "a"));
    SetFolder({});
    MakeConfigurationFolder();
}

TEST(IsSceneFile, GoesByTheNameInLettersOfEitherCase) {
    EXPECT_TRUE(IsSceneFile("C:\\a b\\scene.json"));
    EXPECT_TRUE(IsSceneFile("\xd1\x81.JSON"));
    EXPECT_TRUE(IsSceneFile("a.exr.Json"));
    EXPECT_FALSE(IsSceneFile("json"));
    EXPECT_FALSE(IsSceneFile("a.json.exr"));
    EXPECT_FALSE(IsSceneFile(""));
}

}  // namespace
}  // namespace command
