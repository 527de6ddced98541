#include "StrokeWorkers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#if __has_include(<sys/wait.h>)
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace TOLVGraphing::raster;

namespace {

/// Leaves the number of workers as it was.
class WorkerCount {
public:
    explicit WorkerCount(int count) : m_before(strokeWorkerCount()) { setStrokeWorkerCount(count); }
    ~WorkerCount() { setStrokeWorkerCount(m_before); }
    WorkerCount(const WorkerCount&) = delete;
    WorkerCount& operator=(const WorkerCount&) = delete;

private:
    int m_before;
};

/// How often each of the tasks was called.
std::vector<int> callsOf(int count)
{
    std::vector<int> calls(static_cast<std::size_t>(count), 0);
    runSideBySide(count, [&](int i) { ++calls[static_cast<std::size_t>(i)]; });
    return calls;
}

} // namespace

TEST(StrokeWorkers, everyTaskIsCalledOnce)
{
    for (const int workers : {0, 1, 3, 2, 0, 3}) {
        const WorkerCount workerCount(workers);
        for (const int count : {0, 1, 2, 13, 500})
            EXPECT_EQ(callsOf(count), std::vector<int>(static_cast<std::size_t>(count), 1)) << workers;
        for (int i = 0; i < 200; ++i) {
            rouseStrokeWorkers();
            ASSERT_EQ(callsOf(5), std::vector<int>(5, 1));
        }
    }
}

TEST(StrokeWorkers, countIsFromNoneToThree)
{
    const WorkerCount before(2);
    EXPECT_EQ(strokeWorkerCount(), 2);
    setStrokeWorkerCount(-1);
    EXPECT_EQ(strokeWorkerCount(), 0);
    setStrokeWorkerCount(100);
    EXPECT_EQ(strokeWorkerCount(), 3);
}

TEST(StrokeWorkers, tasksAreShared)
{
    const WorkerCount workerCount(3);
    std::mutex mutex;
    std::set<std::thread::id> threads;
    std::atomic<int> begun{0};
    // Each of the four tasks goes on when all have begun, which one thread alone would wait for in vain.
    runSideBySide(4, [&](int) {
        ++begun;
        while (begun < 4)
            std::this_thread::yield();
        const std::scoped_lock lock(mutex);
        threads.insert(std::this_thread::get_id());
    });
    EXPECT_EQ(threads.size(), 4U);
    EXPECT_EQ(threads.count(std::this_thread::get_id()), 1U);
}

TEST(StrokeWorkers, noWorkersMeansTheCallerInOrder)
{
    const WorkerCount workerCount(0);
    std::string order;
    runSideBySide(5, [&](int i) { order += std::to_string(i); });
    EXPECT_EQ(order, "01234");
}

TEST(StrokeWorkers, exceptionsReachTheCaller)
{
    for (const int workers : {0, 1, 3}) {
        const WorkerCount workerCount(workers);
        std::atomic<int> callCount{0};
        const auto fail = [&](int i) {
            ++callCount;
            if (i == 3)
                throw std::runtime_error("band 3");
        };
        EXPECT_THROW(runSideBySide(10000, fail), std::runtime_error);
        EXPECT_GE(callCount, 4);
        EXPECT_EQ(callsOf(20), std::vector<int>(20, 1));
    }
}

TEST(StrokeWorkers, tasksMayHaveTasksOfTheirOwn)
{
    const WorkerCount workerCount(3);
    std::atomic<int> sum{0};
    runSideBySide(8, [&](int) { runSideBySide(10, [&](int i) { sum += i; }); });
    EXPECT_EQ(sum, 8 * 45);
}

TEST(StrokeWorkers, severalThreadsMayCallAtOnce)
{
    const WorkerCount workerCount(2);
    std::atomic<int> wrongCount{0};
    const auto call = [&] {
        for (int i = 0; i < 300; ++i)
            wrongCount += callsOf(7) == std::vector<int>(7, 1) ? 0 : 1;
    };
    std::thread other(call);
    std::thread third([&] {
        for (int i = 0; i < 50; ++i)
            setStrokeWorkerCount(i % 4);
    });
    call();
    other.join();
    third.join();
    EXPECT_EQ(wrongCount, 0);
}

#if __has_include(<sys/wait.h>) && !defined(__SANITIZE_THREAD__)
TEST(StrokeWorkers, aForkedProcessWorksAlone)
{
    const WorkerCount workerCount(3);
    EXPECT_EQ(callsOf(20), std::vector<int>(20, 1));
    const pid_t child = fork();
    if (child == 0) {
        rouseStrokeWorkers();
        std::string order;
        runSideBySide(5, [&](int i) { order += std::to_string(i); });
        setStrokeWorkerCount(1);
        _exit(order == "01234" ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(callsOf(20), std::vector<int>(20, 1));
}
#endif
