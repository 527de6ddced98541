#pragma once

#include "../platform/foundation/IndexSet.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVGraphData;

/// A series cut to the samples in the graph's visible x range.
struct VisibleSeries {
    /// The position of the full series in the graph's list.
    std::size_t index = 0;
    /// Has abscissae and ordinates, both TOLVRealVector, and the full series' style.
    std::shared_ptr<TOLVGraphData> data;
};

/// The series as a strategy for categories draws them, in order: each cut to its part of `TOLVGraph::xExtentsConstrainedGraphDataRanges`. Series without vectors are left out. None at all when
/// there are no ranges: the visible range then lies between two samples of a series.
[[nodiscard]] TOLV_EXPORT std::vector<VisibleSeries> visibleSeriesOfGraph(const TOLVGraph& graph);
/// The same with those ranges at hand: one for each of the graph's series. Series that there is no range for are left out, and ranges are cut off at the end of a series.
[[nodiscard]] TOLV_EXPORT std::vector<VisibleSeries> visibleSeriesOfGraph(const TOLVGraph& graph, std::span<const IndexRange> ranges);

} // namespace TOLVGraphing
