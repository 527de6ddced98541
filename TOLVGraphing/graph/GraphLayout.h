#pragma once

#include "../axes/LabelPlacement.h"
#include "../drawing/CalloutPlacement.h"
#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

class TOLVAxis;
class TOLVGraph;

/// A text and the rectangle that it is drawn in, before any turning.
struct TextLayout {
    /// In UTF-8.
    std::string text;
    /// In points.
    Rect rect;

    friend bool operator==(const TextLayout&, const TextLayout&) = default;
};

/// A tick value in data units and where its grid line stands along the axis, in points; NaN or infinite where the value has no place.
struct TickLayout {
    /// In data units.
    double value = 0.0;
    /// In points.
    double position = 0.0;

    friend bool operator==(const TickLayout&, const TickLayout&) = default;
};

/// A tick label, a category's text or a marker badge's text, and what became of it.
struct LabelLayout {
    /// In data units.
    double value = 0.0;
    /// As it is written.
    std::string text;
    /// The rectangle that collisions are decided by; for a badge the one around the text is in `badge`.
    Rect rect;
    /// The label belongs to a major value; markers and categories have no other kind.
    bool isMajor = true;
    /// What became of it.
    LabelFate fate = LabelFate::Kept;
    /// The position, in the list that this label stands in, of the one kept before that it collides with; nothing unless the fate says so.
    std::optional<std::size_t> collidesWith;
    /// The rounded shape around a marker's text; nothing for other labels.
    std::optional<Rect> badge;

    friend bool operator==(const LabelLayout&, const LabelLayout&) = default;
};

/// One axis.
struct AxisLayout {
    /// The axis's class name, for example "TOLVLinearAxis".
    std::string kind;
    /// The visible range in data units; 0 and 0 without one.
    double min = 0.0;
    double max = 0.0;
    /// Of a TOLVDateAxis, what its values count from, in days since 1970-01-01; nothing for others.
    std::optional<double> origin;
    /// The axis's own rectangle, and in it the strips of the tick labels and of the title.
    Rect rect;
    Rect tickLabelRect;
    Rect labelRect;
    /// In ascending order. Category axes have none.
    std::vector<TickLayout> majorTicks;
    std::vector<TickLayout> minorTicks;
    /// Whether grid lines are drawn at them.
    bool drawsMajorLines = false;
    bool drawsMinorLines = false;
    /// The centres of the categories' slots along the axis, in points; empty on numeric axes.
    std::vector<double> slotCenters;
    /// In the order in which the axis chooses.
    std::vector<LabelLayout> labels;
    std::vector<LabelLayout> markerLabels;
    /// Where the title stands; nothing without one.
    std::optional<TextLayout> title;

    friend bool operator==(const AxisLayout&, const AxisLayout&) = default;
};

/// Where a graph puts everything, as data: for tests, for hosts that place something of their own beside it, and for people who ask why a label is missing. It and its parts are values; coordinates are points, y growing upwards.
struct GraphLayout {
    /// The graph rectangle and its parts.
    Rect rect;
    Rect dataRect;
    Rect titleBand;
    /// The graph's own, as they are, in points.
    EdgeInsets margin;
    EdgeInsets padding;
    /// Where the title stands; nothing without one.
    std::optional<TextLayout> title;
    /// Nothing unless the graph has both axes: it then draws none.
    std::optional<AxisLayout> horizontalAxis;
    std::optional<AxisLayout> verticalAxis;
    /// What the drawing strategy places beside samples, for strategies that do.
    std::vector<CalloutPlacement> callouts;

    friend bool operator==(const GraphLayout&, const GraphLayout&) = default;
};

/// "kept", "collides", "outside" and so on: the words for reports, which live as long as the program; empty for a number that is no fate.
[[nodiscard]] TOLV_EXPORT std::string_view nameOfFate(LabelFate fate);
[[nodiscard]] TOLV_EXPORT std::string_view nameOfFate(CalloutFate fate);

} // namespace TOLVGraphing
