// Where files of a moment go (GetTempPath).
#pragma once

#include <strclass.h>

namespace host {

// Until the application starts afresh; empty: the system's own. On Windows it is the variable TMP
// of the process, which the system's GetTempPath goes by.
void UseTemporaryFolder(const MSTR& folder);

}  // namespace host
