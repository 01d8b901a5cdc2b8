// The user of a modal dialog: looks for it while it keeps the thread, and does something with it.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

class ModalUser {
  public:
    // `act` gets each dialog of this thread that opens while this lives, once.
    explicit ModalUser(std::function<void(HWND dialog)> act) : act_(std::move(act)) {
        user = this;
        timer_ = SetTimer(nullptr, 0, 50, Look);
    }
    ModalUser(const ModalUser&) = delete;
    ModalUser& operator=(const ModalUser&) = delete;
    ~ModalUser() {
        KillTimer(nullptr, timer_);
        user = nullptr;
    }

    int dialogs = 0;

  private:
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
        EnumThreadWindows(GetCurrentThreadId(), Found, 0);
    }
    static BOOL CALLBACK Found(HWND window, LPARAM) {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (wcscmp(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
        if (!user || window == user->last_) return TRUE;
        user->last_ = window;
        ++user->dialogs;
        user->act_(window);
        return FALSE;
    }
    static inline ModalUser* user = nullptr;

    std::function<void(HWND)> act_;
    UINT_PTR timer_ = 0;
    HWND last_ = nullptr;
};
