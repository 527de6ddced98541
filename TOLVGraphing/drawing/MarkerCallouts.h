#pragma once

#include "GraphCallout.h"

#include <vector>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVMarker;

/// The callouts that one marker asks for, before any is left out for want of room: one for each series up to the first one that the marker lies outside of. Series without vectors, and values that
/// the vertical axis's formatter has no text for, are passed over. The rectangle is the graph rectangle.
[[nodiscard]] std::vector<GraphCallout> calloutsForMarker(const TOLVMarker& marker, const TOLVGraph& graph, const Rect& inRect);

/// The callouts that overlap no callout kept before them, in order.
[[nodiscard]] std::vector<GraphCallout> calloutsWithoutOverlap(std::vector<GraphCallout> callouts);

} // namespace TOLVGraphing
