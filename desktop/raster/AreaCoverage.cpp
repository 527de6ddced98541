#include "AreaCoverage.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::raster {

namespace {

constexpr int kLargestSide = 32767;
/// A bend changes three rows.
constexpr std::size_t kRowsBelow = 3;
/// An edge that crosses fewer rows than this counts as level at its middle.
constexpr double kLevel = 1.0 / 256.0;

double rowAt(Point from, Point to, double x)
{
    return from.y + (to.y - from.y) * ((x - from.x) / (to.x - from.x));
}

} // namespace

AreaCoverage::AreaCoverage(const PixelBox& box, std::span<const Point> line, double base) : m_line(line), m_base(base - box.top)
{
    const bool isUsable = !box.isEmpty() && box.width <= kLargestSide && box.height <= kLargestSide && !line.empty();
    m_box = isUsable ? box : PixelBox();
    m_goesLeft = !line.empty() && line.front().x > line.back().x;
    m_steps.assign(static_cast<std::size_t>(m_box.height) + kRowsBelow, 0.0);
    m_bends = m_steps;
    m_firstRow = m_box.height;
}

void AreaCoverage::forEachStrip(const std::function<void(const CoverageStrip&)>& paint)
{
    m_segment = 0;
    m_strip.assign(static_cast<std::size_t>(kStripWidth) * static_cast<std::size_t>(m_box.height), 0);
    for (int left = 0; left < m_box.width; left += kStripWidth) {
        const int width = std::min(kStripWidth, m_box.width - left);
        int top = m_box.height;
        int bottom = 0;
        for (int i = 0; i < width; ++i) {
            addSegmentsOfColumn(left + i);
            top = std::min(top, m_firstRow);
            bottom = std::max(bottom, m_endRow);
            moveCoverageTo(m_strip.data() + i);
        }
        if (top >= bottom)
            continue;
        std::uint8_t* corner = m_strip.data() + static_cast<std::ptrdiff_t>(top) * kStripWidth;
        paint({{m_box.left + left, m_box.top + top, width, bottom - top}, corner, kStripWidth});
        std::fill_n(corner, static_cast<std::ptrdiff_t>(bottom - top) * kStripWidth, std::uint8_t{0});
    }
}

Point AreaCoverage::pointAt(std::size_t index) const
{
    const Point& point = m_line[m_goesLeft ? m_line.size() - 1 - index : index];
    return {point.x - m_box.left, point.y - m_box.top};
}

void AreaCoverage::addSegmentsOfColumn(double left)
{
    const double right = left + 1.0;
    for (std::size_t i = m_segment; i + 1 < m_line.size(); ++i) {
        const Point from = pointAt(i);
        const Point to = pointAt(i + 1);
        if (from.x >= right)
            return;
        if (to.x <= right)
            m_segment = i + 1;
        if (to.x <= left || to.x <= from.x)
            continue;
        const Point begin = from.x < left ? Point{left, rowAt(from, to, left)} : from;
        const Point end = to.x > right ? Point{right, rowAt(from, to, right)} : to;
        if ((begin.y < m_base) == (end.y < m_base)) {
            addPart(begin, end);
            continue;
        }
        const double x = std::clamp(begin.x + (end.x - begin.x) * ((m_base - begin.y) / (end.y - begin.y)), begin.x, end.x);
        addPart(begin, {x, m_base});
        addPart({x, m_base}, end);
    }
}

void AreaCoverage::addPart(Point from, Point to)
{
    const double share = from.y + to.y <= 2.0 * m_base ? to.x - from.x : from.x - to.x;
    addEdge(from.y, to.y, share);
    addEdge(m_base, m_base, -share);
}

void AreaCoverage::addEdge(double fromRow, double toRow, double share)
{
    const double upper = std::min(fromRow, toRow);
    const double lower = std::max(fromRow, toRow);
    if (lower - upper < kLevel || lower <= 0.0) {
        addStep(0.5 * (upper + lower), share);
        return;
    }
    const double slope = share / (lower - upper);
    if (upper < 0.0)
        addStep(0.0, -upper * slope);
    addBend(std::max(upper, 0.0), slope);
    addBend(lower, -slope);
}

void AreaCoverage::addStep(double place, double share)
{
    const double inside = std::max(place, 0.0);
    if (inside >= m_box.height) {
        m_endRow = m_box.height;
        return;
    }
    const auto row = static_cast<int>(inside);
    const double first = share * (row + 1 - inside);
    double* at = m_steps.data() + row;
    at[0] += first;
    at[1] += share - first;
    touch(row);
}

void AreaCoverage::addBend(double place, double slope)
{
    if (place >= m_box.height) {
        m_endRow = m_box.height;
        return;
    }
    const auto row = static_cast<int>(place);
    const double below = row + 1 - place;
    const double above = 1.0 - below;
    const double first = 0.5 * slope * below * below;
    const double third = 0.5 * slope * above * above;
    double* at = m_bends.data() + row;
    at[0] += first;
    at[1] += slope - first - third;
    at[2] += third;
    touch(row);
}

void AreaCoverage::touch(int row)
{
    m_firstRow = std::min(m_firstRow, row);
    m_endRow = std::max(m_endRow, std::min(row + static_cast<int>(kRowsBelow), m_box.height));
}

void AreaCoverage::moveCoverageTo(std::uint8_t* top)
{
    double coverage = 0.0;
    double slope = 0.0;
    for (int row = m_firstRow; row < m_endRow; ++row) {
        const auto index = static_cast<std::size_t>(row);
        slope += m_bends[index];
        coverage += slope + m_steps[index];
        top[static_cast<std::ptrdiff_t>(row) * kStripWidth] = static_cast<std::uint8_t>(std::clamp(coverage, 0.0, 1.0) * 255.0 + 0.5);
    }
    const auto end = std::min(static_cast<std::size_t>(m_endRow) + kRowsBelow, m_steps.size());
    for (auto index = static_cast<std::size_t>(m_firstRow); index < end; ++index) {
        m_steps[index] = 0.0;
        m_bends[index] = 0.0;
    }
    m_firstRow = m_box.height;
    m_endRow = 0;
}

} // namespace TOLVGraphing::raster
