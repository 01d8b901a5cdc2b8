#include "command/win32/program_folder.h"

#include <gtest/gtest.h>

namespace command {
namespace {

TEST(ProgramFolder, HoldsTheRunningProgram) {
    EXPECT_TRUE(std::filesystem::is_regular_file(ProgramFolder() / "test_command.exe"));
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
