#pragma once

#include "../platform/geometry/Rect.h"
#include "../platform/text/AttributedString.h"
#include "CalloutPlacement.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace TOLVGraphing {

/// A text with the rectangle that it is drawn in (points, y growing upwards). A value.
struct TOLV_EXPORT CalloutLabel {
    /// The text with its font and colour.
    AttributedString string;
    /// Where it is drawn.
    Rect rect;

    /// True when this rectangle, grown by the padding (points) on every side, overlaps the other with positive area; false with NaN.
    [[nodiscard]] bool overlapsRect(const Rect& other, double withPadding = 0.0) const;

    friend bool operator==(const CalloutLabel&, const CalloutLabel&) = default;
};

/// The text's rectangle over a point: centred, its lower edge 3.5 points above it. Not finite where the point is not.
[[nodiscard]] TOLV_EXPORT Rect rectForCalloutLabel(const AttributedString& string, Point atPoint);

/// A rectangle inside those of all callouts over the point whose text has a digit and a font of 8 points or more: what this one overlaps they overlap too, and their text needs no layout to know it.
[[nodiscard]] TOLV_EXPORT Rect coreOfCalloutLabel(Point atPoint);

/// A label of a category and what became of it.
struct CalloutLabelPlacement {
    /// The label.
    CalloutLabel label;
    /// The category's position, and the label's in its category's list.
    std::size_t category = 0;
    std::size_t position = 0;
    /// What became of it.
    CalloutFate fate = CalloutFate::Kept;
    /// The kept label that it collides with, as a position in the list of all placements.
    std::optional<std::size_t> collidesWith;
};

/// Chooses among the labels of all categories, given category by category: lower categories come first, within a category the higher label. A label is kept that overlaps no dot and no label kept before it;
/// one that is not finite never is. The answer has every label in the order of choice. A label is compared with what stands near it only, not with everything.
[[nodiscard]] TOLV_EXPORT std::vector<CalloutLabelPlacement> placeCalloutLabels(std::span<const std::vector<CalloutLabel>> categories, std::span<const Rect> dots);

/// Draws each label's text in its rectangle into the current context, in order.
TOLV_EXPORT void drawCalloutLabels(std::span<const CalloutLabel> labels);

} // namespace TOLVGraphing
