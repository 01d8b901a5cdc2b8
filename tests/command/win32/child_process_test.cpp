#include "command/win32/child_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "command/failure.h"
#include "command/native_path.h"
#include "command/process.h"
#include "host/text.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"
#include "tests/command/win32/panel_test_files.h"

namespace command {
namespace {

using ChildWords = std::vector<std::string>;

// What the system makes of the line again.
ChildWords TakenApart(const ChildWords& words) {
    int count = 0;
    const std::wstring line = CommandLineOf(words);
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> apart(
        CommandLineToArgvW(line.c_str(), &count), LocalFree);
    ChildWords taken;
    for (int i = 0; i < count; ++i)
        taken.push_back(host::ToUtf8(apart.get()[i]));
    return taken;
}

TEST(CommandLineOf, IsTakenApartIntoTheSameWords) {
    for (const ChildWords& words : {
             ChildWords{"a.exe"},
             ChildWords{R"(C:\Program Files\a b.exe)", "save", "with blanks", "tab\there"},
             ChildWords{"a.exe", ""},
             ChildWords{"a.exe", "", "", "last"},
             ChildWords{"a.exe", R"(C:\folder\)", R"(C:\with blanks\)", R"(\\server\share\)"},
             ChildWords{"a.exe", R"(say "hello")", R"(")", R"("")", R"(\")", R"(\\")",
                        R"(a\"b\\"c)"},
             ChildWords{"a.exe", R"(\)", R"(\\)", R"(\\\)"},
             ChildWords{"a.exe", "%PATH%", "a^b", "a&b|c<d>e", "'single'"},
             ChildWords{"a.exe", "\xd0\xa1\xd1\x86\xd0\xb5\xd0\xbd\xd0\xb0.json",
                        "\xf0\x9f\x8e\xa8 \xe6\xb0\xb4.exr"},
         }) {
        EXPECT_EQ(TakenApart(words), words) << host::ToUtf8(CommandLineOf(words).c_str());
    }
}

// This program again, as one of those below. That only a part of the tests is to run here is not
// for the child.
ChildWords RoleWords(const std::string& name) {
    for (const wchar_t* part : {L"GTEST_TOTAL_SHARDS", L"GTEST_SHARD_INDEX"})
        SetEnvironmentVariableW(part, nullptr);
    return {ThisProgram(), "--gtest_also_run_disabled_tests",
            "--gtest_filter=ChildRole.DISABLED_" + name};
}

constexpr std::size_t spoken = 1 << 20;

TEST(ChildRole, DISABLED_SpeaksOnBothStreams) {
    const std::string words(1024, 'o');
    const std::string faults(1024, 'e');
    for (std::size_t said = 0; said < spoken; said += words.size()) {
        std::fwrite(words.data(), 1, words.size(), stdout);
        std::fwrite(faults.data(), 1, faults.size(), stderr);
    }
    std::fflush(stdout);
    std::_Exit(7);
}

TEST(ChildRole, DISABLED_Sleeps) {
    std::fputs("asleep\n", stdout);
    std::fflush(stdout);
    Sleep(60'000);
    std::_Exit(0);
}

TEST(ChildRole, DISABLED_EndsAtOnce) {
    std::_Exit(0);
}

DWORD HandleCount() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

// False when it doesn't within a minute.
bool ReadToTheEnd(ChildProcess& child) {
    for (int tries = 0; tries < 6000; ++tries) {
        if (!child.Read()) return true;
        Sleep(10);
    }
    return false;
}

TEST(ChildProcess, AMegabyteOnBothStreamsAtOnceArrivesWhole) {
    ChildProcess child(RoleWords("SpeaksOnBothStreams"));
    ASSERT_TRUE(ReadToTheEnd(child));
    EXPECT_EQ(child.ExitCode(), 7U);
    const auto count = [](const std::string& text, char letter) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), letter));
    };
    EXPECT_GE(count(child.Output(), 'o'), spoken);
    EXPECT_EQ(child.Output().substr(child.Output().size() - 1024), std::string(1024, 'o'));
    EXPECT_GE(count(child.Errors(), 'e'), spoken);
    EXPECT_FALSE(child.Read()) << "it is asked again while a dialog is open";
}

TEST(ChildProcess, AProgramThatIsNotThereIsToldWithTheReason) {
    const std::string fault = FaultText<InputError>([] {
        ChildProcess child({"C:\\nowhere\\\xd0\xbd\xd0\xb5\xd1\x82.exe", "save"});
    });
    EXPECT_THAT(fault, testing::StartsWith("C:\\nowhere\\\xd0\xbd\xd0\xb5\xd1\x82.exe: "));
    EXPECT_THAT(fault, testing::Not(testing::HasSubstr("\r")));
    EXPECT_GT(fault.size(), 25U);
}

TEST(ChildProcess, OneThatSleepsEndsWithItsObject) {
    HANDLE process = nullptr;
    {
        ChildProcess child(RoleWords("Sleeps"));
        for (int tries = 0; tries < 3000 && child.Output().find("asleep") == std::string::npos;
             ++tries) {
            ASSERT_TRUE(child.Read());
            Sleep(10);
        }
        ASSERT_NE(child.Output().find("asleep"), std::string::npos);
        DuplicateHandle(GetCurrentProcess(), child.Process(), GetCurrentProcess(), &process,
                        SYNCHRONIZE, FALSE, 0);
        EXPECT_EQ(WaitForSingleObject(process, 0), DWORD{WAIT_TIMEOUT});
    }
    EXPECT_EQ(WaitForSingleObject(process, 0), DWORD{WAIT_OBJECT_0});
    CloseHandle(process);
}

TEST(ChildProcess, LeavesNoHandleBehind) {
    const auto liveAndDie = [] {
        ChildProcess child(RoleWords("EndsAtOnce"));
        return ReadToTheEnd(child) && child.ExitCode() == 0;
    };
    const auto fail = [] { EXPECT_THROW(ChildProcess({"C:\\nowhere\\no.exe"}), InputError); };
    // What the system keeps of the first.
    ASSERT_TRUE(liveAndDie());
    fail();
    const DWORD before = HandleCount();
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(liveAndDie());
        fail();
    }
    EXPECT_EQ(HandleCount(), before);
}

}  // namespace
}  // namespace command
