// The host's log.
#pragma once

#include "maxtypes.h"

constexpr DWORD SYSLOG_ERROR = 0x00000001;
constexpr DWORD SYSLOG_WARN = 0x00000002;
constexpr DWORD SYSLOG_INFO = 0x00000004;
constexpr DWORD SYSLOG_DEBUG = 0x00000008;

constexpr BOOL NO_DIALOG = FALSE;
constexpr BOOL DISPLAY_DIALOG = TRUE;

class LogSys {
  public:
    // One line. `format` is as printf's; "%s" takes a const MCHAR*. With `dialogue` the host also
    // shows the text in a box, unless it is quiet.
    virtual void LogEntry(DWORD type, BOOL dialogue, const MCHAR* title, const MCHAR* format,
                          ...) = 0;

  protected:
    ~LogSys() = default;
};

// To the debugger's output, if a debugger listens. Formatted as LogEntry does.
void DebugPrint(const MCHAR* format, ...);
