#include "FailingAllocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

struct ThreadState {
    /// Allocations that still succeed; negative while none is to fail.
    std::int64_t remaining = -1;
    bool failsOnce = true;
    bool hasFailed = false;
    std::int64_t live = 0;
};

thread_local constinit ThreadState state;

/// Counts an allocation and says whether it has to fail.
bool fails()
{
    if (state.remaining < 0)
        return false;
    if (state.remaining > 0) {
        --state.remaining;
        return false;
    }
    state.hasFailed = true;
    if (state.failsOnce)
        state.remaining = -1;
    return true;
}

void release(void* memory) noexcept
{
    if (!memory)
        return;
    --state.live;
    std::free(memory);
}

} // namespace

// Forms for arrays and without exceptions come down to these; types that need more alignment keep the library's own.

void* operator new(std::size_t size)
{
    void* memory = fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    ++state.live;
    return memory;
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}

namespace TOLVGraphing::testing_support {

FailingAllocations::FailingAllocations(std::int64_t first, Failing failing)
{
    state.hasFailed = false;
    state.failsOnce = failing == Failing::Once;
    state.remaining = first - 1;
}

FailingAllocations::~FailingAllocations()
{
    state.remaining = -1;
}

bool FailingAllocations::haveHappened() const
{
    return state.hasFailed;
}

std::int64_t liveAllocations()
{
    return state.live;
}

} // namespace TOLVGraphing::testing_support
