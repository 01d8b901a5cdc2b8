// What replacing a file meets on this system: links, permissions, limits, and the end of the
// process.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "host/input_error.h"
#include "host/whole_file.h"
#include "tests/host/fault_text.h"
#include "tests/host/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using host::ReplaceWholeFile;
using testing::UnorderedElementsAre;

class WholeFilePosix : public testing::Test {
  protected:
    static std::string Bytes(const fs::path& path) {
        std::string bytes(fs::file_size(path), '\0');
        std::ifstream(path, std::ios::binary)
            .read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes;
    }
    static void Write(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path))
            names.push_back(entry.path().filename().string());
        return names;
    }
    static std::string FaultOf(const fs::path& path, const std::string& bytes = "new") {
        return FaultText<host::InputError>([&] { ReplaceWholeFile(path.string(), bytes); });
    }
    // Of what `action` gives in a process of its own.
    static std::string InChild(const std::function<std::string()>& action) {
        int ends[2];
        if (pipe(ends) != 0) return "no pipe";
        const pid_t child = fork();
        if (child == 0) {
            const std::string text = action();
            const ssize_t written = write(ends[1], text.data(), text.size());
            _exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
        }
        close(ends[1]);
        std::string text;
        char block[4096];
        for (ssize_t count = 0; (count = read(ends[0], block, sizeof block)) > 0;)
            text.append(block, static_cast<std::size_t>(count));
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        return status == 0 ? text : "status " + std::to_string(status);
    }

    TemporaryFolder folder;
};

TEST_F(WholeFilePosix, WhatALinkPointsToIsReplacedAndTheLinkStays) {
    fs::create_directory(folder.path / "inner");
    Write(folder.path / "inner" / "file", "old");
    fs::create_symlink("inner/file", folder.path / "one");
    fs::create_symlink(folder.path / "one", folder.path / "two");
    ReplaceWholeFile((folder.path / "two").string(), "new");
    EXPECT_EQ(Bytes(folder.path / "inner" / "file"), "new");
    EXPECT_EQ(fs::read_symlink(folder.path / "one"), "inner/file");
    EXPECT_EQ(fs::read_symlink(folder.path / "two"), folder.path / "one");
}

TEST_F(WholeFilePosix, ALinkToNothingMakesItsFile) {
    fs::create_symlink("file", folder.path / "link");
    ReplaceWholeFile((folder.path / "link").string(), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path / "link"));
    EXPECT_EQ(Bytes(folder.path / "file"), "new");
}

TEST_F(WholeFilePosix, LinksInACircleAreAFault) {
    fs::create_symlink("b", folder.path / "a");
    fs::create_symlink("a", folder.path / "b");
    const fs::path path = folder.path / "a";
    EXPECT_EQ(FaultOf(path), path.string() +
                                 ": cannot be written (Too many levels of symbolic links); mend "
                                 "the link or choose another name");
}

TEST_F(WholeFilePosix, APipeOrDeviceIsNotReplaced) {
    const fs::path path = folder.path / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(FaultOf(path),
              path.string() + ": cannot be written (not a file); choose another name");
    EXPECT_TRUE(fs::is_fifo(path));
}

TEST_F(WholeFilePosix, APlaceBelowAFileIsAFault) {
    Write(folder.path / "a", "old");
    const fs::path path = folder.path / "a" / "b";
    EXPECT_EQ(
        FaultOf(path),
        path.string() +
            ": cannot be written (Not a directory); create its folder first or choose another");
    EXPECT_EQ(Bytes(folder.path / "a"), "old");
}

TEST_F(WholeFilePosix, PermissionsAreTheOldFilesAndOtherwiseTheUsual) {
    const mode_t mask = umask(027);
    const fs::path path = folder.path / "a";
    ReplaceWholeFile(path.string(), "1");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
    fs::permissions(path, fs::perms(0606));
    ReplaceWholeFile(path.string(), "2");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0606));
    umask(mask);
}

TEST_F(WholeFilePosix, TheLongestNameIsTakenAndALongerOneIsAFault) {
    const fs::path path = folder.path / std::string(255, 'n');
    ReplaceWholeFile(path.string(), "x");
    EXPECT_EQ(Bytes(path), "x");
    const fs::path longer = folder.path / std::string(256, 'n');
    EXPECT_EQ(FaultOf(longer),
              longer.string() + ": cannot be written (File name too long); choose a shorter name");
    EXPECT_EQ(Files().size(), 1U);
}

// The superuser may write everywhere, so another user tries.
constexpr uid_t nobody = 65534;

std::string AsAnother(const std::function<std::string()>& action) {
    if (geteuid() == 0 && (setegid(nobody) != 0 || seteuid(nobody) != 0)) return "still root";
    return action();
}

TEST_F(WholeFilePosix, AFolderThatMayNotBeWrittenIsAFault) {
    Write(folder.path / "a", "old");
    fs::permissions(folder.path / "a", fs::perms(0666));
    fs::permissions(folder.path, fs::perms(0555));
    const fs::path path = folder.path / "a";
    EXPECT_EQ(InChild([&] { return AsAnother([&] { return FaultOf(path); }); }),
              path.string() +
                  ": cannot be written (Permission denied); change its permissions or choose "
                  "another place");
    fs::permissions(folder.path, fs::perms(0755));
    EXPECT_EQ(Bytes(path), "old");
}

TEST_F(WholeFilePosix, AReadOnlyFileIsNotReplaced) {
    Write(folder.path / "a", "old");
    fs::permissions(folder.path / "a", fs::perms(0444));
    fs::permissions(folder.path, fs::perms(0777));
    const fs::path path = folder.path / "a";
    EXPECT_EQ(InChild([&] { return AsAnother([&] { return FaultOf(path); }); }),
              path.string() +
                  ": cannot be written (Permission denied); change its permissions or choose "
                  "another place");
    EXPECT_EQ(Bytes(path), "old");
    EXPECT_THAT(Files(), UnorderedElementsAre("a"));
}

TEST_F(WholeFilePosix, AWriteThatFailsInTheMiddleLeavesTheOldFileAndNothingBeside) {
    Write(folder.path / "a", "old");
    const fs::path path = folder.path / "a";
    EXPECT_EQ(InChild([&] {
                  std::signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{100'000, 100'000};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  return FaultOf(path, std::string(200'000, 'x'));
              }),
              path.string() +
                  ": cannot be written (File too large); choose a place that takes larger files");
    EXPECT_EQ(Bytes(path), "old");
    EXPECT_THAT(Files(), UnorderedElementsAre("a"));
}

// The process is killed at some moment while it writes again and again.
TEST_F(WholeFilePosix, AfterACrashTheFileIsTheOldOneOrTheNewOne) {
    constexpr std::size_t size = 1 << 20;
    constexpr int rounds = 30;
    const fs::path path = folder.path / "a";
    ReplaceWholeFile(path.string(), std::string(size, 'a'));
    for (int round = 0; round < rounds; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1))
                ReplaceWholeFile(path.string(), std::string(size, letter));
        }
        std::this_thread::sleep_for(std::chrono::microseconds(1'500 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string bytes = Bytes(path);
        ASSERT_EQ(bytes.size(), size);
        ASSERT_EQ(bytes, std::string(size, bytes[0]));
    }
    std::size_t halves = 0;
    for (const auto& entry : fs::directory_iterator(folder.path)) {
        if (entry.path() == path) continue;
        ++halves;
        EXPECT_THAT(entry.path().filename().string(),
                    testing::MatchesRegex("veltrane-[0-9]+\\.tmp"));
    }
    EXPECT_GT(halves, 0U) << "no crash came in the middle of a write";
}

}  // namespace
