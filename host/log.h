// The host's log: kept entry by entry, and handed on to the front end.
#pragma once

#include <functional>
#include <vector>

#include <log.h>
#include <strclass.h>

namespace host {

struct LogRecord {
    DWORD type = SYSLOG_INFO;
    bool dialogue = false;
    MSTR title;
    // Formatted.
    MSTR text;
};

class Log final : public LogSys {
  public:
    using Sink = std::function<void(const LogRecord&)>;
    using DebugSink = std::function<void(const MSTR&)>;

    // With `dialogue` and a host that isn't quiet the text is also shown as a box.
    void LogEntry(DWORD type, BOOL dialogue, const MCHAR* title, const MCHAR* format, ...) override;
    void Add(const LogRecord& record);

    // Gets each entry as it is made. Empty: entries are only kept.
    void SetSink(Sink sink) { sink_ = std::move(sink); }
    // Gets what DebugPrint prints. Empty, as at first: nobody listens.
    void SetDebugSink(DebugSink sink) { debugSink_ = std::move(sink); }
    const DebugSink& DebugListener() const { return debugSink_; }

    // Oldest first.
    const std::vector<LogRecord>& Entries() const { return entries_; }
    void Clear() { entries_.clear(); }

  private:
    std::vector<LogRecord> entries_;
    Sink sink_;
    DebugSink debugSink_;
};

}  // namespace host
