#pragma once

#include "PolygonSink.h"

#include "TOLVGraphing/platform/graphics/DrawingContext.h"

#include <cstddef>
#include <span>
#include <vector>

namespace TOLVGraphing::raster {

/// How lines are stroked, in device units. Ends are butt: they stop at the line's last point.
struct StrokeStyle {
    double width = 1.0;
    LineJoin join = LineJoin::Miter;
    /// A mitre longer than this many widths becomes a bevel, as in DrawingContext::setMiterLimit.
    double miterLimit = 10.0;
    /// Painted and unpainted lengths in turn, an even number, none below zero and not all zero; empty means solid. The phase is where in the pattern the line starts.
    LineDash dash;
};

/// Makes the outlines of stroked polylines out of convex polygons: one for every segment, and one more for a corner that the segments leave open.
/// Where a line turns only a little its segments share their corners, so that a smooth curve has few polygons that overlap.
class PolylineStroker {
public:
    /// Adds to a coverage, which has to outlive the stroker. A width that is not above zero or not finite adds nothing.
    PolylineStroker(PolygonSink& coverage, StrokeStyle style);
    /// For lines that are taken.
    explicit PolylineStroker(StrokeStyle style);

    /// Strokes an open line; the dash starts anew. Points closer to the one before than 1/256 pixel are left out, and what is left with one point has no stroke.
    /// A line with a point that is NaN or farther than 1e9 from the origin is left out.
    void strokeLine(std::span<const Point> points);

    /// The same in two steps, for a line whose x ascends, and without the dash: the line is taken, and then any number of threads may add what of it may lie between two places
    /// along x to coverages of their own.
    void takeLine(std::span<const Point> points);
    void strokeBetween(PolygonSink& coverage, double left, double right) const;

private:
    /// A straight part of the line: `direction` has length 1.
    struct Segment {
        Point from;
        Point to;
        Point direction;
        double length = 0.0;
    };

    void collectSegments(std::span<const Point> points);
    void addSegments(std::span<const Point> points);
    /// The same, without points that lie on the way between others.
    void addLongSegments(std::span<const Point> points);
    void addSegment(Point from, Point to);
    void strokeDashes();
    /// The segments from `first` to before `end`, with the corners at their ends when there is a next one.
    void strokeSegments(PolygonSink& coverage, std::span<const Segment> segments, std::size_t first, std::size_t end) const;
    /// How far the end of a segment's right side is from the line's corner when the two segments there share their corners; nothing when they cannot.
    bool sharesCorner(const Segment& before, const Segment& after, Point& offset) const;
    void addJoin(PolygonSink& coverage, const Segment& before, const Segment& after) const;
    void addFan(PolygonSink& coverage, Point corner, Point from, double angle) const;

    PolygonSink* m_coverage = nullptr;
    StrokeStyle m_style;
    double m_reach;
    std::vector<Segment> m_segments;
    std::vector<Segment> m_dash;
};

} // namespace TOLVGraphing::raster
