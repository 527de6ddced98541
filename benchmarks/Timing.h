#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace TOLVGraphing::benchmarking {

using Clock = std::chrono::steady_clock;

[[nodiscard]] inline double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The median of at least one time, because a noisy machine has long steps that are none of ours.
[[nodiscard]] inline double medianOf(std::vector<double> seconds)
{
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::nth_element(seconds.begin(), middle, seconds.end());
    return *middle;
}

} // namespace TOLVGraphing::benchmarking
