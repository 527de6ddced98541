#pragma once

#include <cmath>
#include <cstddef>
#include <optional>

namespace TOLVGraphing {

/// The index below `count` whose distance is smallest, the first of several. Distances that are NaN are passed over; nothing when all are.
template <typename Distance>
[[nodiscard]] std::optional<std::size_t> nearestIndex(std::size_t count, Distance distance)
{
    std::optional<std::size_t> nearest;
    for (std::size_t i = 0; i < count; ++i) {
        if (!std::isnan(distance(i)) && (!nearest || distance(i) < distance(*nearest)))
            nearest = i;
    }
    return nearest;
}

/// The same in logarithmic time for at least one place in order: `isReached(i)` tells whether the place of index i has come to the target and stays true from there on, and the distances, none of which
/// is NaN, do not grow before that index and do not shrink after it.
template <typename IsReached, typename Distance>
[[nodiscard]] std::size_t nearestIndexOfOrdered(std::size_t count, IsReached isReached, Distance distance)
{
    const auto firstFrom = [](std::size_t end, auto holds) {
        std::size_t first = 0;
        while (first < end) {
            const std::size_t middle = first + (end - first) / 2;
            if (holds(middle))
                end = middle;
            else
                first = middle + 1;
        }
        return first;
    };
    const std::size_t reached = firstFrom(count, isReached);
    if (reached == 0 || (reached < count && distance(reached) < distance(reached - 1)))
        return reached;
    // Rounding makes neighbouring distances equal: the first of them counts.
    return firstFrom(reached, [&](std::size_t i) { return !(distance(i) > distance(reached - 1)); });
}

} // namespace TOLVGraphing
