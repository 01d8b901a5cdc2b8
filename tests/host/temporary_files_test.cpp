// On Windows the calls are the system's own.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <tempfiles.h>

#include <array>
#include <cstdlib>
#include <fstream>

#include "host/application.h"
#include "host/text.h"
#include "tests/host/temporary_folder.h"

namespace {

class TemporaryFiles : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }
    static void Use(const std::filesystem::path& path) {
        host::App().settings.temporaryFolder = host::FromNativePath(path);
    }

    TemporaryFolder folder;
    std::array<MCHAR, 260> buffer{_M('x')};
};

TEST_F(TemporaryFiles, GoToTheFolderOfTheSettings) {
    const std::filesystem::path named = folder.path / host::ToNativePath(_M("\u00e9 \U0001f600"));
    std::filesystem::create_directory(named);
    for (const std::filesystem::path& path : {named, named / ""}) {
        Use(path);
        const DWORD length = GetTempPath(260, buffer.data());
        EXPECT_EQ(MSTR(buffer.data()), host::FromNativePath(named / ""));
        EXPECT_EQ(length, static_cast<DWORD>(MSTR(buffer.data()).Length()));
    }
}

TEST_F(TemporaryFiles, GoToTheSystemsFolderOtherwise) {
    const DWORD length = GetTempPath(260, buffer.data());
    EXPECT_EQ(MSTR(buffer.data()),
              host::FromNativePath(std::filesystem::temp_directory_path() / ""));
    EXPECT_EQ(length, static_cast<DWORD>(MSTR(buffer.data()).Length()));
}

TEST_F(TemporaryFiles, NeedAFolderThatIsThere) {
    std::ofstream(folder.path / "file") << "x";
    for (const char* name : {"missing", "file"}) {
        Use(folder.path / name);
        EXPECT_EQ(GetTempPath(260, buffer.data()), 0U) << name;
        EXPECT_EQ(buffer[0], _M('x')) << name;
    }
}

TEST_F(TemporaryFiles, NeedTheSystemsFolderToBeThere) {
    const char* set = std::getenv("TMPDIR");
    const std::string before = set ? set : "";
    setenv("TMPDIR", (folder.path / "missing").c_str(), 1);
    EXPECT_EQ(GetTempPath(260, buffer.data()), 0U);
    if (set) {
        setenv("TMPDIR", before.c_str(), 1);
    } else {
        unsetenv("TMPDIR");
    }
    EXPECT_EQ(buffer[0], _M('x'));
}

TEST_F(TemporaryFiles, ABufferThatIsTooSmallIsToldItsSize) {
    Use(folder.path);
    const DWORD length = GetTempPath(260, buffer.data());
    ASSERT_GT(length, 0U);
    buffer[0] = _M('x');
    EXPECT_EQ(GetTempPath(length, buffer.data()), length + 1);
    EXPECT_EQ(GetTempPath(0, nullptr), length + 1);
    EXPECT_EQ(buffer[0], _M('x'));
    EXPECT_EQ(GetTempPath(length + 1, buffer.data()), length);
    EXPECT_EQ(MSTR(buffer.data()), host::FromNativePath(folder.path / ""));
}

TEST_F(TemporaryFiles, AreDeletedByName) {
    const std::filesystem::path file =
        folder.path / host::ToNativePath(_M("\u00e9 \U0001f600.cube"));
    const MSTR name = host::FromNativePath(file);
    EXPECT_FALSE(DeleteFile(name.data())) << "it isn't there";
    std::ofstream(file) << "x";
    EXPECT_TRUE(DeleteFile(name.data()));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(DeleteFile(_M("")));
}

TEST_F(TemporaryFiles, AFolderIsNoFileToDelete) {
    EXPECT_FALSE(DeleteFile(host::FromNativePath(folder.path).data()));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path));
}

}  // namespace

#endif
