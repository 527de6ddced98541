#pragma once

#include <TOLVMath/ExtremePyramid.h>
#include <TOLVMath/FloatLanes.h>
#include <TOLVMath/Prefetch.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace TOLVGraphing {

/// The smallest and the largest of the samples of one column, and which of the two comes first, once mapped to positions.
///
/// `Scale` maps monotonously, every sample from `floor` on to a number that is not NaN. Different samples may map to one position, so what counts for the order are the first samples that map to the two extreme positions; these need not be
/// the smallest and the largest sample.
template <typename Scale>
class ColumnExtremes {
public:
    /// Samples of storage that is read from `samples` on. Those below `floor`, and NaN, have no position. `pyramid` is made of the same storage and with the same floor, or null.
    ColumnExtremes(const Scale& scale, const float* samples, float floor, const ExtremePyramid* pyramid) : m_scale(scale), m_samples(samples), m_floor(floor), m_pyramid(pyramid) {}

    /// Finds the extremes of the samples from the first to before the end, of which at least one has a position.
    const Extremes& find(std::size_t from, std::size_t end)
    {
        m_from = from;
        m_end = end;
        if (m_pyramid)
            findInPyramid();
        else
            findInSamples();
        return m_extremes;
    }

    /// True when a sample at the larger extreme's position comes before those at the smaller one's. The two positions, of the extremes found last, differ.
    [[nodiscard]] bool isMaximumFirst(float minimumPosition, float maximumPosition)
    {
        m_minimumPosition = minimumPosition;
        m_maximumPosition = maximumPosition;
        m_minimumEnd = m_scale.endOfPosition(m_extremes.minimum, minimumPosition, 1.0F);
        m_maximumEnd = m_scale.endOfPosition(m_extremes.maximum, maximumPosition, -1.0F);
        const First first = m_pyramid ? firstInPyramid() : firstInBlocks();
        return first == First::Maximum;
    }

private:
    enum class First : std::uint8_t { Neither, Minimum, Maximum };

    /// Without a pyramid a long column has its blocks for itself.
    static constexpr std::size_t kBlocks = 64;
    static constexpr std::size_t kSmallestBlockShift = 10;
    static constexpr std::size_t kMostLevels = 16;
    /// Samples that memory delivers while a column is finished, and in one piece.
    static constexpr std::size_t kAhead = 512;
    static constexpr std::size_t kLine = 16;

    // Without a pyramid.

    void findInSamples()
    {
        const std::size_t count = m_end - m_from;
        m_blockShift = kSmallestBlockShift;
        while (count >> m_blockShift >= kBlocks)
            ++m_blockShift;
        m_blockCount = 0;
        m_extremes = {};
        for (std::size_t begin = m_from; begin < m_end; begin += std::size_t{1} << m_blockShift) {
            const std::size_t length = std::min(std::size_t{1} << m_blockShift, m_end - begin);
            const Extremes block = extremesOf({m_samples + begin, length}, m_floor);
            m_minima[m_blockCount] = block.minimum;
            m_maxima[m_blockCount] = block.maximum;
            ++m_blockCount;
            m_extremes.add(block);
        }
        // What comes next is on its way while this column is finished.
        for (std::size_t i = 0; i < kAhead; i += kLine)
            prefetch(m_samples + m_end + i);
    }

    First firstInBlocks() const
    {
        for (std::size_t i = 0; i < m_blockCount; ++i) {
            const First first = classified({m_minima[i], m_maxima[i]}, [&] {
                const std::size_t begin = m_from + (i << m_blockShift);
                return firstInSamples(begin, std::min(begin + (std::size_t{1} << m_blockShift), m_end));
            });
            if (first != First::Neither)
                return first;
        }
        return First::Neither;
    }

    // With a pyramid: the column is a row of entries of the highest level that has one within it, and at either side what is left in entries of the levels below, down to samples.

    [[nodiscard]] std::size_t sampleOf(std::size_t level, std::size_t index) const { return index << m_pyramid->shiftOfLevel(level); }
    [[nodiscard]] bool isLeftEmpty(std::size_t level) const { return m_from == sampleOf(level, m_first[level]); }
    [[nodiscard]] bool isRightEmpty(std::size_t level) const { return m_end == sampleOf(level, m_last[level]); }

    void findInPyramid()
    {
        const unsigned shift = m_pyramid->blockShift();
        m_first[0] = (m_from + (std::size_t{1} << shift) - 1) >> shift;
        m_last[0] = m_end >> shift;
        m_isShort = m_first[0] >= m_last[0];
        if (m_isShort) {
            m_extremes = extremesOf({m_samples + m_from, m_end - m_from}, m_floor);
            return;
        }
        m_top = 0;
        while (m_top + 1 < m_pyramid->levelCount()) {
            const std::size_t first = (m_first[m_top] + ExtremePyramid::kFan - 1) >> ExtremePyramid::kFanShift;
            const std::size_t last = m_last[m_top] >> ExtremePyramid::kFanShift;
            if (first >= last)
                break;
            ++m_top;
            m_first[m_top] = first;
            m_last[m_top] = last;
        }
        m_extremes = m_pyramid->extremesOfEntries(m_top, m_first[m_top], m_last[m_top]);
        addLeft();
        addRight();
    }

    /// What is left of the row; an entry that reaches beyond it tells when there is nothing to gain.
    void addLeft()
    {
        for (std::size_t level = m_top; !isLeftEmpty(level) && !m_extremes.contain(m_pyramid->entry(level, m_first[level] - 1)); --level) {
            if (level == 0) {
                m_extremes.add(extremesOf({m_samples + m_from, sampleOf(0, m_first[0]) - m_from}, m_floor));
                return;
            }
            m_extremes.add(m_pyramid->extremesOfEntries(level - 1, m_first[level - 1], m_first[level] << ExtremePyramid::kFanShift));
        }
    }

    void addRight()
    {
        for (std::size_t level = m_top; !isRightEmpty(level) && !m_extremes.contain(m_pyramid->entry(level, m_last[level])); --level) {
            if (level == 0) {
                const std::size_t begin = sampleOf(0, m_last[0]);
                m_extremes.add(extremesOf({m_samples + begin, m_end - begin}, m_floor));
                return;
            }
            m_extremes.add(m_pyramid->extremesOfEntries(level - 1, m_last[level] << ExtremePyramid::kFanShift, m_last[level - 1]));
        }
    }

    First firstInPyramid() const
    {
        if (m_isShort)
            return firstInSamples(m_from, m_end);
        First first = firstInLeft();
        if (first == First::Neither)
            first = firstInEntries(m_top, m_first[m_top], m_last[m_top]);
        for (std::size_t level = m_top; first == First::Neither && level > 0; --level)
            first = firstInEntries(level - 1, m_last[level] << ExtremePyramid::kFanShift, m_last[level - 1]);
        return first == First::Neither ? firstInSamples(sampleOf(0, m_last[0]), m_end) : first;
    }

    First firstInLeft() const
    {
        // Down to where something may be, then up again.
        std::size_t level = m_top;
        while (!isLeftEmpty(level) && mayHold(m_pyramid->entry(level, m_first[level] - 1))) {
            if (level == 0) {
                const First first = firstInSamples(m_from, sampleOf(0, m_first[0]));
                if (first != First::Neither)
                    return first;
                break;
            }
            --level;
        }
        for (; level < m_top; ++level) {
            const First first = firstInEntries(level, m_first[level], m_first[level + 1] << ExtremePyramid::kFanShift);
            if (first != First::Neither)
                return first;
        }
        return First::Neither;
    }

    First firstInEntries(std::size_t level, std::size_t from, std::size_t end) const
    {
        for (std::size_t i = from; i < end; ++i) {
            const First first = classified(m_pyramid->entry(level, i), [&] { return firstWithin(level, i); });
            if (first != First::Neither)
                return first;
        }
        return First::Neither;
    }

    First firstWithin(std::size_t level, std::size_t index) const
    {
        if (level == 0)
            return firstInSamples(sampleOf(0, index), std::min(sampleOf(0, index + 1), m_pyramid->sampleCount()));
        const std::size_t end = std::min((index + 1) << ExtremePyramid::kFanShift, m_pyramid->entryCount(level - 1));
        return firstInEntries(level - 1, index << ExtremePyramid::kFanShift, end);
    }

    // Both.

    /// False only when no sample of these extremes maps to either position.
    [[nodiscard]] bool mayHold(const Extremes& extremes) const { return extremes.minimum < m_minimumEnd || extremes.maximum > m_maximumEnd; }

    /// Which position comes first among samples of the column with these extremes; `lookWithin` is asked when it has both.
    template <typename LookWithin>
    First classified(const Extremes& extremes, LookWithin lookWithin) const
    {
        // The smallest sample maps to the smallest position of all that are in there.
        const bool holdsMinimum = extremes.minimum < m_minimumEnd && m_scale.pointForValue(extremes.minimum) == m_minimumPosition;
        const bool holdsMaximum = extremes.maximum > m_maximumEnd && m_scale.pointForValue(extremes.maximum) == m_maximumPosition;
        if (holdsMinimum && holdsMaximum)
            return lookWithin();
        return holdsMinimum ? First::Minimum : holdsMaximum ? First::Maximum : First::Neither;
    }

    First firstInSamples(std::size_t from, std::size_t end) const
    {
        const FloatLanes minimumEnd(m_minimumEnd);
        const FloatLanes maximumEnd(m_maximumEnd);
        const FloatLanes floor(m_floor);
        std::size_t i = from;
        for (; i + FloatLanes::kCount <= end; i += FloatLanes::kCount) {
            const FloatLanes samples = FloatLanes::load(m_samples + i);
            unsigned candidates = ((FloatLanes::whereBelow(samples, minimumEnd) & FloatLanes::whereNotAbove(floor, samples)) | FloatLanes::whereBelow(maximumEnd, samples)).bits();
            for (; candidates != 0; candidates &= candidates - 1) {
                const First first = positionOf(m_samples[i + static_cast<std::size_t>(std::countr_zero(candidates))]);
                if (first != First::Neither)
                    return first;
            }
        }
        for (; i < end; ++i) {
            const First first = positionOf(m_samples[i]);
            if (first != First::Neither)
                return first;
        }
        return First::Neither;
    }

    First positionOf(float sample) const
    {
        const float position = m_scale.pointForValue(sample);
        return position == m_minimumPosition ? First::Minimum : position == m_maximumPosition ? First::Maximum : First::Neither;
    }

    const Scale& m_scale;
    const float* m_samples;
    float m_floor;
    const ExtremePyramid* m_pyramid;
    std::size_t m_from = 0;
    std::size_t m_end = 0;
    Extremes m_extremes;
    /// The positions whose order is asked for. Samples that map to the first are below its end, those that map to the second above its.
    float m_minimumPosition = 0.0F;
    float m_maximumPosition = 0.0F;
    float m_minimumEnd = 0.0F;
    float m_maximumEnd = 0.0F;
    /// The column's own blocks.
    std::size_t m_blockShift = 0;
    std::size_t m_blockCount = 0;
    std::array<float, kBlocks> m_minima{};
    std::array<float, kBlocks> m_maxima{};
    /// The entries within the column, level by level up to the top one.
    bool m_isShort = false;
    std::size_t m_top = 0;
    std::array<std::size_t, kMostLevels> m_first{};
    std::array<std::size_t, kMostLevels> m_last{};
};

} // namespace TOLVGraphing
