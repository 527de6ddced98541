#pragma once

#include "Options.h"
#include "Scale.h"

#include <string>
#include <vector>

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

// The parts of the data that the axes show: as the options say, and elsewhere fitted to the graph's series, with the room that the kind of drawing needs. On a logarithmic axis the samples that are
// greater than zero count. Each throws UsageError for an end that cannot be understood, an empty range, and a logarithmic axis without anything to show.

/// Dates may be ends where there is a `dateOrigin`, see dateOriginOf(). `notes` receives a sentence where the axis cannot tell where the samples are.
[[nodiscard]] Range visibleXRange(const TOLVGraph& graph, const Options& options, std::optional<double> dateOrigin, std::vector<std::string>& notes);
[[nodiscard]] Range visibleYRange(const TOLVGraph& graph, const Options& options);

/// Whether an axis of the kind can show the range: both ends are finite in single precision, the first one is smaller, and greater than 0 on a logarithmic axis. For categories also whether every series of the graph has
/// some in it: the axis shows nothing otherwise.
[[nodiscard]] bool canShowRange(const TOLVGraph& graph, Range range, AxisKind kind);

} // namespace TOLVGraphing::app
