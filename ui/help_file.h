// The help that lies beside the library.
#pragma once

#include <strclass.h>

namespace ui {

// `library` is the path of the library's file.
MSTR HelpFile(const MSTR& library);

}  // namespace ui
