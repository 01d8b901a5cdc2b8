#include "ui/win32/overwrite_dialog.h"

#include <windows.h>

#include <algorithm>

#include "plugin/library.h"
#include "ui/overwrite_prompt.h"
#include "ui/resource.h"
#include "ui/shortened_path.h"
#include "ui/win32/rollup_controls.h"
#include "ui/win32/text_width.h"

namespace ui {
namespace {

struct OverwriteDialog {
    const MSTR& text;
    effect::OverwriteAnswer answer{};
};

RECT PlaceIn(HWND dialog, int control) {
    return PlaceInDialog(GetDlgItem(dialog, control));
}

int WidthOf(const RECT& area) {
    return static_cast<int>(area.right - area.left);
}

void MoveControl(HWND dialog, int control, int left, int width) {
    const RECT area = PlaceIn(dialog, control);
    SetWindowPos(GetDlgItem(dialog, control), nullptr, left, area.top, width,
                 area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// Of the screen that the window is on, without what always stands there.
RECT ScreenAround(HWND window) {
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

// As wide as the path needs. One that is too wide for the screen is shortened.
void ShowText(HWND dialog, const MSTR& text) {
    HWND control = GetDlgItem(dialog, IDC_FILE_EXISTS_TEXT);
    RECT whole{};
    GetWindowRect(dialog, &whole);
    const RECT label = PlaceIn(dialog, IDC_FILE_EXISTS_TEXT);
    const RECT yes = PlaceIn(dialog, IDYES);
    const RECT no = PlaceIn(dialog, IDNO);
    const OverwriteWidths present{WidthOf(whole), WidthOf(label), static_cast<int>(yes.left),
                                  static_cast<int>(no.left)};
    const RECT screen = ScreenAround(dialog);
    const auto widthOf = [control](const MSTR& line) { return TextWidthIn(control, line); };
    const int room = present.text + std::max(0, WidthOf(screen) - present.dialog);
    const MSTR line = ShortenedPath(PathLine(text), room, widthOf);
    SetWindowTextW(control, WithPathLine(text, line).data());
    const OverwriteWidths grown = GrownToFit(present, widthOf(line));
    const int left = std::max(
        static_cast<int>(screen.left),
        std::min(static_cast<int>(whole.left), static_cast<int>(screen.right) - grown.dialog));
    SetWindowPos(dialog, nullptr, left, whole.top, grown.dialog, whole.bottom - whole.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    MoveControl(dialog, IDC_FILE_EXISTS_TEXT, static_cast<int>(label.left), grown.text);
    MoveControl(dialog, IDYES, grown.yesLeft, WidthOf(yes));
    MoveControl(dialog, IDNO, grown.noLeft, WidthOf(no));
}

void InitialiseOverwrite(HWND dialog, const MSTR& text) {
    EnableMenuItem(GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    constexpr int iconSize = 32;
    // Shared with the system: not to be destroyed.
    HANDLE icon = LoadImageW(nullptr, IDI_WARNING, IMAGE_ICON, iconSize, iconSize, LR_SHARED);
    SendDlgItemMessageW(dialog, IDC_FILE_EXISTS_ICON, STM_SETICON, reinterpret_cast<WPARAM>(icon),
                        0);
    ShowText(dialog, text);
    // The button that the Enter key presses.
    SetFocus(GetDlgItem(dialog, IDYES));
}

INT_PTR CALLBACK OverwriteProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        InitialiseOverwrite(dialog, reinterpret_cast<OverwriteDialog*>(lParam)->text);
        return FALSE;
    }
    const int button = LOWORD(wParam);
    if (message != WM_COMMAND || (button != IDYES && button != IDNO)) return FALSE;
    auto* state = reinterpret_cast<OverwriteDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!state) return FALSE;
    state->answer = AnswerOf(button, IsDlgButtonChecked(dialog, IDC_DO_NOT_ASK) == BST_CHECKED);
    EndDialog(dialog, button);
    return TRUE;
}

}  // namespace

effect::OverwriteAnswer ShowOverwriteDialog(HWND parent, const MSTR& text) {
    OverwriteDialog state{text};
    DialogBoxParamW(plugin::Module(), MAKEINTRESOURCEW(IDD_FILE_EXISTS), parent, OverwriteProcedure,
                    reinterpret_cast<LPARAM>(&state));
    return state.answer;
}

}  // namespace ui
