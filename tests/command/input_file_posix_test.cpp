#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "command/failure.h"
#include "command/input_file.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

class InputFilePosix : public FolderTest {};

TEST_F(InputFilePosix, OneThatMayNotBeReadIsToldSo) {
    if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
    const std::string path = Write("a.exr", "x");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_EQ(FaultText<InputError>([&] { OpenInput(path); }),
              path + ": cannot be opened (Permission denied); check its permissions");
}

}  // namespace
}  // namespace command
