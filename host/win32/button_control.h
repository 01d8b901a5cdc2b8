// The host's button (class CustButton, ICustButton): a text or a picture that is pushed, or that
// stays in. To its parent, to tests and to tools that read the screen it behaves as the system's
// button does:
// - BN_CLICKED when it was pressed and let go with the mouse over it, with the space key, by its
//   letter, and by BM_CLICK; a button that stays in has changed its state by then. What takes the
//   mouse or the focus away in between, or disables it, cancels without a notification.
// - BN_RIGHTCLICK for the right button in the same way, and for the menu key, once that was asked
//   for; until then right clicks are the parent's (WM_CONTEXTMENU).
// - BM_CLICK, BM_GETCHECK, BM_SETCHECK, BM_GETSTATE, BM_SETSTATE and BM_SETSTYLE (which makes it a
//   dialog's default button) are answered. Its window text stays its name under a picture.
// SetCheck holds for a button of either type; a click changes the state of one that stays in only.
// A picture's size is in pixels at 96 dots per inch, and 16 where none is given.
#pragma once

namespace host {

// False when the system refuses.
bool RegisterButtonClass();

}  // namespace host
