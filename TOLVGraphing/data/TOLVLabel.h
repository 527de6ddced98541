#pragma once

#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"
#include "../platform/text/AttributedString.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <span>

namespace TOLVGraphing {

/// A styled text placed at a rectangle in view units (points, y growing upwards).
class TOLV_EXPORT TOLVLabel {
public:
    /// No text, in the zero rectangle.
    TOLVLabel() = default;
    /// A label of the text (copied) at the rectangle.
    [[nodiscard]] static std::shared_ptr<TOLVLabel> labelWithAttributedString(AttributedString label, const Rect& rect);

    /// Copied. The text with its font and colour.
    [[nodiscard]] const AttributedString& label() const { return m_label; }
    void setLabel(AttributedString label) { m_label = std::move(label); }
    /// Where the text stands: the origin is its lower-left corner, the size is what collision tests use.
    [[nodiscard]] const Rect& rect() const { return m_rect; }
    void setRect(const Rect& rect) { m_rect = rect; }

    /// True when this rectangle overlaps, with positive area, one of the labels' rectangles grown by the insets. Nulls and labels with a non-finite rectangle are passed over; an empty rectangle of this label, or one with NaN, overlaps
    /// nothing. The label itself is not skipped when it is in the list.
    [[nodiscard]] bool overlapsLabelInArray(std::span<const std::shared_ptr<TOLVLabel>> labels, const EdgeInsets& withInsets) const;
    /// The same with insets of 3 points above and below and 5 points left and right.
    [[nodiscard]] bool overlapsLabelInArray(std::span<const std::shared_ptr<TOLVLabel>> labels) const;
    /// True when the label's centre lies beyond the rectangle's ends, vertically or horizontally; a centre on an end is inside, and so is one that is NaN.
    [[nodiscard]] bool liesOutsideRect(const Rect& rect, bool isVertical) const;

    /// Draws the text at the rectangle's origin into the current context; nothing happens without one. The rectangle's size neither clips nor scales it.
    void draw() const;

private:
    AttributedString m_label;
    Rect m_rect;
};

} // namespace TOLVGraphing
