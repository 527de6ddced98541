#pragma once

#include "../platform/geometry/Point.h"
#include "../platform/geometry/Rect.h"

#include <span>
#include <vector>

namespace TOLVGraphing {

class TOLVLineStyle;

// The shapes of a line graph: dots at the samples, the line through them and the area under it. Coordinates are points, y growing upwards. Everything is drawn into the current context, whose state
// is as before afterwards; nothing happens without one. A style that is null has no colour. Points and rectangles that are not finite are passed over.

/// The outer size of a data dot in points, before its inset of half a point.
inline constexpr double kDataPointDiameter = 7.0;

/// The square of 6 points that a sample's dot is drawn in, centred on the point.
[[nodiscard]] Rect dataDotRectForPoint(Point point);
/// The squares of all points, in the same order.
[[nodiscard]] std::vector<Rect> dataDotRects(std::span<const Point> points);

/// A white dot with a ring of 2 points in the style's colour. Nothing is drawn when the style has no colour.
void drawDot(const Rect& rect, const TOLVLineStyle* withLineStyle);
/// The dots of all rectangles as one path, otherwise as `drawDot`: first the insides, then the rings, so that no dot covers the ring of another. Many dots of an opaque colour are painted as several paths, which look the same;
/// 2,048 of one size and more, in a context that draws repeats quickly, one by one at the nearest quarters of a point: all insides first, too.
void drawDataDots(std::span<const Rect> rects, const TOLVLineStyle* withLineStyle);
/// The line from point to point with the style's dash, width and colour; without a style with the context's own. No points, no line.
void strokePoints(std::span<const Point> points, const TOLVLineStyle* withLineStyle);
/// Fills the area between the line and the lower edge of the rectangle with a twentieth of the style's colour; nothing when the style has no colour. No points, no area.
void fillUnderPoints(std::span<const Point> points, const Rect& inRect, const TOLVLineStyle* withLineStyle);

} // namespace TOLVGraphing
