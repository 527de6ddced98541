#include "ReducibleSeries.h"

#include <TOLVMath/ExtremePyramid.h>

#include <algorithm>
#include <limits>

namespace TOLVGraphing {

ReducibleSeries ReducibleSeries::of(const TOLVRealVector& x, const TOLVRealVector& y)
{
    const std::size_t count = std::min(x.length(), y.length());
    ReducibleSeries series;
    series.xs = {x.components(), count};
    series.ys = {y.components(), count};
    series.isAscending = x.isAscending();
    series.sortedX = x.sortedStorage();
    series.xLocation = x.locationInStorage();
    series.yLocation = y.locationInStorage();
    return series;
}

void ReducibleSeries::useSummaries(const TOLVRealVector& y, std::size_t count, bool isLogarithmic)
{
    pyramid = y.pyramidOfStorage(count);
    if (pyramid && isLogarithmic && pyramid->extremes().minimum < -std::numeric_limits<float>::min()) {
        logarithms = y.pyramidOfLogarithms(count);
        // The minima of numbers without a logarithm are of no use here.
        if (!logarithms)
            pyramid = nullptr;
    }
}

} // namespace TOLVGraphing
