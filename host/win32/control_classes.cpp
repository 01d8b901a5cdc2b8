#include "host/win32/control_classes.h"

#include <windows.h>

#include <commctrl.h>

#include "host/win32/button_control.h"
#include "host/win32/control_object.h"
#include "host/win32/edit_control.h"
#include "host/win32/rollup_window.h"
#include "host/win32/spinner_control.h"

namespace host {

bool RegisterControlClasses() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const bool button = RegisterButtonClass();
    const bool edit = RegisterEditClass();
    const bool spinner = RegisterSpinnerClass();
    const bool rollups = RegisterRollupWindowClass();
    return button && edit && spinner && rollups;
}

int LivingControls() {
    return ControlObject::Living();
}

}  // namespace host
