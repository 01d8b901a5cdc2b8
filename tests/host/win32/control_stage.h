// A window for controls, which keeps what they tell it, and the messages that a user's hands make.
#pragma once

#include <custcont.h>

#include <windowsx.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/win32/control_classes.h"
#include "host/win32/spinner_control.h"

// What a control tells its parent, as text: "clicked 7".
inline std::string NoticeText(UINT message, WPARAM wParam) {
    const std::pair<int, const char*> codes[] = {
        {BN_CLICKED, "clicked"}, {BN_RIGHTCLICK, "right-clicked"}, {EN_SETFOCUS, "focused"},
        {EN_KILLFOCUS, "left"},  {EN_CHANGE, "changed"},           {EN_UPDATE, "updated"}};
    const std::string id = " " + std::to_string(LOWORD(wParam));
    const std::string high = HIWORD(wParam) ? " 1" : " 0";
    switch (message) {
        case WM_COMMAND:
            for (const auto& [code, name] : codes)
                if (code == HIWORD(wParam)) return name + id;
            return "code " + std::to_string(HIWORD(wParam)) + id;
        case WM_CUSTEDIT_ENTER:
            return "given" + id;
        case host::spinnerChange:
            return "spun" + id + high;
        case host::spinnerButtonDown:
            return "pressed" + id;
        case host::spinnerButtonUp:
            return "let go" + id + high;
        default:
            return {};
    }
}

class ControlStage {
  public:
    ControlStage() {
        host::RegisterControlClasses();
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"ControlStage";
        windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        RegisterClassW(&windowClass);
        window = CreateWindowExW(0, L"ControlStage", L"", WS_POPUP, 50, 50, 400, 300, nullptr,
                                 nullptr, GetModuleHandleW(nullptr), nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        // Without being activated: to hide a window that was takes a while where there is no window
        // manager.
        ShowWindow(window, SW_SHOWNOACTIVATE);
    }
    ControlStage(const ControlStage&) = delete;
    ControlStage& operator=(const ControlStage&) = delete;
    ~ControlStage() {
        if (IsWindow(window)) {
            DestroyWindow(window);
        }
    }

    // At 10, 10 for a child with no place.
    HWND Add(const wchar_t* className, int id, const wchar_t* text = L"", DWORD style = 0,
             RECT place = {10, 10, 90, 34}) const {
        return CreateWindowExW(
            0, className, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, place.left, place.top,
            place.right - place.left, place.bottom - place.top, window,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    }
    // What was told since the last call.
    std::vector<std::string> Told() { return std::exchange(notices_, {}); }

    HWND window = nullptr;
    // Runs when something is told, after it was kept.
    std::function<void(const std::string&)> onNotice;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const stage =
            reinterpret_cast<ControlStage*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        std::string notice = NoticeText(message, wParam);
        if (!stage || notice.empty()) {
            return DefWindowProcW(window, message, wParam, lParam);
        }
        // The control itself is in lParam.
        if (GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) != LOWORD(wParam)) {
            notice += " of another window";
        }
        stage->notices_.push_back(notice);
        if (stage->onNotice) {
            stage->onNotice(notice);
        }
        return 0;
    }

    std::vector<std::string> notices_;
};

// At a point of the window's client area.
inline void Mouse(HWND window, UINT message, int x = 5, int y = 5) {
    SendMessageW(window, message, 0, MAKELPARAM(x, y));
}

inline void Key(HWND window, UINT message, WPARAM key) {
    SendMessageW(window, message, key, 1);
}

inline void Type(HWND window, const wchar_t* text) {
    for (; *text; ++text)
        SendMessageW(window, WM_CHAR, static_cast<WPARAM>(*text), 1);
}

// As a message loop of a dialog takes it: through the dialog's own keys first.
inline void DialogKey(HWND dialog, WPARAM key) {
    for (const UINT message : {WM_KEYDOWN, WM_KEYUP}) {
        MSG keyMessage{GetFocus(), message, key, 1, 0, {}};
        if (!IsDialogMessageW(dialog, &keyMessage)) {
            SendMessageW(keyMessage.hwnd, message, key, 1);
        }
    }
}

inline std::wstring TextOf(HWND window) {
    wchar_t text[1024] = {};
    GetWindowTextW(window, text, 1024);
    return text;
}

// The client area as the window paints it, in rows from the top.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels;

    COLORREF At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    int Count(COLORREF color) const {
        int count = 0;
        for (const COLORREF pixel : pixels)
            count += pixel == color;
        return count;
    }
};

// What `paint` draws on a background of one colour.
inline Picture PictureOf(int width, int height, COLORREF background,
                         const std::function<void(HDC)>& paint) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    HGDIOBJ former = SelectObject(dc, bitmap);
    const RECT whole{0, 0, width, height};
    HBRUSH brush = CreateSolidBrush(background);
    FillRect(dc, &whole, brush);
    DeleteObject(brush);
    paint(dc);
    Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.pixels.push_back(GetPixel(dc, x, y));
    }
    SelectObject(dc, former);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return picture;
}

inline Picture PictureOf(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    return PictureOf(client.right, client.bottom, RGB(255, 0, 255), [&](HDC dc) {
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    });
}
