#pragma once

#include "ForwardingContext.h"
#include <TOLVMath/Export.h>

#include <optional>
#include <span>
#include <vector>

namespace TOLVGraphing {

/// Hands a drawing on to a context of pixels and puts straight lines and rectangles on the grid of these, so that they are not blurred at any ratio of pixels to points.
///
/// - Strokes of paths whose every segment is horizontal or vertical: the line becomes a whole number of pixels wide (the nearest, at least one) and its edges lie on edges of pixels. A line thinner than a pixel is as much fainter
///   as it becomes wider, so that it keeps its weight beside others. The open ends of a line go to the nearest
///   edges of pixels; a line so short that both would be the same keeps its length. Dashes keep their lengths. Both directions have to be scaled alike.
/// - Fills of a single upright rectangle: each edge goes to the nearest edge of pixels, and what has an area keeps at least one pixel in either direction.
/// - Clips to a single upright rectangle with an area grow outwards to whole pixels.
///
/// No coordinate moves by more than half a pixel otherwise, and equal coordinates of lines of equal width go to the same place, so that frame, grid and ticks meet. Everything else passes unchanged: slanted lines, curves, text, other areas, everything
/// under a transform that turns or shears, paths with a coordinate that is not finite or beyond two thousand million pixels, and lines whose width is not finite and above zero.
///
/// The target is not owned and has to be in its initial state: the origin of its coordinates is the lower-left corner of a pixel. Only what is drawn through this object is known to it.
class TOLV_EXPORT PixelAlignedContext final : public ForwardingContext {
public:
    /// The target has to outlive this object. Any ratio: 1, 1.25, 1.5, 2, ... With one that is not finite and above zero everything passes unchanged.
    PixelAlignedContext(DrawingContext& target, double pixelsPerPoint);

    /// As it was given.
    [[nodiscard]] double pixelsPerPoint() const { return m_pixelsPerPoint; }

    void saveState() override;
    void restoreState() override;
    void concatenateTransform(const AffineTransform& transform) override;
    void clipToPath(const Path& path, FillRule rule) override;
    void setStrokeColor(const std::optional<Color>& color) override;
    void setLineWidth(double width) override;
    void setLineCap(LineCap cap) override;
    void drawFilledPath(const Path& path, FillRule rule) override;
    void drawStrokedPath(const Path& path) override;
    void drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places) override;
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override;
    /// Known for every rectangle with an area that goes to the grid, while all clips were rectangles that did.
    [[nodiscard]] std::optional<Rect> wholePixelsOfFill(const Rect& rect) const override;
    [[nodiscard]] Rect fillOfWholePixels(const Rect& pixels) const override;

private:
    /// The part of the state that decides where lines go.
    struct State {
        /// To pixels, y growing upwards.
        AffineTransform toPixels;
        std::optional<Color> strokeColor;
        double lineWidth = 1.0;
        LineCap cap = LineCap::Butt;
        bool isClippedToWholePixels = true;
    };

    double m_pixelsPerPoint;
    State m_state;
    std::vector<State> m_saved;
};

} // namespace TOLVGraphing
