// Where the library lies, and with it what is shipped beside it.
#pragma once

#include <strclass.h>

namespace ui {

// The path of the library's file; of the program's where the library is linked into one.
MSTR LibraryFile();

}  // namespace ui
