#include "host/log.h"

#include <cstdarg>

#include <maxmsgbox.h>

#include "host/application.h"
#include "host/format.h"

namespace host {

void Log::LogEntry(DWORD type, BOOL dialogue, const MCHAR* title, const MCHAR* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    Add({type, dialogue != FALSE, MSTR(title), FormatV(format, arguments)});
    va_end(arguments);
}

void Log::Add(const LogRecord& record) {
    entries_.push_back(record);
    if (sink_) {
        sink_(record);
    }
    if (record.dialogue && !App().settings.quiet) {
        App().boxes.Show(record.text, record.title, MB_OK | MB_ICONEXCLAMATION, 0);
    }
}

}  // namespace host

void DebugPrint(const MCHAR* format, ...) {
    const auto& listener = host::App().log.DebugListener();
    if (!listener) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    listener(host::FormatV(format, arguments));
    va_end(arguments);
}
