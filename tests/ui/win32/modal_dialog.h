// What a user sees of a modal dialog and does there.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/win32/panel_stage.h"

inline HWND FindDialog(const wchar_t* title) {
    HWND dialog = FindWindowW(L"#32770", title);
    return dialog && IsWindowVisible(dialog) ? dialog : nullptr;
}

inline std::string WindowText(HWND window) {
    std::vector<MCHAR> text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1);
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return host::ToUtf8(text.data());
}

// As it is read: without the mark of its letter.
inline std::string LabelOf(HWND window) {
    std::string label = WindowText(window);
    std::erase(label, '&');
    return label;
}

inline std::string ClassOf(HWND window) {
    MCHAR name[64] = {};
    GetClassNameW(window, name, 64);
    return host::ToUtf8(name);
}

// On the screen.
inline RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}
inline int WidthOf(HWND window) {
    const RECT place = PlaceOf(window);
    return static_cast<int>(place.right - place.left);
}

// The numbers of the controls that the tab key goes through, from the first one on.
inline std::vector<int> TabOrder(HWND dialog) {
    std::vector<int> order;
    HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    for (HWND control = first; control; control = GetNextDlgTabItem(dialog, control, FALSE)) {
        if (control == first && !order.empty()) break;
        order.push_back(GetDlgCtrlID(control));
    }
    return order;
}

// The user takes an item of a combo.
inline void ChooseItem(HWND dialog, int id, int item) {
    HWND combo = GetDlgItem(dialog, id);
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, CBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(combo));
}

// A window that dialogs are opened over, and what happens in them.
class ModalDialogTest : public EffectTest {
  protected:
    ModalDialogTest() {
        parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 100, 80, 500, 400, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
        ShowWindow(parent, SW_SHOWNOACTIVATE);
    }
    ~ModalDialogTest() override { DestroyWindow(parent); }

    // Opens the dialog of that title, does what the user does in it, and closes it with `cancel`
    // if it is open then. False when it didn't open.
    static bool InDialog(const wchar_t* title, const std::function<void()>& open,
                         const std::function<void(HWND)>& act, int cancel) {
        const InModalLoop loop([title] { return FindDialog(title); },
                               [&](HWND dialog) {
                                   act(dialog);
                                   if (!FindDialog(title)) return;
                                   SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(cancel), 0);
                               });
        open();
        return loop.HasActed();
    }
    static void Click(HWND dialog, int id) {
        HWND control = GetDlgItem(dialog, id);
        PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        PumpMessages();
    }
    // A key as the dialog's own message loop takes it.
    static void Key(HWND dialog, WPARAM key) {
        MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
        if (!IsDialogMessageW(dialog, &message)) DispatchMessageW(&message);
    }

    HWND parent = nullptr;
};
