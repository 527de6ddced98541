#pragma once

#include "../platform/graphics/Color.h"
#include <TOLVMath/Export.h>

#include <cstddef>

namespace TOLVGraphing {

/// How many colours there are before they begin again.
inline constexpr std::size_t kSeriesColorCount = 7;

/// The opaque colour for the series at any position, counted from 0, for programs that choose none themselves: blue, vermilion, green, pink, orange, light blue and black, which people with any kind of colour vision tell apart, and then again from the start.
[[nodiscard]] TOLV_EXPORT Color seriesColor(std::size_t position);

} // namespace TOLVGraphing
