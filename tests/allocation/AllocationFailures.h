#pragma once

#include "FailingAllocations.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

namespace TOLVGraphing::testing_support {

/// Runs an action, which answers whether all went well, while its first allocation fails, then its second, and so on until none does. A failure has to come out as std::bad_alloc,
/// nothing that was allocated may stay, and the action has to succeed right afterwards. Answers how many allocations there were.
template <typename Action>
std::int64_t allocationsThatMayFail(Failing failing, Action action)
{
    // The first time, what is made once for the whole process is made.
    EXPECT_TRUE(action());
    const std::int64_t before = liveAllocations();
    for (std::int64_t first = 1;; ++first) {
        bool hasFailed = false;
        {
            const FailingAllocations failures(first, failing);
            try {
                const bool isWell = action();
                hasFailed = failures.haveHappened();
                EXPECT_TRUE(isWell && !hasFailed) << "allocation " << first << " failed and nobody said so";
            } catch (const std::bad_alloc&) {
                hasFailed = failures.haveHappened();
            }
        }
        EXPECT_EQ(liveAllocations(), before) << "after the failure of allocation " << first;
        EXPECT_TRUE(action()) << "after the failure of allocation " << first;
        if (!hasFailed || testing::Test::HasFailure())
            return first - 1;
    }
}

} // namespace TOLVGraphing::testing_support
