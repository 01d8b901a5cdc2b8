#include "command/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/command/temporary_place.h"

namespace command {
namespace {

namespace fs = std::filesystem;

TEST(TemporaryFolder, IsTheUsersAloneAndGoesWithWhatIsInIt) {
    fs::path path;
    {
        const TemporaryFolder folder;
        path = folder.Path();
        EXPECT_EQ(folder.Fault(), "");
        EXPECT_EQ(path.parent_path(), (fs::temp_directory_path() / "").parent_path());
        ASSERT_TRUE(fs::is_directory(path));
#ifndef _WIN32
        // There the folder above is the user's alone.
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
#endif
        std::ofstream(path / "a") << "text";
        fs::create_directory(path / "b");
        std::ofstream(path / "b" / "c") << "text";
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(TemporaryFolder, IsAnotherEachTime) {
    const TemporaryFolder one;
    const TemporaryFolder other;
    EXPECT_NE(one.Path(), other.Path());
}

TEST(TemporaryFolder, OneThatCantBeMadeIsToldWithTheReason) {
    const TemporaryPlace nowhere("/nowhere");
    const TemporaryFolder folder;
    EXPECT_EQ(folder.Path(), "");
    EXPECT_EQ(folder.Fault(), "the folder for temporary files: No such file or directory");
}

}  // namespace
}  // namespace command
