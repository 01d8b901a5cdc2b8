// The program as the user starts it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "command/native_path.h"
#include "command/win32/child_process.h"
#include "command/win32/panel_menu.h"
#include "tests/command/temporary_place.h"
#include "tests/command/test_folder.h"
#include "tests/command/win32/panel_test_files.h"
#include "tests/command/win32/panel_user.h"

namespace command {
namespace {

struct WindowOfProcess {
    DWORD process;
    HWND window;
};

BOOL CALLBACK TakePanel(HWND window, LPARAM wanted) {
    auto& found = *reinterpret_cast<WindowOfProcess*>(wanted);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    if (process != found.process || wcscmp(name, L"VeltranePanel") != 0) return TRUE;
    if (!IsWindowVisible(window)) return TRUE;
    found.window = window;
    return FALSE;
}

class PanelProgram : public FolderTest {
  protected:
    PanelProgram() { std::filesystem::create_directories(folder / "temporary"); }

    // Null when none shows within a minute.
    static HWND PanelOf(const ChildProcess& program) {
        WindowOfProcess wanted{GetProcessId(program.Process()), nullptr};
        for (int tries = 0; tries < 600 && !wanted.window; ++tries) {
            EnumWindows(TakePanel, reinterpret_cast<LPARAM>(&wanted));
            Sleep(100);
        }
        return wanted.window;
    }
    // Of the status bar.
    static std::string StatusOf(HWND panel) {
        HWND bar = FindWindowExW(panel, nullptr, L"msctls_statusbar32", nullptr);
        wchar_t text[1024] = {};
        DWORD_PTR length = 0;
        SendMessageTimeoutW(bar, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text), SMTO_NORMAL,
                            5000, &length);
        return host::ToUtf8(text);
    }
    static bool Becomes(const std::function<bool()>& holds) {
        for (int tries = 0; tries < 600; ++tries) {
            if (holds()) return true;
            Sleep(100);
        }
        return false;
    }
};

TEST_F(PanelProgram, OpensRendersAndEndsWithoutATrace) {
    const std::string sceneFile = Write("\xd1\x81\xd1\x86\xd0\xb5\xd0\xbd\xd0\xb0 1.JSON",
                                        R"({"veltrane": 1, "nodes": [{"name": "Lamp"}],
                                            "effect": {"parameters": {"bitDepth": 8}}})");
    const std::string render = Write("a render.exr", RenderWithElements());
    const TemporaryPlace temporary(PathOf("temporary"));
    ChildProcess program({BuiltProgram("veltrane-panel.exe"), sceneFile, render});
    HWND panel = PanelOf(program);
    ASSERT_NE(panel, nullptr);
    PostMessageW(panel, WM_COMMAND, PanelItem::renderNow, 0);
    EXPECT_TRUE(Becomes([&] { return Exists("a render.psd"); }));
    EXPECT_TRUE(Becomes([&] { return StatusOf(panel).starts_with("Saved "); }));
    EXPECT_THAT(StatusOf(panel), testing::HasSubstr("8 bits"));
    PostMessageW(panel, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Becomes([&] { return !program.Read(); })) << "nothing is to be asked";
    EXPECT_EQ(program.ExitCode(), 0U);
    EXPECT_EQ(program.Errors(), "");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "temporary"));
}

}  // namespace
}  // namespace command
