#include "StrokeWorkers.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#if __has_include(<pthread.h>)
#include <pthread.h>
#endif

namespace TOLVGraphing::raster {

namespace {

constexpr int kMostWorkers = 3;
/// Going to sleep and waking up takes tens of microseconds; the next stroke of a picture often comes sooner than that.
constexpr std::chrono::microseconds kWakefulness{200};

/// A forked process has none of the threads, and a lock may be held by one of them for ever.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<bool> isForked{false};

int usualWorkerCount()
{
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()) - 1, 0, kMostWorkers);
}

class Workers {
public:
    Workers()
    {
#if __has_include(<pthread.h>)
        pthread_atfork(nullptr, nullptr, [] { isForked = true; });
#endif
    }

    int wantedCount() const
    {
        return m_wantedCount;
    }

    void setWantedCount(int count)
    {
        m_wantedCount = std::clamp(count, 0, kMostWorkers);
        if (isForked)
            return;
        while (m_isBusy.test_and_set(std::memory_order_acquire))
            std::this_thread::yield();
        if (static_cast<int>(m_threads.size()) > m_wantedCount)
            endThreads();
        m_isBusy.clear(std::memory_order_release);
    }

    void rouse()
    {
        if (isForked || m_wantedCount == 0)
            return;
        {
            const std::scoped_lock lock(m_mutex);
            ++m_callCount;
        }
        m_called.notify_all();
    }

    void run(int count, const std::function<void(int)>& task)
    {
        if (count < 2 || isForked || m_wantedCount == 0 || m_isBusy.test_and_set(std::memory_order_acquire)) {
            for (int i = 0; i < count; ++i)
                task(i);
            return;
        }
        beginThreads();
        share(count, task);
        const std::exception_ptr error = std::exchange(m_error, nullptr);
        m_isBusy.clear(std::memory_order_release);
        if (error)
            std::rethrow_exception(error);
    }

    /// At the program's end; whoever strokes later does so alone.
    void endForGood()
    {
        if (!isForked)
            setWantedCount(0);
    }

private:
    void beginThreads()
    {
        try {
            m_threads.reserve(kMostWorkers);
            while (static_cast<int>(m_threads.size()) < m_wantedCount)
                m_threads.emplace_back([this] { serve(); });
        } catch (const std::exception&) {
            // Those that there are have to do; the next stroke tries again.
        }
    }

    void endThreads()
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_isEnding = true;
            ++m_callCount;
        }
        m_called.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
        m_threads.clear();
        m_isEnding = false;
    }

    void share(int count, const std::function<void(int)>& task)
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_task = &task;
            m_count = count;
            m_next = 0;
            ++m_callCount;
        }
        m_called.notify_all();
        takeTasks(task, count);
        // Whoever comes too late finds nothing; those that are at work are waited for.
        {
            const std::scoped_lock lock(m_mutex);
            m_task = nullptr;
        }
        stayAwakeWhile([this] { return m_activeCount != 0; });
        std::unique_lock lock(m_mutex);
        m_finished.wait(lock, [this] { return m_activeCount == 0; });
    }

    void serve()
    {
        std::uint64_t heard = 0;
        std::unique_lock lock(m_mutex);
        while (!m_isEnding) {
            if (m_task != nullptr && m_callCount != heard) {
                heard = m_callCount;
                const std::function<void(int)>& task = *m_task;
                const int count = m_count;
                ++m_activeCount;
                lock.unlock();
                takeTasks(task, count);
                lock.lock();
                if (--m_activeCount == 0)
                    m_finished.notify_all();
                continue;
            }
            heard = m_callCount;
            lock.unlock();
            stayAwakeWhile([&] { return m_callCount == heard; });
            lock.lock();
            m_called.wait(lock, [&] { return m_callCount != heard; });
        }
    }

    /// Returns sooner or later while it is so.
    template <typename Condition>
    static void stayAwakeWhile(const Condition& isSo)
    {
        const auto end = std::chrono::steady_clock::now() + kWakefulness;
        while (isSo() && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
    }

    void takeTasks(const std::function<void(int)>& task, int count)
    {
        for (int i = m_next++; i < count; i = m_next++) {
            try {
                task(i);
            } catch (...) {
                m_next = count;
                const std::scoped_lock lock(m_mutex);
                if (!m_error)
                    m_error = std::current_exception();
            }
        }
    }

    std::atomic<int> m_wantedCount{usualWorkerCount()};
    /// Whoever has set it has the threads and the tasks to himself.
    std::atomic_flag m_isBusy;
    std::vector<std::thread> m_threads;
    std::atomic<int> m_next{0};
    /// Changed with the mutex only, and read without it by threads that are awake.
    std::atomic<std::uint64_t> m_callCount{0};
    std::atomic<int> m_activeCount{0};

    std::mutex m_mutex;
    std::condition_variable m_called;
    std::condition_variable m_finished;
    const std::function<void(int)>* m_task = nullptr;
    int m_count = 0;
    bool m_isEnding = false;
    std::exception_ptr m_error;
};

/// The threads end with the program. The object stays for those that stroke even later, and in forked processes, which cannot join the threads.
Workers& workers()
{
    static auto* const shared = new Workers; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
    struct End {
        ~End() { shared->endForGood(); }
    };
    static const End end;
    return *shared;
}

} // namespace

void setStrokeWorkerCount(int count)
{
    workers().setWantedCount(count);
}

int strokeWorkerCount()
{
    return workers().wantedCount();
}

void rouseStrokeWorkers()
{
    workers().rouse();
}

void runSideBySide(int count, const std::function<void(int)>& task)
{
    workers().run(count, task);
}

} // namespace TOLVGraphing::raster
