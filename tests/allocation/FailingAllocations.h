#pragma once

#include <cstdint>
#include <ostream>

namespace TOLVGraphing::testing_support {

/// Which of a thread's allocations fail.
enum class Failing {
    /// One, and those after it succeed.
    Once,
    /// One and all after it.
    FromThereOn,
};
/// In the names of tests.
inline void PrintTo(Failing failing, std::ostream* stream)
{
    *stream << (failing == Failing::Once ? "Once" : "FromThereOn");
}

/// Makes operator new fail on this thread for the life of the scope: at the `first` allocation, counted from 1. Only in programs that FailingAllocations.cpp is part of, which
/// replaces operator new in all of the program.
class FailingAllocations {
public:
    FailingAllocations(std::int64_t first, Failing failing);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// Whether it has come to a failure.
    [[nodiscard]] bool haveHappened() const;
};

/// The blocks that this thread has allocated and nobody has released. Negative when it released other threads' blocks.
[[nodiscard]] std::int64_t liveAllocations();

} // namespace TOLVGraphing::testing_support
