#include "VisibleSeries.h"

#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>

#include <algorithm>

namespace TOLVGraphing {

namespace {

bool isRealVector(const TOLVGraphData::Samples& samples)
{
    return std::dynamic_pointer_cast<const TOLVRealVector>(samples) != nullptr;
}

} // namespace

std::vector<VisibleSeries> visibleSeriesOfGraph(const TOLVGraph& graph)
{
    const auto ranges = graph.xExtentsConstrainedGraphDataRanges();
    return ranges ? visibleSeriesOfGraph(graph, *ranges) : std::vector<VisibleSeries>();
}

std::vector<VisibleSeries> visibleSeriesOfGraph(const TOLVGraph& graph, std::span<const IndexRange> ranges)
{
    std::vector<VisibleSeries> visible;
    const auto series = graph.graphData();
    for (std::size_t i = 0; i < std::min(series.size(), ranges.size()); ++i) {
        if (isRealVector(series[i]->X()) && isRealVector(series[i]->Y()))
            visible.push_back({i, series[i]->graphDataInRange(ranges[i])});
    }
    return visible;
}

} // namespace TOLVGraphing
