#pragma once

#include "../platform/geometry/Point.h"
#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;

/// What became of a callout that a strategy placed.
enum class CalloutFate : std::uint8_t {
    Kept,                ///< it is drawn
    CollidesWithCallout, ///< it overlaps a callout kept before it
    CollidesWithDot,     ///< it would cover a sample's dot
    NotFinite,           ///< its place is no number
};

/// A callout that a strategy placed beside a sample, and what became of it. Coordinates are points, y growing upwards. A value.
struct CalloutPlacement {
    /// The value as it is written.
    std::string text;
    /// Where the text stands.
    Rect textRect;
    /// What it is kept apart from others by.
    Rect bounds;
    /// The position of the series in the graph's list.
    std::size_t series = 0;
    /// What the callout belongs to: the position of a marker in the graph's list, or that of a category among the visible ones, from 0.
    std::size_t position = 0;
    /// What became of it.
    CalloutFate fate = CalloutFate::Kept;
    /// The callout that it collides with, a position in the list that this placement stands in; nothing unless the fate says so.
    std::optional<std::size_t> collidesWith;

    friend bool operator==(const CalloutPlacement&, const CalloutPlacement&) = default;
};

/// What a strategy implements in addition when it draws callouts: it can tell where they come to stand, without drawing. Layout reports ask whether a strategy has this interface.
class TOLV_EXPORT TOLVGraphCalloutLayout {
public:
    virtual ~TOLVGraphCalloutLayout();

    /// Every callout that the strategy thinks of for the graph in the graph rectangle, in the order in which it chooses. The graph has been prepared for the rectangle.
    [[nodiscard]] virtual std::vector<CalloutPlacement> calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const = 0;
};

} // namespace TOLVGraphing
