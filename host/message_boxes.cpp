#include "host/message_boxes.h"

#include "host/application.h"

namespace host {
namespace {

// The low bits of a box's type choose its buttons.
constexpr UINT BUTTONS = 0x000f;

}  // namespace

BoxAnswer MessageBoxes::Show(const MSTR& text, const MSTR& caption, UINT type, UINT exType) {
    BoxRecord box{text, caption, type, exType, {}};
    box.answer.button = (type & BUTTONS) == MB_OK ? IDOK : IDNO;
    if (responder_) {
        box.answer = responder_(box);
    }
    if (!(exType & MAX_MB_DONTSHOWAGAIN)) {
        box.answer.dontShowAgain = false;
    }
    shown_.push_back(box);
    return box.answer;
}

}  // namespace host

int MaxMsgBox(HWND /*owner*/, const MCHAR* text, const MCHAR* caption, UINT type, UINT exType,
              DWORD* exReturn) {
    const host::BoxAnswer answer = host::App().boxes.Show(MSTR(text), MSTR(caption), type, exType);
    if (exReturn) {
        *exReturn = answer.dontShowAgain ? MAX_DONTSHOWAGAIN : 0;
    }
    return answer.button;
}
