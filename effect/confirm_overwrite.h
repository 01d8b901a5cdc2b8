// The question before a document replaces an existing file.
#pragma once

#include <strclass.h>

#include "effect/library_services.h"

namespace effect {

// True to go on. Asks only while `ask` is set, and clears it when the user wants no further
// question; it is left alone when the user stops.
bool ConfirmOverwrite(const LibraryServices& services, const MSTR& name, bool& ask);

}  // namespace effect
