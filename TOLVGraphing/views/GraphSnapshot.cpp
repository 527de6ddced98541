#include "GraphSnapshot.h"

#include "../axes/DateTickFormatter.h"
#include "../axes/TickNumberFormatter.h"
#include "../graph/TOLVGraph.h"

#include <utility>

namespace TOLVGraphing {

namespace {

/// A formatter of the class that looks at an axis of the graph, for the same axis of the snapshot; null for others.
template <typename Formatter>
std::shared_ptr<const NumberFormatter> formatterForSnapshot(const std::shared_ptr<NumberFormatter>& formatter, const TOLVGraph& graph, const TOLVGraph& snapshot)
{
    const auto tickFormatter = std::dynamic_pointer_cast<const Formatter>(formatter);
    const auto axis = tickFormatter ? tickFormatter->axis() : nullptr;
    if (axis && axis == graph.horizontalAxis())
        return tickFormatter->copyForAxis(snapshot.horizontalAxis());
    if (axis && axis == graph.verticalAxis())
        return tickFormatter->copyForAxis(snapshot.verticalAxis());
    return nullptr;
}

/// The formatter for the snapshot's axes: what looks at an axis of the graph looks at the snapshot's. Others are kept; the axis copies them.
std::shared_ptr<const NumberFormatter> formatterInSnapshot(const std::shared_ptr<NumberFormatter>& formatter, const TOLVGraph& graph, const TOLVGraph& snapshot)
{
    if (auto numbers = formatterForSnapshot<TickNumberFormatter>(formatter, graph, snapshot))
        return numbers;
    if (auto dates = formatterForSnapshot<DateTickFormatter>(formatter, graph, snapshot))
        return dates;
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
