#include <gtest/gtest.h>
#include <windows.h>

#include "command/failure.h"
#include "command/input_file.h"
#include "command/native_path.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

class InputFileWin32 : public FolderTest {};

TEST_F(InputFileWin32, OneThatAnotherProgramKeepsToItselfIsToldSo) {
    const std::string path = Write("a.exr", "x");
    HANDLE handle = CreateFileW(Native(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    const std::string complaint = FaultText<InputError>([&] { OpenInput(path); });
    CloseHandle(handle);
    EXPECT_EQ(complaint, path + ": cannot be opened (" +
                             std::system_category().message(ERROR_SHARING_VIOLATION) +
                             "); check its permissions");
    EXPECT_EQ(ReadWholeInput(path), "x");
}

TEST_F(InputFileWin32, NamesThatTheSystemTakesForNoneAreMissing) {
    for (const char* name : {"a?.exr", "a*.exr", "a|b.exr"}) {
        EXPECT_EQ(FaultText<InputError>([&] { OpenInput(PathOf(name)); }),
                  PathOf(name) + ": no such file; check the path");
    }
}

TEST_F(InputFileWin32, BackslashesAndSlashesAreTheSame) {
    std::filesystem::create_directory(folder / "b");
    Write("b/a.exr", "x");
    EXPECT_EQ(ReadWholeInput(Utf8(folder) + "\\b\\a.exr"), "x");
    EXPECT_EQ(ReadWholeInput(Utf8(folder) + "/b\\.\\a.exr"), "x");
}

}  // namespace
}  // namespace command
