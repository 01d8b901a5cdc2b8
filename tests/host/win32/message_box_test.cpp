#include "host/win32/message_box.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "host/application.h"
#include "tests/host/win32/control_stage.h"
#include "tests/host/win32/modal_stage.h"

namespace {

class ShownBox : public testing::Test {
  protected:
    ShownBox() {
        host::ResetApplication();
        host::App().boxes.SetResponder(host::ShowMessageBox);
    }
    ~ShownBox() override { host::ResetApplication(); }

    static int Ask(UINT type, UINT exType, DWORD* exReturn, const std::function<void(HWND)>& act) {
        ModalUser user(act);
        const int button =
            MaxMsgBox(nullptr, _M("A question?"), _M("veltrane"), type, exType, exReturn);
        EXPECT_EQ(user.dialogs, 1);
        return button;
    }
    static void Press(HWND dialog, int button) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
    }
    static bool HasText(HWND dialog, const std::wstring& wanted) {
        for (HWND child = GetWindow(dialog, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            if (TextOf(child).find(wanted) != std::wstring::npos) return true;
        }
        return false;
    }
};

TEST_F(ShownBox, ShowsItsTextAndAnswersTheButton) {
    for (int button : {IDYES, IDNO}) {
        EXPECT_EQ(Ask(MB_YESNO | MB_ICONQUESTION, 0, nullptr,
                      [&](HWND dialog) {
                          EXPECT_EQ(TextOf(dialog), L"veltrane");
                          EXPECT_TRUE(HasText(dialog, L"A question?"));
                          Press(dialog, button);
                      }),
                  button);
    }
    EXPECT_EQ(host::App().boxes.Shown().size(), 2U);
}

TEST_F(ShownBox, ABoxWithoutTheOfferHasNoCheck) {
    DWORD exReturn = 9;
    EXPECT_EQ(Ask(MB_OK, 0, &exReturn,
                  [](HWND dialog) {
                      EXPECT_FALSE(HasText(dialog, L"show this"));
                      Press(dialog, IDOK);
                  }),
              IDOK);
    EXPECT_EQ(exReturn, 0U);
}

TEST_F(ShownBox, StandsOverTheHostsWindow) {
    const ControlStage stage;
    host::App().settings.mainWindow = stage.window;
    Ask(MB_OK | MB_ICONEXCLAMATION, 0, nullptr, [&](HWND dialog) {
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), stage.window);
        EXPECT_FALSE(IsWindowEnabled(stage.window));
        Press(dialog, IDOK);
    });
    EXPECT_TRUE(IsWindowEnabled(stage.window));
}

// The common controls that programs with a manifest get.
class CurrentControls {
  public:
    CurrentControls() {
        const std::wstring manifest =
            std::filesystem::path(VELTRANE_SOURCE_DIR "/ui/veltrane.manifest").wstring();
        ACTCTXW wanted{};
        wanted.cbSize = sizeof wanted;
        wanted.lpSource = manifest.c_str();
        context_ = CreateActCtxW(&wanted);
        ActivateActCtx(context_, &cookie_);
        library_ = LoadLibraryW(L"comctl32.dll");
    }
    CurrentControls(const CurrentControls&) = delete;
    CurrentControls& operator=(const CurrentControls&) = delete;
    ~CurrentControls() {
        FreeLibrary(library_);
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }
    bool HaveTaskDialogs() const {
        return GetProcAddress(library_, "TaskDialogIndirect") != nullptr;
    }

  private:
    HANDLE context_ = nullptr;
    ULONG_PTR cookie_ = 0;
    HMODULE library_ = nullptr;
};

TEST_F(ShownBox, TheOfferedCheckIsTold) {
    const CurrentControls controls;
    ASSERT_TRUE(controls.HaveTaskDialogs());
    for (const bool tick : {false, true}) {
        DWORD exReturn = 9;
        const int button =
            Ask(MB_YESNO | MB_ICONEXCLAMATION, MAX_MB_DONTSHOWAGAIN, &exReturn, [&](HWND dialog) {
                EXPECT_EQ(TextOf(dialog), L"veltrane");
                EXPECT_TRUE(HasText(dialog, L"A question?"));
                EXPECT_TRUE(HasText(dialog, L"show this"));
                SendMessageW(dialog, TDM_CLICK_VERIFICATION, tick, FALSE);
                SendMessageW(dialog, TDM_CLICK_BUTTON, IDNO, 0);
            });
        EXPECT_EQ(button, IDNO);
        EXPECT_EQ(exReturn, tick ? MAX_DONTSHOWAGAIN : 0U);
    }
}

TEST_F(ShownBox, ABoxWithButtonsThatNoTaskDialogHasIsShownWithoutTheCheck) {
    const CurrentControls controls;
    DWORD exReturn = 9;
    EXPECT_EQ(Ask(MB_ABORTRETRYIGNORE, MAX_MB_DONTSHOWAGAIN, &exReturn,
                  [](HWND dialog) {
                      EXPECT_FALSE(HasText(dialog, L"show this"));
                      Press(dialog, IDIGNORE);
                  }),
              IDIGNORE);
    EXPECT_EQ(exReturn, 0U);
}

}  // namespace
