#pragma once

#include "CoverageBlock.h"
#include "PolygonSink.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace TOLVGraphing::raster {

/// Whole pixels of a device, y growing downwards.
struct PixelBox {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }

    friend bool operator==(const PixelBox&, const PixelBox&) = default;
};

/// Coverage of the pixels in a box, 0 to 255: row `y` of the box is at `coverage + y * stride`.
struct CoverageStrip {
    PixelBox box;
    const std::uint8_t* coverage = nullptr;
    std::ptrdiff_t stride = 0;
};

/// How much of each pixel a set of convex polygons covers together: where they overlap nothing counts twice.
///
/// Every pixel column is cut at the polygons' corners and where their sides cross, so that between two cuts each polygon is a trapezoid and all of them are sorted from top to bottom;
/// their joined areas are exact. Cuts are at least 1/256 pixel apart, more in a column that hundreds of polygons share. The time grows with the polygons in a column, not with their height,
/// which suits the stroke of a curve.
class UnionCoverage final : public PolygonSink {
public:
    UnionCoverage() = default;
    /// Begins with this box.
    explicit UnionCoverage(const PixelBox& box) { begin(box); }

    /// Forgets all polygons, and keeps the memory. Only the box is computed; one without pixels, or wider or higher than 32,767, stays uncovered.
    void begin(const PixelBox& box);
    /// About how many bytes of memory are kept.
    [[nodiscard]] std::size_t keptBytes() const;

    void addConvexPolygon(std::span<const Point> corners) override;

    /// Hands out the coverage in strips from left to right that do not overlap; what lies outside of all strips is not covered. The pixels hold until the function returns.
    void forEachStrip(const std::function<void(const CoverageStrip&)>& paint);

private:
    /// A part of a polygon between two upright lines, relative to the box. Rows are those where x is 0, slopes are rows to a pixel.
    struct Trapezoid {
        double from = 0.0;
        double to = 0.0;
        double upper = 0.0;
        double upperSlope = 0.0;
        double lower = 0.0;
        double lowerSlope = 0.0;

        double middle() const { return 0.5 * (from + to); }
        double upperAt(double x) const { return upper + x * upperSlope; }
        double lowerAt(double x) const { return lower + x * lowerSlope; }
    };

    /// The rows between a trapezoid's sides at both ends of a slice of a column.
    struct Span {
        double upperLeft = 0.0;
        double upperRight = 0.0;
        double lowerLeft = 0.0;
        double lowerRight = 0.0;

        bool beginsBelow(const Span& other) const { return upperLeft + upperRight > other.upperLeft + other.upperRight; }
    };

    /// The corner where one side of a polygon is, on its way from the left-most corner to the right-most.
    struct Side;

    void addTrapezoid(double from, double to, const Side& side, const Side& other);
    void sortByColumn();
    void coverColumn(int column, CoverageBlock& block);
    void enterColumn(int column);
    /// Drops trapezoids of the column that lie behind one that is as wide as the column.
    void dropHidden();
    void findCuts();
    /// Covers the slice of the column between two cuts and cuts it once more where sides cross; `depth` counts these cuts.
    void coverSlice(int column, double from, double to, int depth, CoverageBlock& block);
    void collectSpans(double from, double to);
    /// Joins the spans, sorted from top to bottom, that touch. Returns a place between 0 and 1 where two sides cross, which would have to be a cut; 0 when there is none.
    double joinSpans();

    PixelBox m_box;
    std::vector<Trapezoid> m_trapezoids;
    std::vector<std::uint8_t> m_strip;
    /// The trapezoids' indices by the column that they start in, and where each column's begin.
    std::vector<std::uint32_t> m_order;
    std::vector<std::uint32_t> m_starts;
    /// Those of the column being covered, relative to its left edge.
    std::vector<Trapezoid> m_current;
    std::vector<std::uint32_t> m_active;
    std::vector<double> m_cuts;
    double m_closestCuts = 0.0;
    /// The current trapezoids that a slice goes through.
    std::vector<std::uint32_t> m_hits;
    std::vector<Span> m_spans;
    std::size_t m_joined = 0;
};

} // namespace TOLVGraphing::raster
