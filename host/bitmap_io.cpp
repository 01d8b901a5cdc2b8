// How formats of image files tell their errors.
#include <bitmap.h>

#include "host/application.h"

BMMRES BitmapIO::ProcessImageIOError(BitmapInfo* info, BMMRES code) {
    const MSTR name(info ? info->Name() : nullptr);
    // Nobody is asked whether to try again, so it is the code that the caller gets.
    host::App().log.LogEntry(SYSLOG_ERROR, DISPLAY_DIALOG, _M("Image I/O Error"),
                             _M("%s: error %d of image file \"%s\"."), LongDesc(),
                             static_cast<int>(code), name.data());
    return code;
}
