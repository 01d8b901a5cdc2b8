// How the user is asked before a document replaces an existing file: in the library's own dialog
// where it has one and there is a window to show it over, otherwise in a box of the host's.
#pragma once

#include "effect/library_services.h"

namespace plugin {

// A dialog over `parent`. It never throws.
using OverwriteDialog = effect::OverwriteAnswer (*)(HWND parent, const MSTR& text);

// Null: the host's box from now on, as at first.
void UseOverwriteDialog(OverwriteDialog dialog);

effect::OverwriteAnswer AskOverwrite(const MSTR& text);

}  // namespace plugin
