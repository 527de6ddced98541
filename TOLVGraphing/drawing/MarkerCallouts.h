#pragma once

#include "GraphCallout.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVMarker;

/// The callout of one series at a marker.
struct MarkerCallout {
    /// The callout at its place.
    GraphCallout callout;
    /// The position of the series in the graph's list.
    std::size_t series = 0;
};

/// The callouts that one marker asks for, before any is left out for want of room: one for each series up to the first one that the marker lies outside of, or that has no samples. Series without vectors (TOLVRealVector), and values that
/// the vertical axis's formatter has no text or an empty one for, are passed over. The rectangle is the graph rectangle. Places may be not finite, as those of a marker that is NaN; none at all without a vertical axis.
[[nodiscard]] TOLV_EXPORT std::vector<MarkerCallout> calloutsForMarker(const TOLVMarker& marker, const TOLVGraph& graph, const Rect& inRect);

/// For each callout of a marker the position of the first one kept before it that it overlaps; nothing for those that are kept.
[[nodiscard]] TOLV_EXPORT std::vector<std::optional<std::size_t>> overlappedCallouts(std::span<const MarkerCallout> callouts);

} // namespace TOLVGraphing
