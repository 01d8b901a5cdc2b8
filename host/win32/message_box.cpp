#include "host/win32/message_box.h"

#include <commctrl.h>

#include <maxapi.h>

namespace host {
namespace {

constexpr UINT buttonBits = 0x000f;
constexpr UINT iconBits = 0x00f0;
constexpr UINT defaultBits = 0x0f00;

using ShowTaskDialog = HRESULT WINAPI(const TASKDIALOGCONFIG*, int*, int*, BOOL*);

// The common controls that this program uses, which may be loaded beside older ones.
class CommonControls {
  public:
    CommonControls() : library_(LoadLibraryW(L"comctl32.dll")) {}
    CommonControls(const CommonControls&) = delete;
    CommonControls& operator=(const CommonControls&) = delete;
    ~CommonControls() {
        if (library_) FreeLibrary(library_);
    }
    // Null where they are too old.
    ShowTaskDialog* TaskDialog() const {
        const FARPROC address = library_ ? GetProcAddress(library_, "TaskDialogIndirect") : nullptr;
        // The system gives every function in one type.
        return reinterpret_cast<ShowTaskDialog*>(reinterpret_cast<void*>(address));
    }

  private:
    HMODULE library_;
};

struct Buttons {
    UINT type;
    TASKDIALOG_COMMON_BUTTON_FLAGS flags;
    // In the order in which MB_DEFBUTTON counts them.
    int ids[3];
};

constexpr Buttons buttonRows[] = {
    {MB_OK, TDCBF_OK_BUTTON, {IDOK}},
    {MB_OKCANCEL, TDCBF_OK_BUTTON | TDCBF_CANCEL_BUTTON, {IDOK, IDCANCEL}},
    {MB_YESNO, TDCBF_YES_BUTTON | TDCBF_NO_BUTTON, {IDYES, IDNO}},
    {MB_YESNOCANCEL,
     TDCBF_YES_BUTTON | TDCBF_NO_BUTTON | TDCBF_CANCEL_BUTTON,
     {IDYES, IDNO, IDCANCEL}},
    {MB_RETRYCANCEL, TDCBF_RETRY_BUTTON | TDCBF_CANCEL_BUTTON, {IDRETRY, IDCANCEL}},
};

const Buttons* ButtonsOf(UINT type) {
    for (const Buttons& row : buttonRows) {
        if (row.type == (type & buttonBits)) return &row;
    }
    return nullptr;
}

void SetIcon(TASKDIALOGCONFIG& config, UINT type) {
    switch (type & iconBits) {
        case MB_ICONERROR:
            config.pszMainIcon = TD_ERROR_ICON;
            break;
        case MB_ICONQUESTION:
            config.dwFlags |= TDF_USE_HICON_MAIN;
            config.hMainIcon = LoadIconW(nullptr, IDI_QUESTION);
            break;
        case MB_ICONEXCLAMATION:
            config.pszMainIcon = TD_WARNING_ICON;
            break;
        case MB_ICONINFORMATION:
            config.pszMainIcon = TD_INFORMATION_ICON;
            break;
        default:
            break;
    }
}

}  // namespace

BoxAnswer ShowMessageBox(const BoxRecord& box) {
    BoxAnswer answer = box.answer;
    HWND owner = GetCOREInterface()->GetMAXHWnd();
    const CommonControls controls;
    ShowTaskDialog* show = controls.TaskDialog();
    const Buttons* buttons = ButtonsOf(box.type);
    if ((box.exType & MAX_MB_DONTSHOWAGAIN) && show && buttons) {
        TASKDIALOGCONFIG config{};
        config.cbSize = sizeof config;
        config.hwndParent = owner;
        config.dwFlags = TDF_POSITION_RELATIVE_TO_WINDOW;
        config.dwCommonButtons = buttons->flags;
        config.pszWindowTitle = box.caption.data();
        config.pszContent = box.text.data();
        config.pszVerificationText = L"Don't show this message again";
        const UINT wanted = (box.type & defaultBits) / MB_DEFBUTTON2;
        config.nDefaultButton = wanted < 3 ? buttons->ids[wanted] : 0;
        SetIcon(config, box.type);
        BOOL ticked = FALSE;
        int button = 0;
        if (SUCCEEDED(show(&config, &button, nullptr, &ticked))) {
            answer.button = button;
            answer.dontShowAgain = ticked != FALSE;
            return answer;
        }
    }
    const int button = MessageBoxW(owner, box.text, box.caption, box.type);
    // 0: the system couldn't show it.
    if (button != 0) answer.button = button;
    return answer;
}

}  // namespace host
