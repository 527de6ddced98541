#include "HostThread.h"

#include <gtest/gtest.h>

#include <utility>

namespace TOLVGraphing::testing_support {

app::DocumentReading::HostQueue HostThread::queue() const
{
    return [calls = m_calls](app::DocumentReading::HostCall call) {
        const std::scoped_lock lock(calls->mutex);
        calls->waiting.push_back(std::move(call));
        calls->arrived.notify_one();
    };
}

void HostThread::waitForCall()
{
    std::unique_lock lock(m_calls->mutex);
    m_calls->arrived.wait(lock, [&] { return !m_calls->waiting.empty(); });
}

void HostThread::runNext()
{
    waitForCall();
    app::DocumentReading::HostCall call;
    {
        const std::scoped_lock lock(m_calls->mutex);
        call = std::move(m_calls->waiting.front());
        m_calls->waiting.pop_front();
    }
    call();
}

void HostThread::runUntil(const std::function<bool()>& condition)
{
    while (!condition())
        runNext();
}

void HostThread::runWaiting()
{
    const auto isEmpty = [&] {
        const std::scoped_lock lock(m_calls->mutex);
        return m_calls->waiting.empty();
    };
    while (!isEmpty())
        runNext();
}

app::DocumentReading::Callbacks ReadingOutcome::callbacks()
{
    return {
        [this](const app::DocumentProgress& told) { progress.push_back(told); },
        [this](app::ReadDocumentData told) { data.push_back(std::move(told)); },
        [this](const std::string& told) { errors.push_back(told); },
    };
}

app::ReadDocumentData readDocumentData(const std::vector<std::string>& paths, const app::Options& options)
{
    HostThread host;
    ReadingOutcome outcome;
    app::DocumentReading reading(host.queue());
    reading.start(paths, options, outcome.callbacks());
    host.runUntil([&] { return outcome.isOver(); });
    for (const std::string& error : outcome.errors)
        ADD_FAILURE() << error;
    return outcome.data.empty() ? app::ReadDocumentData() : std::move(outcome.data.front());
}

} // namespace TOLVGraphing::testing_support
