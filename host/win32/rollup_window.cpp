#include "host/win32/rollup_window.h"

#include <windows.h>

#include <commctrl.h>
#include <icolorman.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <new>
#include <utility>
#include <vector>

#include "host/win32/control_object.h"
#include "host/win32/rollup_focus.h"
#include "host/win32/rollup_template.h"
#include "host/win32/rollup_title.h"
#include "host/win32/ui_scale.h"

namespace host {
namespace {

// Around the titles and between them, in pixels at 96 dots per inch.
constexpr int ROLLUP_MARGIN = 3;
// Lines of the scroll bar and the wheel, the same way.
constexpr int ROLLUP_LINE = 16;
// To the window itself.
constexpr UINT DRAW_BAR = WM_APP;

RECT PlaceIn(HWND parent, HWND child) {
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

class RollupWindow final : public CustomControl<IRollupWindow> {
  public:
    explicit RollupWindow(HWND window)
        : CustomControl(window),
          titleFont_(CreateRollupTitleFont()),
          titleHeight_(RollupTitleHeight(titleFont_)) {
        StartFollowingFocus();
    }

    int AppendRollup(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                     const MCHAR* title, LPARAM param, DWORD flags, int category) override;
    void DeleteRollup(int index, int count) override;
    int GetNumPanels() override { return static_cast<int>(panels_.size()); }
    int GetPanelIndex(HWND dialog) override;
    HWND GetPanelDlg(int index) override {
        const Panel* panel = At(index);
        return panel ? panel->dialog : nullptr;
    }
    BOOL IsPanelOpen(int index) override {
        const Panel* panel = At(index);
        return panel && panel->open;
    }
    void SetPanelOpen(int index, BOOL open) override;
    void SetPageDlgHeight(int index, int height) override;
    int GetPageDlgHeight(int index) override;
    void DlgMouseMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) override;
    void RegisterRollupCallback(IRollupCallback* callback) override { callback_ = callback; }
    void UnRegisterRollupCallback(IRollupCallback* callback) override {
        if (callback_ == callback) callback_ = nullptr;
    }

    int Width() const;
    // Of the window's client area. Where it doesn't fit, its top is seen.
    void Show(const RECT& place);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    ~RollupWindow() override { DeleteObject(titleFont_); }

    struct Panel {
        HWND title;
        HWND dialog;
        bool open;
    };

    Panel* At(int index) {
        const bool there = index >= 0 && index < GetNumPanels();
        return there ? &panels_[static_cast<std::size_t>(index)] : nullptr;
    }
    int IndexOfTitle(HWND title) const;
    void Close(int index);
    void Place();
    int ContentHeight() const;
    int ViewHeight() const;
    void ScrollTo(int position);
    void ScrollBy(int code);
    void Wheel(int delta);
    void Toggle(HWND title);

    HFONT titleFont_;
    int titleHeight_;
    std::vector<Panel> panels_;
    // The title whose dialog is being made.
    HWND awaiting_ = nullptr;
    IRollupCallback* callback_ = nullptr;
    // Pixels that are out of sight above.
    int position_ = 0;
    // Pixels of the wheel that no line came of.
    int wheelRest_ = 0;
    // The scroll bar doesn't show yet what it was told.
    bool barIsOld_ = false;
    // The window that the mouse drags; null while it drags none.
    HWND dragged_ = nullptr;
    // Of the screen, and the position there.
    LONG dragStart_ = 0;
    int dragPosition_ = 0;
};

int RollupWindow::AppendRollup(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                               const MCHAR* title, LPARAM param, DWORD flags, int /*category*/) {
    if (!Window()) return -1;
    const std::vector<DWORD> form = RollupTemplate(module, dlgTemplate);
    if (form.empty()) return -1;
    HWND bar = CreateRollupTitle(Window(), title, titleFont_);
    panels_.push_back({bar, nullptr, (flags & APPENDROLL_CLOSED) == 0});
    // The dialog's procedure may ask for its rollup already.
    awaiting_ = bar;
    // What follows the focus would be asked about each control that is made.
    StopFollowingFocus();
    HWND dialog = CreateDialogIndirectParamW(
        module, reinterpret_cast<const DLGTEMPLATE*>(form.data()), Window(), dlgProc, param);
    StartFollowingFocus();
    awaiting_ = nullptr;
    const int index = IndexOfTitle(bar);
    if (!IsWindow(dialog)) {
        if (index >= 0) Close(index);
        return -1;
    }
    SetWindowPos(dialog, bar, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Place();
    return index;
}

void RollupWindow::Close(int index) {
    const Panel panel = panels_[static_cast<std::size_t>(index)];
    if (dragged_ == panel.dialog) dragged_ = nullptr;
    // While it is destroyed the dialog still has its number.
    if (panel.dialog) DestroyWindow(panel.dialog);
    const int left = IndexOfTitle(panel.title);
    if (left >= 0) panels_.erase(panels_.begin() + left);
    DestroyWindow(panel.title);
}

void RollupWindow::DeleteRollup(int index, int count) {
    for (int i = 0; i < count && At(index); ++i)
        Close(index);
    Place();
}

int RollupWindow::IndexOfTitle(HWND title) const {
    const auto found = std::find_if(panels_.begin(), panels_.end(),
                                    [&](const Panel& panel) { return panel.title == title; });
    return found == panels_.end() ? -1 : static_cast<int>(found - panels_.begin());
}

int RollupWindow::GetPanelIndex(HWND dialog) {
    const auto found = std::find_if(panels_.begin(), panels_.end(), [&](const Panel& panel) {
        return dialog && panel.dialog == dialog;
    });
    return found == panels_.end() ? -1 : static_cast<int>(found - panels_.begin());
}

void RollupWindow::SetPanelOpen(int index, BOOL open) {
    Panel* panel = At(index);
    if (!panel || panel->open == (open != FALSE)) return;
    HWND title = panel->title;
    HWND dialog = panel->dialog;
    if (!open && GetCapture() == dialog) ReleaseCapture();
    // The keyboard stays with what is seen, and what was typed is given while the dialog is.
    if (!open && (GetFocus() == dialog || IsChild(dialog, GetFocus()))) SetFocus(title);
    index = IndexOfTitle(title);
    panel = At(index);
    if (!panel) return;
    panel->open = open != FALSE;
    InvalidateRect(title, nullptr, FALSE);
    Place();
    if (callback_) callback_->HandleOpenChange(index, open != FALSE);
}

void RollupWindow::SetPageDlgHeight(int index, int height) {
    const Panel* panel = At(index);
    if (!panel || height < 0) return;
    const RECT place = PlaceIn(Window(), panel->dialog);
    SetWindowPos(panel->dialog, nullptr, 0, 0, place.right - place.left, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Place();
}

int RollupWindow::GetPageDlgHeight(int index) {
    const Panel* panel = At(index);
    if (!panel) return 0;
    const RECT place = PlaceIn(Window(), panel->dialog);
    return place.bottom - place.top;
}

void RollupWindow::DlgMouseMessage(HWND dialog, UINT message, WPARAM /*wParam*/, LPARAM lParam) {
    // The dialog itself moves under the mouse; the screen doesn't.
    POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    ClientToScreen(dialog, &point);
    switch (message) {
        case WM_LBUTTONDOWN:
            SetCapture(dialog);
            dragged_ = dialog;
            dragStart_ = point.y;
            dragPosition_ = position_;
            break;
        case WM_MOUSEMOVE:
            if (dragged_ != dialog || GetCapture() != dialog) break;
            SetCursor(LoadCursorW(nullptr, IDC_HAND));
            ScrollTo(dragPosition_ - static_cast<int>(point.y - dragStart_));
            break;
        case WM_LBUTTONUP:
            if (dragged_ != dialog) break;
            dragged_ = nullptr;
            if (GetCapture() == dialog) ReleaseCapture();
            break;
        default:
            break;
    }
}

int RollupWindow::Width() const {
    int widest = 0;
    for (const Panel& panel : panels_) {
        const RECT place = PlaceIn(Window(), panel.dialog);
        widest = std::max(widest, static_cast<int>(place.right - place.left));
    }
    RECT whole{};
    GetWindowRect(Window(), &whole);
    RECT client{};
    GetClientRect(Window(), &client);
    const int frame = static_cast<int>((whole.right - whole.left) - client.right);
    return widest + 2 * UIScaled(ROLLUP_MARGIN) + frame;
}

int RollupWindow::ViewHeight() const {
    RECT client{};
    GetClientRect(Window(), &client);
    return client.bottom;
}

int RollupWindow::ContentHeight() const {
    const int margin = UIScaled(ROLLUP_MARGIN);
    int height = margin;
    for (const Panel& panel : panels_) {
        height += titleHeight_ + margin;
        if (!panel.open || !panel.dialog) continue;
        const RECT place = PlaceIn(Window(), panel.dialog);
        height += place.bottom - place.top + margin;
    }
    return height;
}

// Shows what is open, where it belongs, and hides what isn't.
void RollupWindow::Place() {
    RECT client{};
    GetClientRect(Window(), &client);
    const int content = ContentHeight();
    position_ = std::clamp(position_, 0, std::max(0, content - static_cast<int>(client.bottom)));
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    // A bar that came and went would change the width of all.
    scroll.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    scroll.nMax = content - 1;
    scroll.nPage = static_cast<UINT>(client.bottom);
    scroll.nPos = position_;
    SetScrollInfo(Window(), SB_VERT, &scroll, FALSE);
    // Once for all that is placed in a row: to draw the bar takes longer than to place a dialog.
    if (!std::exchange(barIsOld_, true)) PostMessageW(Window(), DRAW_BAR, 0, 0);

    const int margin = UIScaled(ROLLUP_MARGIN);
    const int width = std::max(0, static_cast<int>(client.right) - 2 * margin);
    int y = margin - position_;
    constexpr UINT quietly = SWP_NOZORDER | SWP_NOACTIVATE;
    // A dialog that moves may open or delete rollups.
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        const Panel panel = panels_[i];
        const RECT title{margin, y, margin + width, y + titleHeight_};
        const RECT titlePlace = PlaceIn(Window(), panel.title);
        if (!EqualRect(&title, &titlePlace)) {
            SetWindowPos(panel.title, nullptr, margin, y, width, titleHeight_, quietly);
        }
        y += titleHeight_ + margin;
        if (!panel.dialog) continue;
        const bool visible = GetWindowLongPtrW(panel.dialog, GWL_STYLE) & WS_VISIBLE;
        if (!panel.open) {
            if (visible) ShowWindow(panel.dialog, SW_HIDE);
            continue;
        }
        const RECT place = PlaceIn(Window(), panel.dialog);
        if (!visible || place.left != margin || place.top != y) {
            SetWindowPos(panel.dialog, nullptr, margin, y, 0, 0,
                         quietly | SWP_NOSIZE | SWP_SHOWWINDOW);
        }
        y += place.bottom - place.top + margin;
    }
}

void RollupWindow::ScrollTo(int position) {
    const int before = position_;
    position_ = std::clamp(position, 0, std::max(0, ContentHeight() - ViewHeight()));
    if (position_ != before) Place();
}

void RollupWindow::ScrollBy(int code) {
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_TRACKPOS;
    const int line = UIScaled(ROLLUP_LINE);
    const int page = std::max(line, ViewHeight() - line);
    switch (code) {
        case SB_LINEUP:
            return ScrollTo(position_ - line);
        case SB_LINEDOWN:
            return ScrollTo(position_ + line);
        case SB_PAGEUP:
            return ScrollTo(position_ - page);
        case SB_PAGEDOWN:
            return ScrollTo(position_ + page);
        case SB_TOP:
            return ScrollTo(0);
        case SB_BOTTOM:
            return ScrollTo(ContentHeight());
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            GetScrollInfo(Window(), SB_VERT, &scroll);
            return ScrollTo(scroll.nTrackPos);
        default:
            return;
    }
}

void RollupWindow::Wheel(int delta) {
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int notch =
        lines == WHEEL_PAGESCROLL ? ViewHeight() : static_cast<int>(lines) * UIScaled(ROLLUP_LINE);
    wheelRest_ += delta * notch;
    const int pixels = wheelRest_ / WHEEL_DELTA;
    wheelRest_ -= pixels * WHEEL_DELTA;
    ScrollTo(position_ - pixels);
}

void RollupWindow::Show(const RECT& place) {
    const int top = static_cast<int>(place.top);
    const int below = static_cast<int>(place.bottom) - ViewHeight();
    if (top < 0) {
        ScrollTo(position_ + top);
    } else if (below > 0) {
        ScrollTo(position_ + std::min(below, top));
    }
}

void RollupWindow::Toggle(HWND title) {
    int index = IndexOfTitle(title);
    if (index < 0) return;
    SetPanelOpen(index, !IsPanelOpen(index));
    index = IndexOfTitle(title);
    if (index < 0 || !IsPanelOpen(index)) return;
    RECT opened = PlaceIn(Window(), title);
    opened.bottom = PlaceIn(Window(), GetPanelDlg(index)).bottom;
    Show(opened);
}

LRESULT RollupWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCREATE: {
            const LONG_PTR style = GetWindowLongPtrW(Window(), GWL_STYLE);
            SetWindowLongPtrW(Window(), GWL_STYLE, style | WS_VSCROLL | WS_CLIPCHILDREN);
            const LONG_PTR extended = GetWindowLongPtrW(Window(), GWL_EXSTYLE);
            SetWindowLongPtrW(Window(), GWL_EXSTYLE, extended | WS_EX_CONTROLPARENT);
            break;
        }
        case WM_NCDESTROY:
            // The dialogs went with the window.
            panels_.clear();
            callback_ = nullptr;
            StopFollowingFocus();
            break;
        case WM_PARENTNOTIFY:
            if (LOWORD(wParam) != WM_CREATE || !awaiting_) break;
            if (Panel* panel = At(IndexOfTitle(awaiting_))) {
                panel->dialog = reinterpret_cast<HWND>(lParam);
            }
            awaiting_ = nullptr;
            return 0;
        case WM_SIZE:
            Place();
            return 0;
        case DRAW_BAR:
            barIsOld_ = false;
            RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_NOCHILDREN);
            return 0;
        case WM_ERASEBKGND: {
            RECT area{};
            GetClientRect(Window(), &area);
            FillRect(reinterpret_cast<HDC>(wParam), &area,
                     GetColorManager()->CustSysColorBrush(COLOR_BTNFACE));
            return TRUE;
        }
        case WM_VSCROLL:
            ScrollBy(LOWORD(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            Wheel(static_cast<short>(HIWORD(wParam)));
            return 0;
        case WM_LBUTTONDOWN:
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
            DlgMouseMessage(Window(), message, wParam, lParam);
            return 0;
        case WM_COMMAND:
            // A quick second click comes under a code of its own.
            if (HIWORD(wParam) == BN_CLICKED || HIWORD(wParam) == BN_DOUBLECLICKED) {
                Toggle(reinterpret_cast<HWND>(lParam));
            }
            return 0;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            DrawRollupTitle(item, IsPanelOpen(IndexOfTitle(item.hwndItem)) != FALSE);
            return TRUE;
        }
        default:
            break;
    }
    return DefWindowProcW(Window(), message, wParam, lParam);
}

LRESULT CALLBACK RollupWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

ControlClass rollupClass{
    .make = [](HWND window) -> ControlObject* { return new (std::nothrow) RollupWindow(window); },
    .base = DefWindowProcW,
};

LRESULT CALLBACK RollupWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(rollupClass, window, message, wParam, lParam);
}

// Null for a window that isn't of the class.
RollupWindow* RollupWindowOf(HWND window) {
    return static_cast<RollupWindow*>(ControlOf(rollupClass, window));
}

}  // namespace

bool RegisterRollupWindowClass() {
    WNDCLASSEXW rollups{};
    rollups.lpfnWndProc = RollupWindowProc;
    rollups.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    rollups.lpszClassName = ROLLUPWINDOWCLASS;
    return RegisterControl(rollupClass, rollups);
}

int RollupWindowWidth(HWND rollupWindow) {
    const RollupWindow* rollups = RollupWindowOf(rollupWindow);
    return rollups ? rollups->Width() : 0;
}

namespace {

// Of the rollups that the control stands in; null when there are none.
HWND RollupWindowAround(HWND control) {
    HWND parent = GetAncestor(control, GA_PARENT);
    while (parent && !RollupWindowOf(parent))
        parent = GetAncestor(parent, GA_PARENT);
    return parent;
}

bool IsClosedDropDownList(HWND window) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return _wcsicmp(name, WC_COMBOBOXW) == 0 && !SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0);
}

}  // namespace

bool ScrollByWheel(const MSG& message) {
    if (message.message != WM_MOUSEWHEEL || !IsClosedDropDownList(message.hwnd)) return false;
    HWND rollups = RollupWindowAround(message.hwnd);
    if (!rollups) return false;
    SendMessageW(rollups, message.message, message.wParam, message.lParam);
    return true;
}

void ShowInRollups(HWND control) {
    HWND window = RollupWindowAround(control);
    if (window) RollupWindowOf(window)->Show(PlaceIn(window, control));
}

}  // namespace host

IRollupWindow* GetIRollup(HWND control) {
    host::RollupWindow* rollups = host::RollupWindowOf(control);
    if (rollups) rollups->Hold();
    return rollups;
}

void ReleaseIRollup(IRollupWindow* control) {
    if (control) static_cast<host::RollupWindow*>(control)->Release();
}
