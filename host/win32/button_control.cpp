#include "host/win32/button_control.h"

#include <icolorman.h>

#include <windowsx.h>

#include <algorithm>
#include <new>

#include "host/win32/color_manager.h"
#include "host/win32/control_look.h"
#include "host/win32/control_object.h"
#include "host/win32/host_icons.h"
#include "host/win32/ui_scale.h"

namespace host {
namespace {

constexpr int ICON_SIDE = 16;
// Pixels at 96 dots per inch between the frame and a text.
constexpr int TEXT_MARGIN = 3;
// Of a folder's front, and other large parts of a picture.
constexpr COLORREF ICON_FILL = RGB(0xf0, 0xc8, 0x60);
constexpr LPARAM REPEATED_KEY = 1 << 30;

enum class ButtonPress { None, Left, Right, Space };

class ButtonControl final : public CustomControl<ICustButton> {
  public:
    using CustomControl::CustomControl;

    void SetText(const MCHAR* text) override {
        icon_ = MSTR();
        SetWindowTextW(Window(), text ? text : L"");
        Redraw();
    }
    void SetIconByName(const MSTR& iconName, int iconWidth, int iconHeight) override {
        if (!HasIcon(iconName)) {
            return;
        }
        icon_ = iconName;
        iconSize_ = {iconWidth > 0 ? iconWidth : ICON_SIDE,
                     iconHeight > 0 ? iconHeight : ICON_SIDE};
        Redraw();
    }
    void SetType(CustButType type) override { type_ = type; }
    BOOL IsChecked() override { return checked_; }
    void SetCheck(BOOL checked) override {
        checked_ = checked != FALSE;
        Redraw();
    }
    void SetRightClickNotify(BOOL notify) override { rightNotify_ = notify != FALSE; }
    INT_PTR Execute(int cmd, ULONG_PTR arg1, ULONG_PTR arg2, ULONG_PTR arg3) override {
        if (cmd != I_EXEC_CB_NO_BORDER) {
            return CustomControl::Execute(cmd, arg1, arg2, arg3);
        }
        flat_ = true;
        Redraw();
        return 0;
    }

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) {
        return DefWindowProcW(Window(), message, wParam, lParam);
    }
    bool Enabled() const { return IsWindowEnabled(Window()) != FALSE; }
    void Notify(WORD code) { TellParent(WM_COMMAND, code, reinterpret_cast<LPARAM>(Window())); }
    void Click();
    void BeginPress(ButtonPress press);
    // Over the button or not.
    void MovePress(bool inside);
    // Without the notification; whether it was over the button to the end.
    bool EndPress();
    void MouseDown(ButtonPress press);
    void MouseMove(LPARAM lParam);
    LRESULT Key(UINT message, WPARAM key, LPARAM lParam);
    FaceState Face() const;
    void Paint(HDC dc, const RECT& client) const;
    void PaintContent(HDC dc, const RECT& client, const FaceState& face) const;

    CustButType type_ = CBT_PUSH;
    // Empty: the text is shown.
    MSTR icon_;
    SIZE iconSize_{};
    HFONT font_ = nullptr;
    bool checked_ = false;
    bool rightNotify_ = false;
    bool flat_ = false;
    bool isDefault_ = false;
    bool hot_ = false;
    // Looks pressed: by BM_SETSTATE, or while it is being pressed with the mouse over it.
    bool pushed_ = false;
    ButtonPress press_ = ButtonPress::None;
};

void ButtonControl::Click() {
    if (type_ == CBT_CHECK) {
        checked_ = !checked_;
        Redraw();
    }
    Notify(BN_CLICKED);
}

void ButtonControl::BeginPress(ButtonPress press) {
    press_ = press;
    // Through the whole press, with the key too, so that whoever takes the mouse ends it.
    SetCapture(Window());
    MovePress(true);
}

void ButtonControl::MovePress(bool inside) {
    const bool pushed = inside && press_ != ButtonPress::Right;
    if (pushed != pushed_) {
        pushed_ = pushed;
        Redraw();
    }
}

bool ButtonControl::EndPress() {
    const bool wasPushed = pushed_;
    press_ = ButtonPress::None;
    MovePress(false);
    if (GetCapture() == Window()) {
        ReleaseCapture();
    }
    return wasPushed;
}

void ButtonControl::MouseDown(ButtonPress press) {
    if (!Enabled() || press_ != ButtonPress::None) {
        return;
    }
    if (press == ButtonPress::Left && GetFocus() != Window()) {
        SetFocus(Window());
        // The parent was told that the focus moves, and may have disabled or destroyed the button.
        if (!Window() || !Enabled()) {
            return;
        }
    }
    BeginPress(press);
}

bool InsideClient(HWND window, LPARAM position) {
    RECT client;
    GetClientRect(window, &client);
    return PtInRect(&client, {GET_X_LPARAM(position), GET_Y_LPARAM(position)}) != FALSE;
}

void ButtonControl::MouseMove(LPARAM lParam) {
    const bool inside = InsideClient(Window(), lParam);
    if (press_ == ButtonPress::Left) {
        MovePress(inside);
    }
    if (inside != hot_) {
        hot_ = inside;
        Redraw();
    }
    if (hot_) {
        TRACKMOUSEEVENT leaving{sizeof leaving, TME_LEAVE, Window(), 0};
        TrackMouseEvent(&leaving);
    }
}

LRESULT ButtonControl::Key(UINT message, WPARAM key, LPARAM lParam) {
    if (key == VK_RETURN && message == WM_KEYDOWN && press_ == ButtonPress::None) {
        if (!(lParam & REPEATED_KEY) && Enabled()) {
            Click();
        }
        return 0;
    }
    if (key != VK_SPACE) {
        if (message == WM_KEYDOWN && press_ == ButtonPress::Space) {
            EndPress();
        }
        return Default(message, key, lParam);
    }
    if (message == WM_KEYDOWN) {
        if (!(lParam & REPEATED_KEY) && Enabled() && press_ == ButtonPress::None) {
            BeginPress(ButtonPress::Space);
        }
    } else if (press_ == ButtonPress::Space && EndPress()) {
        Click();
    }
    return 0;
}

LRESULT ButtonControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            // The enter key presses this button, whatever dialog's default button there is.
            return DLGC_BUTTON | (wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0) |
                   (type_ == CBT_CHECK ? 0
                    : isDefault_       ? DLGC_DEFPUSHBUTTON
                                       : DLGC_UNDEFPUSHBUTTON);
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            MouseDown(ButtonPress::Left);
            return 0;
        case WM_LBUTTONUP:
            if (press_ == ButtonPress::Left) {
                MovePress(InsideClient(Window(), lParam));
                if (EndPress()) {
                    Click();
                }
            }
            return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            if (!rightNotify_) {
                break;
            }
            MouseDown(ButtonPress::Right);
            return 0;
        case WM_RBUTTONUP:
            if (press_ == ButtonPress::Right) {
                EndPress();
                if (InsideClient(Window(), lParam)) {
                    Notify(BN_RIGHTCLICK);
                }
            }
            if (!rightNotify_) {
                break;
            }
            return 0;
        case WM_CONTEXTMENU:
            if (!rightNotify_) {
                break;
            }
            if (Enabled()) {
                Notify(BN_RIGHTCLICK);
            }
            return 0;
        case WM_MOUSEMOVE:
            MouseMove(lParam);
            return 0;
        case WM_MOUSELEAVE:
            hot_ = false;
            Redraw();
            return 0;
        case WM_CAPTURECHANGED:
            if (press_ != ButtonPress::None) {
                press_ = ButtonPress::None;
                MovePress(false);
            }
            return 0;
        case WM_KEYDOWN:
        case WM_KEYUP:
            return Key(message, wParam, lParam);
        case WM_KILLFOCUS:
            if (press_ != ButtonPress::None) {
                EndPress();
            }
            Redraw();
            return 0;
        case WM_SETFOCUS:
            Redraw();
            return 0;
        case WM_ENABLE:
            if (!wParam) {
                hot_ = false;
                EndPress();
            }
            Redraw();
            return 0;
        case WM_SETTEXT:
        case WM_UPDATEUISTATE: {
            const LRESULT result = Default(message, wParam, lParam);
            Redraw();
            return result;
        }
        case WM_SYSCOLORCHANGE:
            Redraw();
            return 0;
        case WM_SETFONT:
            font_ = reinterpret_cast<HFONT>(wParam);
            if (lParam) {
                Redraw();
            }
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(font_);
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            PaintWindow(Window(), reinterpret_cast<HDC>(wParam),
                        [this](HDC dc, const RECT& client) { Paint(dc, client); });
            return 0;
        case BM_CLICK:
            if (Enabled()) {
                Click();
            }
            return 0;
        case BM_GETCHECK:
            return checked_ ? BST_CHECKED : BST_UNCHECKED;
        case BM_SETCHECK:
            SetCheck(wParam == BST_CHECKED);
            return 0;
        case BM_GETSTATE:
            return (checked_ ? BST_CHECKED : 0) | (pushed_ ? BST_PUSHED : 0) |
                   (GetFocus() == Window() ? BST_FOCUS : 0);
        case BM_SETSTATE:
            pushed_ = wParam != 0;
            Redraw();
            return 0;
        case BM_SETSTYLE:
            isDefault_ = (wParam & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
            Redraw();
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

FaceState ButtonControl::Face() const {
    return {.enabled = Enabled(),
            .hot = hot_,
            .pressed = pushed_,
            .checked = checked_,
            .isDefault = isDefault_,
            .flat = flat_};
}

void ButtonControl::Paint(HDC dc, const RECT& client) const {
    const FaceState face = Face();
    PaintBackground(Window(), dc, client);
    PaintFace(dc, client, face);
    PaintContent(dc, client, face);
    const LRESULT hidden = SendMessageW(Window(), WM_QUERYUISTATE, 0, 0);
    if (GetFocus() == Window() && !(hidden & UISF_HIDEFOCUS)) {
        const int margin = UIScaled(2);
        RECT inside = client;
        InflateRect(&inside, -margin, -margin);
        SetTextColor(dc, RGB(0, 0, 0));
        SetBkColor(dc, RGB(255, 255, 255));
        DrawFocusRect(dc, &inside);
    }
}

void ButtonControl::PaintContent(HDC dc, const RECT& client, const FaceState& face) const {
    const COLORREF color = FaceTextColor(face);
    const int shift = face.pressed ? std::max(1, UIScaled(1)) : 0;
    if (!icon_.isNull()) {
        const int width = std::min<int>(UIScaled(iconSize_.cx), client.right);
        const int height = std::min<int>(UIScaled(iconSize_.cy), client.bottom);
        const int left = (client.right - width) / 2 + shift;
        const int top = (client.bottom - height) / 2 + shift;
        const COLORREF faceColor = GetColorManager()->CustSysColor(COLOR_BTNFACE);
        const IconColors colors = face.enabled
                                      ? IconColors{color, ICON_FILL}
                                      : IconColors{color, MixedColor(color, faceColor, 60)};
        DrawIcon(dc, {left, top, left + width, top + height}, icon_, colors);
        return;
    }
    wchar_t text[256] = {};
    GetWindowTextW(Window(), text, static_cast<int>(std::size(text)));
    RECT place = client;
    InflateRect(&place, -UIScaled(TEXT_MARGIN), 0);
    OffsetRect(&place, shift, shift);
    HGDIOBJ former = font_ ? SelectObject(dc, font_) : nullptr;
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    const LRESULT hidden = SendMessageW(Window(), WM_QUERYUISTATE, 0, 0);
    DrawTextW(dc, text, -1, &place,
              DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS |
                  (hidden & UISF_HIDEACCEL ? DT_HIDEPREFIX : 0));
    if (former) {
        SelectObject(dc, former);
    }
}

ControlClass buttonClass;

LRESULT CALLBACK ButtonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(buttonClass, window, message, wParam, lParam);
}

}  // namespace

bool RegisterButtonClass() {
    buttonClass.make = [](HWND window) -> ControlObject* {
        return new (std::nothrow) ButtonControl(window);
    };
    buttonClass.base = &DefWindowProcW;
    WNDCLASSEXW windowClass{};
    // Two clicks in a row are two presses, but the system may say so of the second.
    windowClass.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = &ButtonProcedure;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = CUSTBUTTONWINDOWCLASS;
    return RegisterControl(buttonClass, windowClass);
}

}  // namespace host

ICustButton* GetICustButton(HWND control) {
    auto* const object =
        static_cast<host::ButtonControl*>(host::ControlOf(host::buttonClass, control));
    if (object) {
        object->Hold();
    }
    return object;
}

void ReleaseICustButton(ICustButton* control) {
    if (control) {
        static_cast<host::ButtonControl*>(control)->Release();
    }
}
