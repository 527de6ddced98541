#pragma once

#include "TOLVGraphing/platform/graphics/DrawingContext.h"
#include "TOLVGraphing/platform/text/AttributedString.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// Rules of painting that backends share.
namespace TOLVGraphing::paint {

/// The opaque colour that a colour has, limited to 0...1, when it is painted over an opaque one, whose components lie in 0...1 and whose alpha is not looked at.
[[nodiscard]] TOLV_EXPORT Color blendedColor(const Color& over, const Color& under);

/// Passes a drawing on to a context that knows no translucency, in opaque colours only. PostScript is such a one: Cairo turns a page with any translucency into a bitmap.
///
/// A translucent area is painted in the colour that it has on the empty page; then what had been drawn before is drawn once more inside the area, in the colours that shine through.
/// The result is that of true blending, in vectors. A translucent line or text has the colour that it has on the empty page, whatever lies below. When areas pile up so that
/// more than `kMostRepeatedPoints` path points, those of clips included, would have to be drawn again in all, further areas cover what is below them likewise.
///
/// The target is not owned, has to outlive this object and be in its initial state, and is used through this object only. Coordinates are those of the target. Everything that is drawn is remembered, with copies of its paths, as long as
/// this object lives. GraphicsOutput.h makes one for PostScript and EPS; a host needs it only where it draws on such a target of its own.
class TOLV_EXPORT OpaqueContext final : public DrawingContext {
public:
    /// How many path points are drawn again in all, in repeats for areas that shine through.
    static constexpr std::size_t kMostRepeatedPoints = 200000;

    /// The page's colour is opaque, with components in 0...1, and has been painted already.
    OpaqueContext(DrawingContext& target, const Color& page) : m_target(target), m_page(page) {}

    void saveState() override;
    void restoreState() override;
    void concatenateTransform(const AffineTransform& transform) override;
    void clipToPath(const Path& path, FillRule rule) override;
    void setFillColor(const std::optional<Color>& color) override;
    void setStrokeColor(const std::optional<Color>& color) override;
    void setLineWidth(double width) override;
    void setLineDash(const LineDash& dash) override;
    void setLineCap(LineCap cap) override;
    void setLineJoin(LineJoin join) override;
    void setMiterLimit(double limit) override;
    void drawFilledPath(const Path& path, FillRule rule) override;
    void drawStrokedPath(const Path& path) override;
    void drawText(const AttributedString& text, Point origin) override;

private:
    /// A clip and the ones that it is inside of.
    struct Clip {
        Path path;
        FillRule rule = FillRule::NonZero;
        AffineTransform transform;
        std::shared_ptr<const Clip> outer;
        /// Of this clip and the outer ones.
        std::size_t pointCount = 0;
    };

    struct State {
        AffineTransform transform;
        std::shared_ptr<const Clip> clip;
        Color fillColor;
        Color strokeColor;
        double lineWidth = 1.0;
        double miterLimit = 10.0;
        LineDash dash;
        LineCap cap = LineCap::Butt;
        LineJoin join = LineJoin::Miter;
    };

    enum class Kind : std::uint8_t { Fill, Stroke, Text, Veil };

    /// Something that was drawn, with the state that it was drawn in.
    struct Element {
        Kind kind = Kind::Fill;
        State state;
        Path path;
        FillRule rule = FillRule::NonZero;
        AttributedString text;
        Point origin;
        /// Of what is painted, on the page; not valid where it is not known.
        Rect bounds;
    };

    /// A colour laid over everything of an element while it is drawn again.
    struct Tint {
        Color color;
        const Tint* outer = nullptr;

        [[nodiscard]] Color over(const Color& under) const;
    };

    /// True, and counted, when what is within the bounds may be drawn again. After the first refusal all are refused.
    [[nodiscard]] bool canRepeat(const Rect& bounds);
    /// How many path points drawing the first elements again inside the bounds takes, up to a little more than the limit.
    [[nodiscard]] std::size_t costOfRepeating(std::size_t count, const Rect& bounds, std::size_t limit) const;
    /// Draws the first elements again, those outside the bounds left out.
    void repeat(std::size_t count, const Rect& bounds, const Tint& tint);
    void repeatElement(std::size_t index, const Rect& bounds, const Tint& tint);
    /// Paints an area's own colour and what shines through it. The target is in page coordinates and clipped as the area is.
    void paintVeil(std::size_t index, const Rect& bounds, const Tint& tint);
    void enterClip(const Clip* clip);
    void remember(Element element);
    [[nodiscard]] Rect pageBounds(const Rect& bounds, double margin) const;

    /// The colour as it looks on the empty page.
    [[nodiscard]] Color onPage(const Color& color) const { return blendedColor(color, m_page); }

    DrawingContext& m_target;
    Color m_page;
    State m_state;
    std::vector<State> m_saved;
    std::vector<Element> m_elements;
    std::size_t m_repeatedPoints = 0;
};

} // namespace TOLVGraphing::paint
