#pragma once

#include <TOLVMath/Export.h>

#include <functional>
#include <string>
#include <string_view>

namespace TOLVGraphing {

/// Receives each log line in UTF-8, without a newline at its end. The line is valid during the call only.
using LogSink = std::function<void(std::string_view line)>;

/// Writes one line to the log: to standard error unless a host has put another sink in its place. Safe to call from any thread.
TOLV_EXPORT void writeLog(std::string_view line);

/// Replaces the sink of the process and returns the former one; an empty sink brings standard error back. Sinks are called one at a time, on the thread that logs, and must not log or set a sink, which would
/// wait forever. What a sink throws comes out of the operation that logs.
TOLV_EXPORT LogSink setLogSink(LogSink sink);

/// Replaces the sink for the life of the scope.
class LogSinkScope {
public:
    /// The sink is copied; the end of the scope brings the former one back.
    explicit LogSinkScope(LogSink sink) : m_former(setLogSink(std::move(sink))) {}
    ~LogSinkScope() { setLogSink(std::move(m_former)); }
    LogSinkScope(const LogSinkScope&) = delete;
    LogSinkScope& operator=(const LogSinkScope&) = delete;

private:
    LogSink m_former;
};

} // namespace TOLVGraphing
