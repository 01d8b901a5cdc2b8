// The host's own controls: window classes that dialog templates name, and what the effect does with
// them. For systems with windows.
#pragma once

#include "maxtypes.h"
#include "strclass.h"

// Window classes of the controls. Their notifications are those of the system's own where there are
// such (BN_CLICKED of a button, EN_SETFOCUS, EN_KILLFOCUS and EN_CHANGE of an edit).
constexpr const MCHAR* CUSTBUTTONWINDOWCLASS = _M("CustButton");
constexpr const MCHAR* CUSTEDITWINDOWCLASS = _M("CustEdit");
constexpr const MCHAR* SPINNERWINDOWCLASS = _M("SpinnerControl");
constexpr const MCHAR* ROLLUPWINDOWCLASS = _M("RollupWindow");

// Notification code of a button that was told to notify of right clicks.
constexpr WORD BN_RIGHTCLICK = 8183;

// The text of an edit was given: with the enter key, or when the focus left a changed one. To the
// parent, with the control's id in wParam and its window in lParam.
constexpr UINT WM_CUSTEDIT_ENTER = WM_USER + 685;

// Commands of ICustomControl::Execute.
constexpr int I_EXEC_CB_NO_BORDER = 40960;

class ICustomControl {
  public:
    virtual HWND GetHwnd() = 0;
    virtual void Enable(BOOL onOff = TRUE) = 0;
    virtual BOOL IsEnabled() = 0;
    // Null takes the tool tip away.
    virtual void SetTooltip(bool enable, const MCHAR* text) = 0;
    // Does nothing for a command that the control doesn't know. The result has no meaning.
    virtual INT_PTR Execute(int cmd, ULONG_PTR arg1 = 0, ULONG_PTR arg2 = 0,
                            ULONG_PTR arg3 = 0) = 0;

  protected:
    ~ICustomControl() = default;
};

enum CustButType {
    // Comes out again when it is let go.
    CBT_PUSH,
    // Stays in until it is pressed again.
    CBT_CHECK,
};

class ICustButton : public ICustomControl {
  public:
    virtual void SetText(const MCHAR* text) = 0;
    // A picture of the host's, such as "Common/Folder", in place of the text. A name that the host
    // doesn't have leaves the text.
    virtual void SetIconByName(const MSTR& iconName, int iconWidth = 0, int iconHeight = 0) = 0;
    virtual void SetType(CustButType type) = 0;
    virtual BOOL IsChecked() = 0;
    // Without a notification.
    virtual void SetCheck(BOOL checked) = 0;
    // Whether a right click gives BN_RIGHTCLICK. Off at first.
    virtual void SetRightClickNotify(BOOL notify) = 0;

  protected:
    ~ICustButton() = default;
};

class ICustEdit : public ICustomControl {
  public:
    // Cut to `size` - 1 units, with a NUL behind it.
    virtual void GetText(MCHAR* text, int size) = 0;
    virtual int GetTextLength() const = 0;
    // Without a notification.
    virtual void SetText(const MCHAR* text) = 0;
    // Whether the text counts as given when the focus leaves, and not only with the enter key.
    virtual void SetNotifyOnKillFocus(BOOL onOff) = 0;
    // Whether each key gives EN_CHANGE, and a parameter that is bound to the control is set at each
    // key.
    virtual void SetNotifyOnEachKey(BOOL onOff) = 0;

  protected:
    ~ICustEdit() = default;
};

class IRollupCallback {
  public:
    virtual ~IRollupCallback() = default;
    // A rollup was opened or closed.
    virtual void HandleOpenChange(int /*index*/, BOOL /*open*/) {}
};

// Where a rollup's category puts it among the others; all are of one.
constexpr int ROLLUP_CAT_STANDARD = 5000;
// Flag of a rollup that is added closed.
constexpr DWORD APPENDROLL_CLOSED = 1U << 0;

// A column of dialogs under titles, each of which the user opens and closes.
class IRollupWindow : public ICustomControl {
  public:
    // The new rollup's number, which is the last; -1 when its dialog can't be made. `dlgTemplate`
    // is a resource of `module`; the dialog gets `param` with WM_INITDIALOG.
    virtual int AppendRollup(HINSTANCE module, const MCHAR* dlgTemplate, DLGPROC dlgProc,
                             const MCHAR* title, LPARAM param = 0, DWORD flags = 0,
                             int category = ROLLUP_CAT_STANDARD) = 0;
    // The dialogs are destroyed; the numbers behind them fall.
    virtual void DeleteRollup(int index, int count) = 0;
    virtual int GetNumPanels() = 0;
    // -1 for a window that is no rollup's dialog. `GetPanelDlg`: null for a number that isn't
    // there.
    virtual int GetPanelIndex(HWND dialog) = 0;
    virtual HWND GetPanelDlg(int index) = 0;
    virtual BOOL IsPanelOpen(int index) = 0;
    virtual void SetPanelOpen(int index, BOOL open) = 0;
    // Pixels of the rollup's dialog. What is below moves.
    virtual void SetPageDlgHeight(int index, int height) = 0;
    virtual int GetPageDlgHeight(int index) = 0;
    // Scrolls as the user does, who drags the empty parts of a dialog.
    virtual void DlgMouseMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // Not owned; null takes it away.
    virtual void RegisterRollupCallback(IRollupCallback* callback) = 0;
    virtual void UnRegisterRollupCallback(IRollupCallback* callback) = 0;

  protected:
    ~IRollupWindow() = default;
};

// Null for a window that isn't of the class. Each that was got is to be released; the control goes
// with its window.
ICustButton* GetICustButton(HWND control);
void ReleaseICustButton(ICustButton* control);
ICustEdit* GetICustEdit(HWND control);
void ReleaseICustEdit(ICustEdit* control);
IRollupWindow* GetIRollup(HWND control);
void ReleaseIRollup(IRollupWindow* control);

// Tool tips for a dialog's controls, of whatever class. They go with the object.
class TooltipExtender {
  public:
    TooltipExtender() = default;
    TooltipExtender(const TooltipExtender&) = delete;
    TooltipExtender& operator=(const TooltipExtender&) = delete;
    ~TooltipExtender();

    // Lines are parted by "\n".
    void SetToolTip(HWND control, const MSTR& text);
    void RemoveToolTips();

  private:
    // The window that shows them; null before the first.
    HWND tips_ = nullptr;
};
