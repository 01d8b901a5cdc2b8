#include "host/win32/control_object.h"

#include <utility>

namespace host {
namespace {

void SetObject(const ControlClass& kind, HWND window, ControlObject* object) {
    SetWindowLongPtrW(window, kind.slot, reinterpret_cast<LONG_PTR>(object));
}

}  // namespace

int ControlObject::living = 0;

void ControlObject::Release() {
    if (--holders_ == 0) {
        delete this;
    }
}

void ControlObject::SetTip(const MSTR& text) {
    tip_ = text;
    if (hasTip_) {
        tips_.SetToolTip(window_, tip_);
    }
}

LRESULT ControlObject::TellParent(UINT message, WORD code, LPARAM lParam) const {
    const auto id = static_cast<WORD>(GetDlgCtrlID(window_));
    return SendMessageW(GetParent(window_), message, MAKEWPARAM(id, code), lParam);
}

void ControlObject::Redraw() const {
    // Without a window the system would redraw all of the screen's.
    if (window_) {
        InvalidateRect(window_, nullptr, FALSE);
    }
}

bool RegisterControl(ControlClass& kind, WNDCLASSEXW windowClass) {
    if (kind.atom) {
        return true;
    }
    // Of this library, which stays loaded while other modules make windows of the class.
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&RegisterControl), &module);
    windowClass.cbSize = sizeof windowClass;
    windowClass.hInstance = module;
    windowClass.style |= CS_GLOBALCLASS;
    kind.slot = windowClass.cbWndExtra;
    windowClass.cbWndExtra += static_cast<int>(sizeof(LONG_PTR));
    kind.atom = RegisterClassExW(&windowClass);
    return kind.atom != 0;
}

ControlObject* ControlOf(const ControlClass& kind, HWND window) {
    if (!kind.atom || !IsWindow(window) || GetClassLongPtrW(window, GCW_ATOM) != kind.atom) {
        return nullptr;
    }
    return reinterpret_cast<ControlObject*>(GetWindowLongPtrW(window, kind.slot));
}

LRESULT RunControl(const ControlClass& kind, HWND window, UINT message, WPARAM wParam,
                   LPARAM lParam) {
    ControlObject* object = ControlOf(kind, window);
    if (!object && message == WM_NCCREATE) {
        object = kind.make(window);
        if (!object) {
            return FALSE;
        }
        SetObject(kind, window, object);
    }
    if (!object) {
        return CallWindowProcW(kind.base, window, message, wParam, lParam);
    }
    object->Hold();
    // The first of the mouse's messages.
    if (message == WM_SETCURSOR && !std::exchange(object->hasTip_, true)) {
        object->SetTip(object->tip_);
    }
    // While the tip can still let go of the window.
    if (message == WM_DESTROY) {
        object->tips_.RemoveToolTips();
    }
    const LRESULT result = object->OnMessage(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetObject(kind, window, nullptr);
        object->window_ = nullptr;
        --object->holders_;
    }
    object->Release();
    return result;
}

}  // namespace host
