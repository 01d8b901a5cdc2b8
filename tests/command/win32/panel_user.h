// The user of the panel program's window: keys and clicks in the system's queue, and answers to the
// boxes that open.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/text.h"
#include "tests/host/win32/message_queue.h"

inline std::string PanelText(HWND window) {
    std::vector<wchar_t> text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1);
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return host::ToUtf8(text.data());
}

// Answers each box of this thread that opens while this lives, and keeps its text. A box that
// wasn't foreseen is answered with its cancel button or its only one.
class BoxUser {
  public:
    explicit BoxUser(std::vector<int> buttons = {}) : buttons_(std::move(buttons)) {
        user_ = this;
        timer_ = SetTimer(nullptr, 0, 20, Look);
    }
    BoxUser(const BoxUser&) = delete;
    BoxUser& operator=(const BoxUser&) = delete;
    ~BoxUser() {
        KillTimer(nullptr, timer_);
        user_ = nullptr;
    }

    // In the order in which they opened.
    std::vector<std::string> texts;
    // Runs while a box is open, before it is answered.
    std::function<void(HWND box)> onBox;

  private:
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
        EnumThreadWindows(GetCurrentThreadId(), Found, 0);
    }
    static BOOL CALLBACK TakeText(HWND child, LPARAM text) {
        wchar_t name[16] = {};
        GetClassNameW(child, name, 16);
        if (wcscmp(name, L"Static") == 0) {
            *reinterpret_cast<std::string*>(text) += PanelText(child);
        }
        return TRUE;
    }
    static BOOL CALLBACK Found(HWND window, LPARAM) {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (wcscmp(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
        if (!user_ || window == user_->last_) return TRUE;
        user_->last_ = window;
        std::string& text = user_->texts.emplace_back();
        EnumChildWindows(window, TakeText, reinterpret_cast<LPARAM>(&text));
        if (user_->onBox) user_->onBox(window);
        const std::size_t number = user_->texts.size() - 1;
        int button = number < user_->buttons_.size() ? user_->buttons_[number] : IDCANCEL;
        if (!GetDlgItem(window, button)) button = GetDlgItem(window, IDNO) ? IDNO : IDOK;
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button),
                     reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
        return FALSE;
    }

    static inline BoxUser* user_ = nullptr;
    std::vector<int> buttons_;
    UINT_PTR timer_ = 0;
    HWND last_ = nullptr;
};

// Steps that a user takes while a message loop runs, one after another. A step is taken again until
// it answers true; when that takes half a minute, the loop is ended with the code 99.
class LoopUser {
  public:
    explicit LoopUser(std::vector<std::function<bool()>> steps) : steps_(std::move(steps)) {
        user_ = this;
        timer_ = SetTimer(nullptr, 0, 30, Step);
    }
    LoopUser(const LoopUser&) = delete;
    LoopUser& operator=(const LoopUser&) = delete;
    ~LoopUser() {
        KillTimer(nullptr, timer_);
        user_ = nullptr;
    }
    bool IsDone() const { return next_ == steps_.size(); }

  private:
    static void CALLBACK Step(HWND, UINT, UINT_PTR, DWORD) {
        LoopUser* self = user_;
        if (!self || self->inStep_ || self->IsDone()) return;
        self->inStep_ = true;
        if (self->steps_[self->next_]()) ++self->next_;
        self->inStep_ = false;
        if (GetTickCount64() > self->end_) PostQuitMessage(99);
    }

    static inline LoopUser* user_ = nullptr;
    std::vector<std::function<bool()>> steps_;
    std::size_t next_ = 0;
    UINT_PTR timer_ = 0;
    ULONGLONG end_ = GetTickCount64() + 30'000;
    bool inStep_ = false;
};
