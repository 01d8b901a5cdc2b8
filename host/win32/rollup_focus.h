// The control that gets the keyboard's focus in a window of rollups is scrolled into view, unless
// the mouse gave it the focus: what is under the mouse stays there.
#pragma once

#include <windows.h>

namespace host {

// One for each window of rollups: the system's hook is there while more started than stopped.
void StartFollowingFocus();
void StopFollowingFocus();

}  // namespace host
