#include "host/win32/edit_control.h"

#include <icolorman.h>

#include <new>
#include <string>
#include <unordered_map>

#include "host/win32/control_object.h"

namespace host {
namespace {

// What the system makes of Ctrl+A.
constexpr WPARAM SELECT_ALL = 1;

ControlClass editClass;

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    // A text holds a NUL behind its last unit.
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

class EditControl final : public CustomControl<ICustEdit> {
  public:
    using CustomControl::CustomControl;

    void GetText(MCHAR* text, int size) override {
        if (text && size > 0) {
            text[0] = 0;
            GetWindowTextW(Window(), text, size);
        }
    }
    int GetTextLength() const override { return GetWindowTextLengthW(Window()); }
    void SetText(const MCHAR* text) override {
        const std::wstring wanted = text ? text : L"";
        given_ = wanted;
        // The place of the user's caret is lost with a text.
        if (wanted != WindowText(Window())) {
            silent_ = true;
            SetWindowTextW(Window(), wanted.c_str());
            silent_ = false;
        }
    }
    void SetNotifyOnKillFocus(BOOL onOff) override { onKillFocus_ = onOff != FALSE; }
    void SetNotifyOnEachKey(BOOL onOff) override { onEachKey_ = onOff != FALSE; }

    // Whether the parent hears of a change.
    bool TellsChanges() const { return onEachKey_ && !silent_; }
    HBRUSH Colors(HDC dc) const;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) {
        return CallWindowProcW(editClass.base, Window(), message, wParam, lParam);
    }
    bool OneLine() const { return !(GetWindowLongW(Window(), GWL_STYLE) & ES_MULTILINE); }
    void AddStyles(CREATESTRUCTW& making) const;
    void Give();

    // The text that was last given, or that the program set.
    std::wstring given_;
    bool onKillFocus_ = true;
    bool onEachKey_ = false;
    bool silent_ = false;
};

EditControl* EditOf(HWND window) {
    return static_cast<EditControl*>(ControlOf(editClass, window));
}

HBRUSH EditControl::Colors(HDC dc) const {
    IColorManager& colors = *GetColorManager();
    const bool enabled = IsWindowEnabled(Window()) != FALSE;
    const bool writable = enabled && !(GetWindowLongW(Window(), GWL_STYLE) & ES_READONLY);
    const int background = writable ? COLOR_WINDOW : COLOR_BTNFACE;
    SetTextColor(dc, colors.CustSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, colors.CustSysColor(background));
    return colors.CustSysColorBrush(background);
}

// The parents of edits, with their own procedures. The system's way to listen to a window looks up
// a property for each message, of which a list beside an edit sends some for each of its rows.
std::unordered_map<HWND, WNDPROC>& Parents() {
    static std::unordered_map<HWND, WNDPROC> parents;
    return parents;
}

// A parent's messages, before it sees them itself.
LRESULT CALLBACK ListenAtParent(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto place = Parents().find(parent);
    const WNDPROC own = place == Parents().end() ? DefWindowProcW : place->second;
    switch (message) {
        case WM_COMMAND:
            if (HIWORD(wParam) == EN_CHANGE || HIWORD(wParam) == EN_UPDATE) {
                const EditControl* const edit = EditOf(reinterpret_cast<HWND>(lParam));
                if (edit && !edit->TellsChanges()) {
                    return 0;
                }
            }
            break;
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC:
            if (const EditControl* const edit = EditOf(reinterpret_cast<HWND>(lParam))) {
                return reinterpret_cast<LRESULT>(edit->Colors(reinterpret_cast<HDC>(wParam)));
            }
            break;
        case WM_NCDESTROY:
            SetWindowLongPtrW(parent, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(own));
            Parents().erase(parent);
            break;
        default:
            break;
    }
    return CallWindowProcW(own, parent, message, wParam, lParam);
}

void ListenAt(HWND parent) {
    const auto [place, isNew] = Parents().try_emplace(parent);
    if (!isNew) {
        return;
    }
    place->second = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(parent, GWLP_WNDPROC));
    SetWindowLongPtrW(parent, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ListenAtParent));
}

void EditControl::AddStyles(CREATESTRUCTW& making) const {
    if (!(making.style & ES_MULTILINE)) {
        making.style |= ES_AUTOHSCROLL;
    }
    if (!(making.style & WS_BORDER)) {
        making.dwExStyle |= WS_EX_CLIENTEDGE;
    }
    SetWindowLongW(Window(), GWL_STYLE, making.style);
    SetWindowLongW(Window(), GWL_EXSTYLE, static_cast<LONG>(making.dwExStyle));
}

void EditControl::Give() {
    given_ = WindowText(Window());
    TellParent(WM_CUSTEDIT_ENTER, 0, reinterpret_cast<LPARAM>(Window()));
}

LRESULT EditControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCREATE:
            AddStyles(*reinterpret_cast<CREATESTRUCTW*>(lParam));
            break;
        case WM_CREATE: {
            const LRESULT result = Default(message, wParam, lParam);
            ListenAt(GetParent(Window()));
            given_ = WindowText(Window());
            return result;
        }
        case WM_SETTEXT: {
            const LRESULT result = Default(message, wParam, lParam);
            given_ = WindowText(Window());
            return result;
        }
        case WM_GETDLGCODE: {
            const LRESULT result = Default(message, wParam, lParam);
            return wParam == VK_RETURN && OneLine() ? result | DLGC_WANTMESSAGE : result;
        }
        case WM_KEYDOWN:
            if (wParam == VK_RETURN && OneLine()) {
                Give();
                return 0;
            }
            break;
        case WM_CHAR:
            if (wParam == L'\r' && OneLine()) {
                return 0;
            }
            if (wParam == SELECT_ALL) {
                SendMessageW(Window(), EM_SETSEL, 0, -1);
                return 0;
            }
            break;
        case WM_KILLFOCUS:
            if (onKillFocus_ && WindowText(Window()) != given_) {
                Give();
            }
            break;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(editClass, window, message, wParam, lParam);
}

}  // namespace

bool RegisterEditClass() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    if (!GetClassInfoExW(nullptr, L"Edit", &windowClass)) {
        return false;
    }
    if (!editClass.atom) {
        editClass.base = windowClass.lpfnWndProc;
    }
    editClass.make = [](HWND window) -> ControlObject* {
        return new (std::nothrow) EditControl(window);
    };
    windowClass.lpfnWndProc = &EditProcedure;
    windowClass.lpszClassName = CUSTEDITWINDOWCLASS;
    return RegisterControl(editClass, windowClass);
}

}  // namespace host

ICustEdit* GetICustEdit(HWND control) {
    host::EditControl* const object = host::EditOf(control);
    if (object) {
        object->Hold();
    }
    return object;
}

void ReleaseICustEdit(ICustEdit* control) {
    if (control) {
        static_cast<host::EditControl*>(control)->Release();
    }
}
