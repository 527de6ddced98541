#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace TOLVGraphing {

/// True when no sample is NaN or below the one before it. One pass, which ends at the first sample that is.
[[nodiscard]] bool isAscending(std::span<const float> samples);

/// Ascending samples that are looked through by value. Every 256th one is kept a second time (0.4 % of the memory), so that a search stays in the processor's cache. Refers to the samples.
class SortedSamples {
public:
    static constexpr std::size_t kSkipShift = 8;
    /// A search looks at so many samples around the guess first.
    static constexpr std::size_t kWindow = 16;

    /// Looks through the samples once; null when they are not ascending.
    [[nodiscard]] static std::unique_ptr<const SortedSamples> of(std::span<const float> samples);

    [[nodiscard]] std::span<const float> samples() const { return m_samples; }
    /// In bytes, without the samples.
    [[nodiscard]] std::size_t memory() const { return m_skipTable.size() * sizeof(float); }

    /// The first index from `from` to `end` whose sample is above the value; `end` when there is none. Quick when it is near `guess`, which may be any index. The value is not NaN.
    [[nodiscard]] std::size_t firstAbove(float value, std::size_t from, std::size_t end, std::size_t guess) const;

private:
    SortedSamples(std::span<const float> samples, std::vector<float> skipTable);

    std::span<const float> m_samples;
    std::vector<float> m_skipTable;
};

/// The same for ascending samples without a table of their own, such as a part of a vector.
[[nodiscard]] std::size_t firstSampleAbove(std::span<const float> samples, float value, std::size_t from, std::size_t end, std::size_t guess);

} // namespace TOLVGraphing
