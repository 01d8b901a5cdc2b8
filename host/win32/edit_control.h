// The host's edit field (class CustEdit, ICustEdit): the system's own, with its keyboard,
// selection, clipboard and notifications, of which these are different:
// - EN_CHANGE and EN_UPDATE come only after SetNotifyOnEachKey, and never for ICustEdit::SetText.
// - WM_CUSTEDIT_ENTER tells that a text was given: by the enter key, changed or not, and when the
//   focus leaves a changed text, before EN_KILLFOCUS, unless SetNotifyOnKillFocus is off. What the
//   program set last counts as unchanged.
// - Ctrl+A selects all. The enter key presses no default button of the dialog.
// A field of one line scrolls sideways, and has an edge, whatever its template says. Its colours
// are the colour manager's, whatever its parent answers; for that, and for what it doesn't tell, it
// listens at its parent, and so must not be given to another.
#pragma once

namespace host {

// False when the system refuses.
bool RegisterEditClass();

}  // namespace host
