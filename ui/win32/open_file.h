// Files that the system opens in the programs that they belong to: a document, the help.
#pragma once

#include <strclass.h>

namespace ui {

// What doesn't open isn't told of.
void OpenFile(const MSTR& file);

// In the system's place; null: the system opens files, as at first.
using FileOpener = void (*)(const MSTR& file);
void UseFileOpener(FileOpener opener);

}  // namespace ui
