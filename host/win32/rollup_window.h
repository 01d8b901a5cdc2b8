// The window class of IRollupWindow (sdk/custcont.h): titles, each with a dialog below it that a
// click on the title, or the space bar, opens and closes. What doesn't fit is scrolled: by the
// scroll bar, the wheel, the mouse that drags an empty part, and by the keyboard's focus, which is
// always brought into view.
#pragma once

#include <custcont.h>

namespace host {

// ROLLUPWINDOWCLASS, as RegisterControlClasses (control_classes.h) registers the host's others. A
// second call does nothing. False when the system refused it.
bool RegisterRollupWindowClass();

// How wide, in pixels, a window of the class must be for all of its dialogs to be seen whole; 0 for
// a window that isn't of the class.
int RollupWindowWidth(HWND rollupWindow);

// A message that turns the wheel over a closed drop-down list in rollups scrolls them, in place of
// choosing what nobody looks at. False, and nothing done, for any other message.
bool ScrollByWheel(const MSG& message);

// Scrolls the rollups that the control stands in, if it stands in any, until it is seen.
void ShowInRollups(HWND control);

}  // namespace host
