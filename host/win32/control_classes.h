// The window classes of the host's own controls (custcont.h), which dialog templates of any module
// name.
#pragma once

namespace host {

// CustButton, CustEdit, SpinnerControl and RollupWindow, and the system's classes that they use. To
// be called before the first dialog is made; a second call does nothing. False when the system
// refused one.
bool RegisterControlClasses();

// Controls that are there: a window is one, and so is what was got of a control whose window has
// gone and that wasn't released.
int LivingControls();

}  // namespace host
