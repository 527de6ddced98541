#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

class TOLVGraph;

/// What a graph is called, for those who cannot see it: its title, or "Graph" without one.
[[nodiscard]] TOLV_EXPORT std::string graphName(const TOLVGraph& graph);

/// What a graph shows, in a sentence for each: both axes with their titles ("x", "y" without, or with empty ones), scales other than linear, and visible ranges as the axes' formatters write numbers; how many series there are, and the first
/// ten names; how many markers. For example "Time (s) from 0 to 10. Level, logarithmic, from 1 to 1,000. 2 series: left, right. 1 marker." Ranges that are not known are left out.
[[nodiscard]] TOLV_EXPORT std::string graphDescription(const TOLVGraph& graph);

} // namespace TOLVGraphing
