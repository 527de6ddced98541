#pragma once

#include "../geometry/AffineTransform.h"
#include "../geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing {

class TOLVLineStyle;

/// Which points count as inside a path that crosses itself.
enum class FillRule : std::uint8_t {
    NonZero, ///< those that the path winds around, turns in opposite directions cancelling out
    EvenOdd, ///< those from which a ray crosses the path an odd number of times
};

/// A dash pattern: painted length, gap, painted length, gap, ... in points, starting `phase` points into the pattern. Empty means solid, as does a pattern with a length that is negative or not finite, or with none above 0. An odd number of
/// lengths is gone through twice, so that what was painted is a gap the second time.
struct LineDash {
    /// In points.
    std::vector<double> lengths;
    /// Where in the pattern a line starts, in points: any number, 0 where it is not finite.
    double phase = 0.0;

    friend bool operator==(const LineDash&, const LineDash&) = default;
};

/// A path of straight and cubic segments in the coordinates of whatever it is drawn into. A value: copies are independent. Any numbers will do: points are kept as they are given, and contexts skip elements with coordinates that are not finite.
///
/// A path may carry a line width and a dash of its own, which then hold for its own `stroke()` in place of the context's.
class TOLV_EXPORT Path {
public:
    /// The kinds of elements.
    enum class Verb : std::uint8_t {
        Move,  ///< starts a subpath at a point
        Line,  ///< goes straight to a point
        Curve, ///< goes to a point along a cubic Bezier segment
        Close, ///< goes straight back to where the subpath started
    };

    /// Without elements, width and dash.
    Path() = default;

    /// A rectangle, counter-clockwise from its origin where y grows upwards, closed. A negative size runs the other way.
    [[nodiscard]] static Path pathWithRect(const Rect& rect);
    /// A rectangle with rounded corners (radii in points); the radii are limited to half the width and half the height, from above only: callers pass none below 0 and no negative size.
    [[nodiscard]] static Path pathWithRoundedRect(const Rect& rect, double xRadius, double yRadius);
    /// The ellipse that touches the rectangle's sides, of four cubic segments, closed.
    [[nodiscard]] static Path pathWithOvalInRect(const Rect& rect);

    // Building. Each operation takes an optional transform that is applied to its points first (null means none).

    /// Starts a subpath at the point.
    void moveToX(double x, double y, const AffineTransform* withTransform = nullptr);
    /// A line from the current point; on an empty path it acts as a move.
    void addLineToX(double x, double y, const AffineTransform* withTransform = nullptr);
    /// The same operations with a point.
    void moveToPoint(Point point, const AffineTransform* withTransform = nullptr);
    void addLineToPoint(Point point, const AffineTransform* withTransform = nullptr);
    /// A cubic Bezier segment with two control points; on an empty path it starts at its first control point.
    void addCurveToPoint(Point end, Point control1, Point control2, const AffineTransform* withTransform = nullptr);
    /// Closes the subpath with a line to where it started, from where the path goes on; does nothing on an empty path.
    void closeSubpath();
    /// Appends a rectangle as `pathWithRect` makes it.
    void addRect(const Rect& rect, const AffineTransform* withTransform = nullptr);
    /// Appends all elements of the other path; its width and dash are not taken over.
    void addPath(const Path& path, const AffineTransform* withTransform = nullptr);
    /// Applies the transform to every point.
    void transformUsingAffineTransform(const AffineTransform& transform);
    /// Removes all elements and keeps the memory.
    void removeAllPoints();
    /// Makes room for this many line or move elements. Throws what std::vector does for more than there can be.
    void reserve(std::size_t elements);

    // Reading.

    /// True when there are no elements.
    [[nodiscard]] bool isEmpty() const { return m_verbs.empty(); }
    /// The elements' kinds in order; valid until the path changes. The first one is always a move.
    [[nodiscard]] std::span<const Verb> verbs() const { return m_verbs; }
    /// The elements' points in order: one for a move or a line, three for a curve (control 1, control 2, end), none for a close. Valid until the path changes.
    [[nodiscard]] std::span<const Point> points() const { return m_points; }
    /// The smallest rectangle around the drawn shape itself (not around control points, not widened by the line). An empty path gives the zero rectangle. Coordinates that are NaN are passed
    /// over unless they are the first point's.
    [[nodiscard]] Rect bounds() const;

    // The path's own stroke settings.

    /// The path's own line width in points, or nothing when the context's holds.
    [[nodiscard]] std::optional<double> lineWidth() const { return m_lineWidth; }
    void setLineWidth(std::optional<double> width) { m_lineWidth = width; }
    /// The path's own dash, or nothing when the context's holds.
    [[nodiscard]] const std::optional<LineDash>& lineDash() const { return m_lineDash; }
    void setLineDash(std::optional<LineDash> dash) { m_lineDash = std::move(dash); }
    /// Takes the style's dash pattern with phase 0. A style without a pattern, or none at all, makes the path solid. The width is not touched.
    /// Defined with the line style, which lies above this folder.
    void setLineDashStyle(const TOLVLineStyle* style);

    // Drawing into the current context; nothing happens without one.

    /// Fills with the current fill colour, non-zero rule.
    void fill() const;
    /// Strokes with the current stroke colour and the path's own width and dash where it has them. The context's settings are as before afterwards.
    void stroke() const;
    /// Intersects the clip with this path, non-zero rule.
    void addClip() const;

    friend bool operator==(const Path&, const Path&) = default;

private:
    std::vector<Verb> m_verbs;
    std::vector<Point> m_points;
    std::optional<double> m_lineWidth;
    std::optional<LineDash> m_lineDash;
};

/// "M x y L x y C x1 y1 x2 y2 x y Z", digits as shortestText gives them.
[[nodiscard]] TOLV_EXPORT std::string toString(const Path& path);

} // namespace TOLVGraphing
