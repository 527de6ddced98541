#include "GraphSnapshot.h"

#include "../axes/DateTickFormatter.h"
#include "../axes/TickNumberFormatter.h"
#include "../graph/TOLVGraph.h"

#include <utility>

namespace TOLVGraphing {

namespace {

/// The snapshot's axis in the place of one of the graph's; null for others.
std::shared_ptr<const TOLVAxis> axisInSnapshot(const std::shared_ptr<const TOLVAxis>& axis, const TOLVGraph& graph, const TOLVGraph& snapshot)
{
    if (axis && axis == graph.horizontalAxis())
        return snapshot.horizontalAxis();
    return axis && axis == graph.verticalAxis() ? snapshot.verticalAxis() : nullptr;
}

/// The formatter for the snapshot's axes: what looks at an axis of the graph looks at the snapshot's. Others are kept; the axis copies them.
std::shared_ptr<const NumberFormatter> formatterInSnapshot(const std::shared_ptr<NumberFormatter>& formatter, const TOLVGraph& graph, const TOLVGraph& snapshot)
{
    if (const auto numbers = std::dynamic_pointer_cast<const TickNumberFormatter>(formatter)) {
        if (const auto axis = axisInSnapshot(numbers->axis(), graph, snapshot))
            return numbers->copyForAxis(axis);
    }
    if (const auto dates = std::dynamic_pointer_cast<const DateTickFormatter>(formatter)) {
        if (const auto axis = axisInSnapshot(dates->axis(), graph, snapshot))
            return std::make_shared<DateTickFormatter>(axis);
    }
    return formatter;
}

/// Gives an axis what a copy of an axis lacks.
void completeAxis(TOLVAxis* axis, const TOLVAxis* original, const TOLVGraph& graph, const TOLVGraph& snapshot)
{
    if (!axis || !original)
        return;
    axis->setTickLabelPadding(original->tickLabelPadding());
    axis->setMargin(original->margin());
    axis->setPadding(original->padding());
    axis->setTickLabelFormatter(formatterInSnapshot(original->tickLabelFormatter(), graph, snapshot));
}

std::shared_ptr<TOLVGraphData> copyOfSeries(const TOLVGraphData& series)
{
    auto copied = std::make_shared<TOLVGraphData>(series);
    copied->setLineStyle(series.lineStyle() ? series.lineStyle()->copy() : nullptr);
    return copied;
}

} // namespace

std::shared_ptr<TOLVGraph> snapshotOfGraph(const TOLVGraph& graph)
{
    auto snapshot = graph.copy();
    completeAxis(snapshot->horizontalAxis().get(), graph.horizontalAxis().get(), graph, *snapshot);
    completeAxis(snapshot->verticalAxis().get(), graph.verticalAxis().get(), graph, *snapshot);
    snapshot->setMajorLineStyle(graph.majorLineStyle());
    snapshot->setMinorLineStyle(graph.minorLineStyle());
    snapshot->setLabelFontHeight(graph.labelFontHeight());
    snapshot->setTickLabelFontHeight(graph.tickLabelFontHeight());
    TOLVGraph::Markers markers;
    for (const auto& marker : graph.markers())
        markers.push_back(marker->copy());
    snapshot->setMarkers(std::move(markers));
    snapshot->clearGraphData();
    for (const auto& series : graph.graphData())
        snapshot->addGraphData(copyOfSeries(*series));
    snapshot->setNeedsReloadData(graph.needsReloadData());
    return snapshot;
}

} // namespace TOLVGraphing
