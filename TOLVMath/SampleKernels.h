#pragma once

#include <cstddef>
#include <span>

namespace TOLVGraphing {

struct Extremes;

/// The loops over all samples of a vector, as quick as memory is read. Where a processor has vectors of eight numbers these are used: they look through 1e6 samples in about two thirds of the time, and through 1e8 in up to a sixth less.
struct SampleKernels {
    /// NaN is passed over. Of no samples the smallest is infinite and the largest minus infinite.
    Extremes (*extremes)(const float* samples, std::size_t count);
    /// The same with samples below the floor passed over for the minimum.
    Extremes (*extremesAbove)(const float* samples, std::size_t count, float floor);
    /// Of blocks of `blockLength` samples, a multiple of sixteen, by fours: writes the minimum of block i at (i / 16) * 32 + i % 16 and its maximum 16 further. True when a sample is NaN.
    bool (*blockExtremes)(const float* samples, std::size_t blockLength, std::size_t blockCount, float* extremes);
    bool (*blockExtremesAbove)(const float* samples, std::size_t blockLength, std::size_t blockCount, float* extremes, float floor);
    /// True when none of `count` samples is above the next one, nor one of all these NaN; there are count + 1 samples.
    bool (*ascend)(const float* samples, std::size_t count);

    /// Those that suit this processor best.
    [[nodiscard]] static const SampleKernels& best();
    /// Each kind that this processor can run.
    [[nodiscard]] static std::span<const SampleKernels> all();
};

} // namespace TOLVGraphing
