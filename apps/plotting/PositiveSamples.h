#pragma once

#include "FileSeries.h"
#include "Options.h"
#include "Scale.h"

#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

// What a logarithmic axis can show of a graph's series: numbers greater than zero. Gaps are no numbers and do not count either way.

/// The extremes of the abscissae, which ascend in every series, or nothing where none is positive.
[[nodiscard]] std::optional<Range> positiveXRange(const TOLVGraph& graph);
/// The extremes of the ordinates, or nothing where none is positive; with `xIsPositive` those of samples with a positive abscissa.
[[nodiscard]] std::optional<Range> positiveYRange(const TOLVGraph& graph, bool xIsPositive);

/// A sentence for each series and logarithmic axis on which some samples cannot be shown: how many of how many.
[[nodiscard]] std::vector<std::string> notesOnHiddenSamples(const std::vector<FileSeries>& files, const Options& options);

} // namespace TOLVGraphing::app
