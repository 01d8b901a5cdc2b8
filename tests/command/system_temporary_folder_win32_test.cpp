#include "command/system_temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "command/look.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

namespace fs = std::filesystem;

class SystemTemporaryFolderTest : public FolderTest {
  protected:
    const fs::path usual = fs::temp_directory_path();
};

TEST_F(SystemTemporaryFolderTest, IsTheGivenOneForAWhile) {
    const std::string name =
        "Gr\xc3\xb6\xc3\x9f"
        "e";
    fs::create_directory(folder / Native(name));
    {
        const SystemTemporaryFolder system(PathOf(name));
        EXPECT_TRUE(fs::equivalent(fs::temp_directory_path(), folder / Native(name)));
    }
    EXPECT_EQ(fs::temp_directory_path(), usual);
}

TEST_F(SystemTemporaryFolderTest, NoneChangesNothing) {
    const SystemTemporaryFolder system{""};
    EXPECT_EQ(fs::temp_directory_path(), usual);
}

// Where the effect writes the table of a look.
TEST_F(SystemTemporaryFolderTest, OfALookIsItsOwn) {
    const Look look(Write("a.cube", "LUT_1D_SIZE 2\n1 1 1\n0 0.5 1\n"));
    EXPECT_TRUE(fs::equivalent(fs::temp_directory_path(), Native(look.Folder())));
}

}  // namespace
}  // namespace command
