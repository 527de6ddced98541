#pragma once

#include <apps/viewer/DocumentReading.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// The thread of a test as the host's thread of a reading: calls wait until the test lets them run.
class HostThread {
public:
    /// Where a reading sends its calls; may outlive this object.
    [[nodiscard]] app::DocumentReading::HostQueue queue() const;
    /// Waits for a call and runs it.
    void runNext();
    /// Waits until a call is there, without running it.
    void waitForCall();
    /// Runs calls until the condition holds.
    void runUntil(const std::function<bool()>& condition);
    /// Runs what is there already.
    void runWaiting();

private:
    struct Calls {
        std::mutex mutex;
        std::condition_variable arrived;
        std::deque<app::DocumentReading::HostCall> waiting;
    };

    std::shared_ptr<Calls> m_calls = std::make_shared<Calls>();
};

/// What the callbacks of a reading were told.
struct ReadingOutcome {
    [[nodiscard]] app::DocumentReading::Callbacks callbacks();
    [[nodiscard]] bool isOver() const { return !data.empty() || !errors.empty(); }

    std::vector<app::DocumentProgress> progress;
    std::vector<app::ReadDocumentData> data;
    std::vector<std::string> errors;
};

/// Reads files as a viewer does, to the end. Fails the test, and answers nothing read, where that does not succeed.
[[nodiscard]] app::ReadDocumentData readDocumentData(const std::vector<std::string>& paths, const app::Options& options);

} // namespace TOLVGraphing::testing_support
