#pragma once

#include <memory>

namespace TOLVGraphing {

class TOLVGraph;

/// A graph that draws what the given one draws now, however that one is changed afterwards: its axes with their formatters and paddings, ranges, markers, series, line styles and font heights are its own. Formatters that look at the ticks
/// of an axis of the graph look at the snapshot's axis. Samples, info dictionaries and the strategy are shared; samples never change, and a strategy keeps nothing about a graph. There is no undo manager.
[[nodiscard]] std::shared_ptr<TOLVGraph> snapshotOfGraph(const TOLVGraph& graph);

} // namespace TOLVGraphing
