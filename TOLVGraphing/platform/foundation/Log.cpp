#include "Log.h"

#include <iostream>
#include <mutex>
#include <utility>

namespace TOLVGraphing {

namespace {

struct LogState {
    std::mutex mutex;
    LogSink sink;
};

LogState& logState()
{
    static LogState state;
    return state;
}

} // namespace

void writeLog(std::string_view line)
{
    LogState& state = logState();
    const std::scoped_lock lock(state.mutex);
    if (state.sink)
        state.sink(line);
    else
        std::cerr << line << '\n';
}

LogSink setLogSink(LogSink sink)
{
    LogState& state = logState();
    const std::scoped_lock lock(state.mutex);
    return std::exchange(state.sink, std::move(sink));
}

} // namespace TOLVGraphing
