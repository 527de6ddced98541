#pragma once

#include "../platform/foundation/IndexSet.h"
#include <TOLVMath/Export.h>

#include <TOLVMath/TOLVRealVector.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVGraphData;

/// The parts of a graph's series that lie in a range of abscissae, and among them the representative one, which stands for the categories of a category axis. What was found for a graph is kept until
/// its series, their abscissae or the range change, so that asking for one category after the other does not look through the samples each time; the abscissae are held until then. Samples of a host's own class may change in place: with
/// those every question looks through all of them.
class TOLV_EXPORT CategoryRanges {
public:
    /// Finds the parts for the graph's series and the range [min, max] in data units, each as `visibleSampleRange` has it. The graph is not kept.
    void update(const TOLVGraph& graph, double min, double max);
    /// Finds nothing: no series.
    void clear();

    /// One range of indices for each series; nothing when the range lies between two samples of one of them.
    [[nodiscard]] const std::optional<std::vector<IndexRange>>& ranges() const { return m_ranges; }
    /// The series with the longest range, the first of several; 0 without ranges, kNotFoundIndex without series.
    [[nodiscard]] std::int64_t representative() const { return m_representative; }
    /// The representative series' range; its location is kNotFoundIndex and its length 0 without ranges.
    [[nodiscard]] IndexRange representativeRange() const;
    /// The representative series' abscissae in its range; null without ranges.
    [[nodiscard]] const std::shared_ptr<const TOLVRealVector>& representativeX() const { return m_representativeX; }
    /// The index in `representativeX` of the abscissa nearest to the value (distances in single precision), the first of several; nothing without abscissae, and when no distance is a number.
    [[nodiscard]] std::optional<std::size_t> indexNearestTo(float value) const;

private:
    using Abscissae = std::vector<std::shared_ptr<const TOLVAxisData>>;

    [[nodiscard]] bool areOf(const std::vector<std::shared_ptr<TOLVGraphData>>& series, double min, double max) const;
    void find(const std::vector<std::shared_ptr<TOLVGraphData>>& allSeries, double min, double max);

    /// What the findings are of. Vectors that may change are never taken for the same.
    Abscissae m_abscissae;
    double m_min = 0.0;
    double m_max = 0.0;
    bool m_isCurrent = false;

    std::optional<std::vector<IndexRange>> m_ranges;
    std::int64_t m_representative = kNotFoundIndex;
    std::shared_ptr<const TOLVRealVector> m_representativeX;
    bool m_isAscending = false;
};

} // namespace TOLVGraphing
