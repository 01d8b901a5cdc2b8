// Windows for tests that look for some: the host's own where there is no window system, and real
// ones on Windows. They go with the object.
#pragma once

#include <maxtypes.h>

#include <set>
#include <string>

#include "host/application.h"
#include "host/text.h"

struct StageWindow {
    const MCHAR* className;
    const MCHAR* title;
    // Null for a top-level window.
    HWND parent = nullptr;
    // Of a top-level window.
    HWND owner = nullptr;
    int id = 0;
};

#ifdef _WIN32

class WindowStage {
  public:
    WindowStage() = default;
    WindowStage(const WindowStage&) = delete;
    WindowStage& operator=(const WindowStage&) = delete;
    ~WindowStage() {
        for (HWND window : std::set<HWND>(windows))
            Remove(window);
    }

    // Behind its siblings, and never shown.
    HWND Add(const StageWindow& wanted) {
        // Fails without harm for a class that the system or an earlier test has.
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = wanted.className;
        RegisterClassW(&windowClass);
        const DWORD style = wanted.parent ? WS_CHILD : WS_POPUP;
        const auto id = static_cast<INT_PTR>(wanted.id);
        HWND window = CreateWindowExW(0, wanted.className, wanted.title, style, 0, 0, 10, 10,
                                      wanted.parent ? wanted.parent : wanted.owner,
                                      wanted.parent ? reinterpret_cast<HMENU>(id) : nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
        SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        windows.insert(window);
        return window;
    }
    void Remove(HWND window) {
        DestroyWindow(window);
        windows.erase(window);
    }
    // UTF-8.
    std::string TextOf(HWND window) const {
        MCHAR text[256] = {};
        GetWindowTextW(window, text, 256);
        return host::ToUtf8(text);
    }

  private:
    std::set<HWND> windows;
};

#else

class WindowStage {
  public:
    HWND Add(const StageWindow& wanted) {
        return host::App().windows.Add(
            {wanted.className, wanted.title, wanted.parent, wanted.owner, wanted.id});
    }
    void Remove(HWND window) { host::App().windows.Remove(window); }
    std::string TextOf(HWND window) const { return host::ToUtf8(window->title); }
};

#endif
