// A list of the scene's nodes, in place of the views in which a user sees them: what is selected in
// it is the scene's selection, and a pick mode hovers over its rows and clicks on them. The enter
// key or the space bar picks the row that has the keyboard; the escape key and a right click end
// the mode.
#pragma once

#include <windows.h>

namespace host {

// A child of `parent`, to be placed and shown by the caller. From now on the host's pick mode finds
// its nodes here. It is brought up to date five times a second. Null when the system refuses.
HWND CreatePickView(HWND parent, int id);

// Now: the rows are the scene's nodes, and what is selected there is selected here. Nothing happens
// for a window that is no such view.
void RefreshPickView(HWND view);

// For a message loop, since the keyboard and the mouse may be anywhere while a pick mode is on:
// ends the mode for the escape key and for a right click, which then have no other meaning. False
// for any other message, and without a mode.
bool EndPickMode(const MSG& message);

}  // namespace host
