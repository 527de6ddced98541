#pragma once

#include "DrawingContext.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Hands everything on to another context: a base for contexts that change some of what is drawn on its way. The target is not owned, has to outlive this object and is used through it only meanwhile.
/// A context that changes filled or stroked paths has to do the same to repeats.
class TOLV_EXPORT ForwardingContext : public DrawingContext {
public:
    /// Draws into the target, whose state and path stay as they are.
    explicit ForwardingContext(DrawingContext& target) : m_target(target) {}

    void saveState() override { m_target.saveState(); }
    void restoreState() override { m_target.restoreState(); }
    void concatenateTransform(const AffineTransform& transform) override { m_target.concatenateTransform(transform); }
    void clipToPath(const Path& path, FillRule rule) override { m_target.clipToPath(path, rule); }
    void setFillColor(const std::optional<Color>& color) override { m_target.setFillColor(color); }
    void setStrokeColor(const std::optional<Color>& color) override { m_target.setStrokeColor(color); }
    void setLineWidth(double width) override { m_target.setLineWidth(width); }
    void setLineDash(const LineDash& dash) override { m_target.setLineDash(dash); }
    void setLineCap(LineCap cap) override { m_target.setLineCap(cap); }
    void setLineJoin(LineJoin join) override { m_target.setLineJoin(join); }
    void setMiterLimit(double limit) override { m_target.setMiterLimit(limit); }
    void drawFilledPath(const Path& path, FillRule rule) override { m_target.drawFilledPath(path, rule); }
    void drawStrokedPath(const Path& path) override { m_target.drawStrokedPath(path); }
    void drawText(const AttributedString& text, Point origin) override { m_target.drawText(text, origin); }
    [[nodiscard]] bool drawsRepeatsQuickly() const override { return m_target.drawsRepeatsQuickly(); }
    void drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places) override { m_target.drawFilledRepeats(path, rule, places); }
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override { m_target.drawStrokedRepeats(path, places); }
    [[nodiscard]] std::optional<Rect> wholePixelsOfFill(const Rect& rect) const override { return m_target.wholePixelsOfFill(rect); }
    [[nodiscard]] Rect fillOfWholePixels(const Rect& pixels) const override { return m_target.fillOfWholePixels(pixels); }

protected:
    /// Where everything goes.
    [[nodiscard]] DrawingContext& target() const { return m_target; }

private:
    DrawingContext& m_target;
};

} // namespace TOLVGraphing
