#pragma once

#include "../platform/graphics/Color.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing {

class DrawingContext;

/// How a line is stroked: dash pattern, width and colour. Lengths are in view units (points) and are not scaled by the width.
class TOLV_EXPORT TOLVLineStyle {
public:
    /// Solid, 1 point wide, without a colour.
    TOLVLineStyle() = default;

    /// Painted 5, gap 2.
    [[nodiscard]] static std::shared_ptr<TOLVLineStyle> dashedLineStyle();
    /// Painted 5, gap 5, painted 1, gap 5.
    [[nodiscard]] static std::shared_ptr<TOLVLineStyle> dashDotLineStyle();
    /// Painted 1, gap 1.
    [[nodiscard]] static std::shared_ptr<TOLVLineStyle> dottedLineStyle();
    /// Without a pattern; the width is in points, and no colour strokes in black.
    [[nodiscard]] static std::shared_ptr<TOLVLineStyle> solidLineWithColor(const std::optional<Color>& color, double thickness);

    /// An independent style with the same properties.
    [[nodiscard]] std::shared_ptr<TOLVLineStyle> copy() const;
    /// A copy of this style in another colour; this one is not changed.
    [[nodiscard]] std::shared_ptr<TOLVLineStyle> styleWithColor(const std::optional<Color>& color) const;

    // Properties, all copied.

    /// Painted length, gap, painted length, gap, ... in points; nothing or empty means a solid line, and so does what a dash cannot be (see LineDash).
    [[nodiscard]] const std::optional<std::vector<float>>& patternValues() const { return m_patternValues; }
    void setPatternValues(std::optional<std::vector<float>> values) { m_patternValues = std::move(values); }
    /// Line width in points; with one that is not finite and above 0 nothing is stroked.
    [[nodiscard]] double thickness() const { return m_thickness; }
    void setThickness(double thickness) { m_thickness = thickness; }
    /// Nothing strokes in black.
    [[nodiscard]] const std::optional<Color>& color() const { return m_color; }
    void setColor(const std::optional<Color>& color) { m_color = color; }

    // Applying.

    /// Sets dash and width of the context. A style without a pattern changes neither: whoever strokes a solid line after a dashed one saves and restores the
    /// graphics state around each stroke.
    void setPatternInContext(DrawingContext& context) const;
    /// Sets the stroke colour of the context, or its line width.
    void setColorInContext(DrawingContext& context) const;
    void setThicknessInContext(DrawingContext& context) const;
    /// Pattern, colour, thickness, in this order.
    void setInContext(DrawingContext& context) const;
    /// `setInContext` with the current drawing context; nothing happens without one.
    void set() const;

    friend bool operator==(const TOLVLineStyle&, const TOLVLineStyle&) = default;

private:
    static std::shared_ptr<TOLVLineStyle> styleWithPattern(std::vector<float> values);

    std::optional<std::vector<float>> m_patternValues;
    double m_thickness = 1.0;
    std::optional<Color> m_color;
};

} // namespace TOLVGraphing
