// What the host's own controls have in common: an object a window, made when the window is and
// found again from it. It stays while its window is there or somebody holds it, so that what was
// got from a window may be released after the window has gone; until then it answers as an empty
// control does.
#pragma once

#include <custcont.h>

namespace host {

class ControlObject {
  public:
    explicit ControlObject(HWND window) : window_(window) { ++living; }
    ControlObject(const ControlObject&) = delete;
    ControlObject& operator=(const ControlObject&) = delete;

    // Null once the window has gone.
    HWND Window() const { return window_; }
    void Hold() { ++holders_; }
    void Release();
    // Every message of the window, WM_NCCREATE and WM_NCDESTROY included. The object stays for the
    // time of the call, even if its window doesn't.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    // Objects that are there, whether a window or somebody else holds them.
    static int Living() { return living; }

  protected:
    virtual ~ControlObject() { --living; }
    // Null for none. The window of the tip is made when the mouse first comes over the control.
    void SetTip(const MSTR& text);
    // To the window's parent, with the window's id.
    LRESULT TellParent(UINT message, WORD code, LPARAM lParam) const;
    // Pending, as for a change of what the window shows.
    void Redraw() const;

  private:
    friend LRESULT RunControl(const struct ControlClass& kind, HWND window, UINT message,
                              WPARAM wParam, LPARAM lParam);

    static int living;

    HWND window_;
    // The window is one.
    int holders_ = 1;
    MSTR tip_;
    // The mouse has been there.
    bool hasTip_ = false;
    TooltipExtender tips_;
};

// A window class of such controls.
struct ControlClass {
    // Null when there is no memory.
    ControlObject* (*make)(HWND window) = nullptr;
    // What a window without its object does.
    WNDPROC base = nullptr;
    // Where a window keeps its object: bytes into its own memory.
    int slot = 0;
    ATOM atom = 0;
};

// Registers the class for all modules of the process, from `windowClass`, whose own memory grows by
// the object's place. False when it can't be; true without doing anything when it was already.
bool RegisterControl(ControlClass& kind, WNDCLASSEXW windowClass);

// The window's object; null when the window isn't of the class.
ControlObject* ControlOf(const ControlClass& kind, HWND window);

// The whole of such a class's window procedure.
LRESULT RunControl(const ControlClass& kind, HWND window, UINT message, WPARAM wParam,
                   LPARAM lParam);

// The part of ICustomControl that is alike in all; `Contract` is derived from it.
template <class Contract>
class CustomControl : public ControlObject, public Contract {
  public:
    using ControlObject::ControlObject;

    HWND GetHwnd() override { return Window(); }
    void Enable(BOOL onOff) override { EnableWindow(Window(), onOff); }
    BOOL IsEnabled() override { return IsWindowEnabled(Window()); }
    void SetTooltip(bool enable, const MCHAR* text) override {
        SetTip(enable ? MSTR(text) : MSTR());
    }
    INT_PTR Execute(int /*cmd*/, ULONG_PTR /*arg1*/, ULONG_PTR /*arg2*/,
                    ULONG_PTR /*arg3*/) override {
        return 0;
    }
};

}  // namespace host
