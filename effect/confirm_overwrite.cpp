#include "effect/confirm_overwrite.h"

#include <maxapi.h>
#include <maxmsgbox.h>

#include "effect/psd_output.h"

namespace effect {

bool ConfirmOverwrite(const MSTR& name, bool& askAgain) {
    const MSTR text = MSTR(_M("Confirm overwriting:\n\n")) + name + _M(" ?");
    DWORD ticked = 0;
    const int answer = MaxMsgBox(GetCOREInterface()->GetMAXHWnd(), text, messageTitle,
                                 MB_YESNO | MB_ICONQUESTION, MAX_MB_DONTSHOWAGAIN, &ticked);
    if (answer != IDYES) return false;
    if (ticked & MAX_DONTSHOWAGAIN) askAgain = false;
    return true;
}

}  // namespace effect
