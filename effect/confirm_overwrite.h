// The question before a document replaces an existing file.
#pragma once

#include <strclass.h>

namespace effect {

// True to go on. Clears `askAgain` when the user wants no further question; it is left alone when
// the user stops.
bool ConfirmOverwrite(const MSTR& name, bool& askAgain);

}  // namespace effect
