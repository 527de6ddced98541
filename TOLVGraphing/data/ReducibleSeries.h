#pragma once

#include <TOLVMath/TOLVRealVector.h>

#include <cstddef>
#include <span>

namespace TOLVGraphing {

/// The samples of a series, as many of either coordinate, and what is known of them. Refers to all of it.
struct ReducibleSeries {
    std::span<const float> xs;
    std::span<const float> ys;
    /// No abscissa is NaN or below the one before.
    bool isAscending = false;
    /// The storage that the abscissae are part of, and from which place on; null when it has no table.
    const SortedSamples* sortedX = nullptr;
    std::size_t xLocation = 0;
    /// The extremes of the storage that the ordinates are part of, and from which place on; null when they are not known.
    const ExtremePyramid* pyramid = nullptr;
    /// The same without the numbers that have no logarithm; null when there are none of these or nothing is known.
    const ExtremePyramid* logarithms = nullptr;
    std::size_t yLocation = 0;

    /// The samples up to the end of the shorter vector. The abscissae are looked through when their vector does not know yet whether they ascend. Nothing is known of the ordinates until `useSummaries`.
    [[nodiscard]] static ReducibleSeries of(const TOLVRealVector& x, const TOLVRealVector& y);
    /// Takes in what the vector of the ordinates knows of their extremes; a long vector finds them now if `count` samples, those in range, are worth it.
    void useSummaries(const TOLVRealVector& y, std::size_t count, bool isLogarithmic);
};

} // namespace TOLVGraphing
