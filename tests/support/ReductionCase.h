#pragma once

#include <TOLVGraphing/data/ColumnReduction.h>
#include <TOLVMath/ExtremePyramid.h>
#include <TOLVMath/SortedSamples.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A series as part of a longer storage, and how it is drawn.
struct ReductionCase {
    ColumnReduction settings;
    std::vector<float> xStorage;
    std::vector<float> yStorage;
    std::size_t xLocation = 0;
    std::size_t yLocation = 0;
    std::size_t count = 0;
    bool hasTable = false;
    /// Nothing: without a pyramid.
    std::optional<unsigned> blockShift;

    [[nodiscard]] std::span<const float> xs() const { return std::span(xStorage).subspan(xLocation, count); }
    [[nodiscard]] std::span<const float> ys() const { return std::span(yStorage).subspan(yLocation, count); }
};

/// What vectors would know of the samples of a case, which it refers to.
class ReductionSummaries {
public:
    explicit ReductionSummaries(const ReductionCase& one)
    {
        m_series.xs = one.xs();
        m_series.ys = one.ys();
        m_series.isAscending = isAscending(one.xs());
        m_series.xLocation = one.xLocation;
        m_series.yLocation = one.yLocation;
        if (one.hasTable) {
            // Null where the storage does not ascend.
            m_table = SortedSamples::of(one.xStorage);
            m_series.sortedX = m_table.get();
        }
        if (!one.blockShift)
            return;
        m_pyramid = std::make_unique<ExtremePyramid>(one.yStorage, *one.blockShift);
        m_series.pyramid = m_pyramid.get();
        if (one.settings.yIsLog && m_pyramid->extremes().minimum < -std::numeric_limits<float>::min()) {
            m_logarithms = std::make_unique<ExtremePyramid>(one.yStorage, *one.blockShift, -std::numeric_limits<float>::min());
            m_series.logarithms = m_logarithms.get();
        }
    }

    [[nodiscard]] const ReducibleSeries& series() const { return m_series; }

private:
    ReducibleSeries m_series;
    std::unique_ptr<const SortedSamples> m_table;
    std::unique_ptr<const ExtremePyramid> m_pyramid;
    std::unique_ptr<const ExtremePyramid> m_logarithms;
};

} // namespace TOLVGraphing::testing_support
