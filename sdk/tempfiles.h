// Files for a moment: the system's own calls on Windows, under their names; the host's elsewhere.
#pragma once

#include "maxtypes.h"

#ifdef _WIN32
#include <windows.h>
#else
// Writes the folder for temporary files, with a separator at its end, to `buffer`, which holds
// `size` units with the terminator. Units written without the terminator; with a buffer that is too
// small the units needed, with it; 0 on failure.
DWORD GetTempPath(DWORD size, MCHAR* buffer);
// FALSE when the file is not there or can't be deleted.
BOOL DeleteFile(const MCHAR* name);
#endif
