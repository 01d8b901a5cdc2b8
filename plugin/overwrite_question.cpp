#include "plugin/overwrite_question.h"

#include <maxapi.h>
#include <maxmsgbox.h>

#include "effect/psd_output.h"

namespace plugin {
namespace {

OverwriteDialog overwriteDialog = nullptr;

}  // namespace

void UseOverwriteDialog(OverwriteDialog dialog) {
    overwriteDialog = dialog;
}

effect::OverwriteAnswer AskOverwrite(const MSTR& text) {
    HWND parent = GetCOREInterface()->GetMAXHWnd();
    if (overwriteDialog && parent) return overwriteDialog(parent, text);
    DWORD ticked = 0;
    const int answer = MaxMsgBox(parent, text, effect::messageTitle, MB_YESNO | MB_ICONQUESTION,
                                 MAX_MB_DONTSHOWAGAIN, &ticked);
    return {.overwrite = answer == IDYES, .askNoMore = (ticked & MAX_DONTSHOWAGAIN) != 0};
}

}  // namespace plugin
