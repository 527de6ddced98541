#pragma once

#include "ExtremePyramid.h"
#include "FloatLanes.h"

#include <array>
#include <cstddef>

namespace TOLVGraphing {

/// The smallest of the first lanes, and the largest of the others.
inline Extremes extremesOfLanes(FloatLanes minimum, FloatLanes maximum)
{
    std::array<float, FloatLanes::kCount> low{};
    std::array<float, FloatLanes::kCount> high{};
    minimum.store(low.data());
    maximum.store(high.data());
    Extremes result;
    for (std::size_t i = 0; i < FloatLanes::kCount; ++i)
        result.add({low[i], high[i]});
    return result;
}

} // namespace TOLVGraphing
