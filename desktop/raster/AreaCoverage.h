#pragma once

#include "UnionCoverage.h"

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace TOLVGraphing::raster {

/// How much of each pixel lies between a line that goes in one direction of x and a level base, above the base and below it. The areas are exact to a level of 255.
///
/// What is kept of a column are second differences of the coverage from row to row: a segment changes a few of them, however high it is. The time grows with the line's points and with the pixels.
class AreaCoverage {
public:
    /// Only the box is computed; one without pixels, or wider or higher than 32,767, stays uncovered. The line and the base are in device units and finite.
    AreaCoverage(const PixelBox& box, std::span<const Point> line, double base);

    /// Hands out the coverage in strips from left to right that do not overlap; what lies outside of all strips is not covered. The pixels hold until the function returns.
    void forEachStrip(const std::function<void(const CoverageStrip&)>& paint);

private:
    static constexpr int kStripWidth = 64;

    /// The line's points from left to right, counted from the box's corner.
    [[nodiscard]] Point pointAt(std::size_t index) const;
    void addSegmentsOfColumn(double left);
    /// A straight part of the line within the column that does not cross the base.
    void addPart(Point from, Point to);
    void addEdge(double fromRow, double toRow, double share);
    void addStep(double place, double share);
    void addBend(double place, double slope);
    void touch(int row);
    void moveCoverageTo(std::uint8_t* top);

    PixelBox m_box;
    std::span<const Point> m_line;
    double m_base;
    bool m_goesLeft = false;
    /// The first segment that the column at hand, or a later one, has a part of.
    std::size_t m_segment = 0;
    std::vector<double> m_steps;
    std::vector<double> m_bends;
    int m_firstRow = 0;
    int m_endRow = 0;
    std::vector<std::uint8_t> m_strip;
};

} // namespace TOLVGraphing::raster
