#include "UnionCoverage.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::raster {

namespace {

constexpr int kLargestSide = 32767;
/// Strips as wide as this stay in the processor's cache.
constexpr int kStripWidth = 16 * CoverageBlock::kColumns;
/// Polygons that reach farther from the origin are left out.
constexpr double kFarthest = 1e9;
/// Thinner parts of polygons are left out: their sides have no slope to speak of.
constexpr double kThinnest = 1e-6;
constexpr double kClosestCuts = 1.0 / 256.0;
constexpr double kWidestCuts = 1.0 / 8.0;
/// Columns with fewer trapezoids than this have cuts as close as can be.
constexpr double kFewTrapezoids = 32.0;
/// Sides that change their order by fewer rows than this do not cause another cut.
constexpr double kSmallCrossing = 1.0 / 32.0;
constexpr int kMostCrossings = 8;
constexpr std::size_t kFewSpans = 16;

} // namespace

struct UnionCoverage::Side {
    Point from;
    Point to;

    double slope() const { return (to.y - from.y) / (to.x - from.x); }
    double rowAt(double x) const { return from.y + (x - from.x) * slope(); }
};

void UnionCoverage::begin(const PixelBox& box)
{
    const bool isUsable = !box.isEmpty() && box.width <= kLargestSide && box.height <= kLargestSide;
    m_box = isUsable ? box : PixelBox();
    m_trapezoids.clear();
}

std::size_t UnionCoverage::keptBytes() const
{
    return m_trapezoids.capacity() * sizeof(Trapezoid) + (m_order.capacity() + m_starts.capacity()) * sizeof(std::uint32_t) + m_strip.capacity();
}

void UnionCoverage::addConvexPolygon(std::span<const Point> corners)
{
    if (corners.size() < 3 || m_box.isEmpty())
        return;
    std::size_t first = 0;
    std::size_t last = 0;
    double top = corners[0].y;
    double bottom = corners[0].y;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (!(std::abs(corners[i].x) <= kFarthest) || !(std::abs(corners[i].y) <= kFarthest))
            return;
        first = corners[i].x < corners[first].x ? i : first;
        last = corners[i].x > corners[last].x ? i : last;
        top = std::min(top, corners[i].y);
        bottom = std::max(bottom, corners[i].y);
    }
    const bool isOutside = corners[last].x <= m_box.left || corners[first].x >= m_box.left + m_box.width || bottom <= m_box.top || top >= m_box.top + m_box.height;
    if (isOutside)
        return;
    // From the left-most corner one side goes round forwards, the other backwards, until both have come to the right-most.
    const std::size_t count = corners.size();
    const auto corner = [&](std::size_t index) { return Point{corners[index].x - m_box.left, corners[index].y - m_box.top}; };
    std::size_t forward = first;
    std::size_t backward = first;
    Side one{corner(first), corner(first)};
    Side other = one;
    double x = one.from.x;
    const double end = corner(last).x;
    while (x < end) {
        while (one.to.x <= x && forward != last) {
            forward = forward + 1 == count ? 0 : forward + 1;
            one = {one.to, corner(forward)};
        }
        while (other.to.x <= x && backward != last) {
            backward = backward == 0 ? count - 1 : backward - 1;
            other = {other.to, corner(backward)};
        }
        const double next = std::min(one.to.x, other.to.x);
        if (next <= x)
            return;
        addTrapezoid(x, next, one, other);
        x = next;
    }
}

void UnionCoverage::addTrapezoid(double from, double to, const Side& side, const Side& other)
{
    if (to - from < kThinnest || to <= 0.0 || from >= m_box.width)
        return;
    const double middle = 0.5 * (from + to);
    const bool isAbove = side.rowAt(middle) <= other.rowAt(middle);
    const Side& upper = isAbove ? side : other;
    const Side& lower = isAbove ? other : side;
    m_trapezoids.push_back({std::max(from, 0.0), std::min(to, static_cast<double>(m_box.width)), upper.rowAt(0.0), upper.slope(), lower.rowAt(0.0), lower.slope()});
}

void UnionCoverage::forEachStrip(const std::function<void(const CoverageStrip&)>& paint)
{
    if (m_trapezoids.empty())
        return;
    sortByColumn();
    m_active.clear();
    CoverageBlock block(m_box.height);
    m_strip.assign(static_cast<std::size_t>(kStripWidth) * static_cast<std::size_t>(m_box.height), 0);
    for (int left = 0; left < m_box.width; left += kStripWidth) {
        const int width = std::min(kStripWidth, m_box.width - left);
        int top = m_box.height;
        int bottom = 0;
        for (int start = 0; start < width; start += CoverageBlock::kColumns) {
            for (int i = 0; i < std::min(CoverageBlock::kColumns, width - start); ++i)
                coverColumn(left + start + i, block);
            if (block.firstRow() < block.endRow()) {
                top = std::min(top, block.firstRow());
                bottom = std::max(bottom, block.endRow());
            }
            block.moveCoverageTo(m_strip.data() + start, kStripWidth);
        }
        if (top >= bottom)
            continue;
        std::uint8_t* corner = m_strip.data() + static_cast<std::ptrdiff_t>(top) * kStripWidth;
        paint({{m_box.left + left, m_box.top + top, width, bottom - top}, corner, kStripWidth});
        std::fill_n(corner, static_cast<std::ptrdiff_t>(bottom - top) * kStripWidth, std::uint8_t{0});
    }
}

void UnionCoverage::sortByColumn()
{
    const auto columnOf = [](const Trapezoid& trapezoid) { return static_cast<std::size_t>(trapezoid.from); };
    m_starts.assign(static_cast<std::size_t>(m_box.width) + 2, 0);
    for (const Trapezoid& trapezoid : m_trapezoids)
        ++m_starts[columnOf(trapezoid) + 2];
    for (std::size_t i = 2; i < m_starts.size(); ++i)
        m_starts[i] += m_starts[i - 1];
    m_order.resize(m_trapezoids.size());
    for (std::size_t i = 0; i < m_trapezoids.size(); ++i)
        m_order[m_starts[columnOf(m_trapezoids[i]) + 1]++] = static_cast<std::uint32_t>(i);
}

void UnionCoverage::coverColumn(int column, CoverageBlock& block)
{
    enterColumn(column);
    if (m_current.empty())
        return;
    dropHidden();
    findCuts();
    m_closestCuts = std::clamp(kClosestCuts * static_cast<double>(m_current.size()) / kFewTrapezoids, kClosestCuts, kWidestCuts);
    double from = 0.0;
    for (const double cut : m_cuts) {
        if (cut - from < m_closestCuts || 1.0 - cut < m_closestCuts)
            continue;
        coverSlice(column, from, cut, 0, block);
        from = cut;
    }
    coverSlice(column, from, 1.0, 0, block);
}

void UnionCoverage::enterColumn(int column)
{
    const double left = column;
    std::erase_if(m_active, [&](std::uint32_t index) { return m_trapezoids[index].to <= left; });
    const auto index = static_cast<std::size_t>(column);
    m_active.insert(m_active.end(), m_order.begin() + m_starts[index], m_order.begin() + m_starts[index + 1]);
    m_current.clear();
    for (const std::uint32_t active : m_active) {
        const Trapezoid& trapezoid = m_trapezoids[active];
        m_current.push_back({std::max(trapezoid.from - left, 0.0), std::min(trapezoid.to - left, 1.0), trapezoid.upperAt(left), trapezoid.upperSlope, trapezoid.lowerAt(left),
            trapezoid.lowerSlope});
    }
}

void UnionCoverage::dropHidden()
{
    double top = 0.0;
    double bottom = 0.0;
    const Trapezoid* widest = nullptr;
    for (const Trapezoid& trapezoid : m_current) {
        if (trapezoid.from > 0.0 || trapezoid.to < 1.0)
            continue;
        const double inner = std::max(trapezoid.upperAt(0.0), trapezoid.upperAt(1.0));
        const double outer = std::min(trapezoid.lowerAt(0.0), trapezoid.lowerAt(1.0));
        if (outer - inner > bottom - top) {
            top = inner;
            bottom = outer;
            widest = &trapezoid;
        }
    }
    if (!widest)
        return;
    // Elements are judged where they stand, so the address tells the one in front.
    std::erase_if(m_current, [&](const Trapezoid& trapezoid) {
        return &trapezoid != widest && std::min(trapezoid.upperAt(trapezoid.from), trapezoid.upperAt(trapezoid.to)) >= top
            && std::max(trapezoid.lowerAt(trapezoid.from), trapezoid.lowerAt(trapezoid.to)) <= bottom;
    });
}

void UnionCoverage::findCuts()
{
    m_cuts.clear();
    for (const Trapezoid& trapezoid : m_current) {
        if (trapezoid.from > 0.0)
            m_cuts.push_back(trapezoid.from);
        if (trapezoid.to < 1.0)
            m_cuts.push_back(trapezoid.to);
    }
    std::sort(m_cuts.begin(), m_cuts.end());
    // Spans are sorted in every slice, which is quick when they come nearly sorted.
    if (m_current.size() > kFewSpans)
        std::sort(m_current.begin(), m_current.end(), [](const Trapezoid& a, const Trapezoid& b) { return a.upperAt(a.middle()) < b.upperAt(b.middle()); });
}

void UnionCoverage::coverSlice(int column, double from, double to, int depth, CoverageBlock& block)
{
    collectSpans(from, to);
    if (m_spans.empty())
        return;
    const double crossing = joinSpans();
    const double cut = from + crossing * (to - from);
    if (depth < kMostCrossings && cut - from >= m_closestCuts && to - cut >= m_closestCuts) {
        coverSlice(column, from, cut, depth + 1, block);
        coverSlice(column, cut, to, depth + 1, block);
        return;
    }
    const int place = column % CoverageBlock::kColumns;
    const auto share = static_cast<std::int32_t>(to * CoverageBlock::kFullShare) - static_cast<std::int32_t>(from * CoverageBlock::kFullShare);
    for (std::size_t i = 0; i < m_joined; ++i) {
        block.addEdge(place, m_spans[i].upperLeft, m_spans[i].upperRight, share);
        block.addEdge(place, m_spans[i].lowerLeft, m_spans[i].lowerRight, -share);
    }
}

void UnionCoverage::collectSpans(double from, double to)
{
    m_spans.clear();
    const double middle = 0.5 * (from + to);
    // First the indices alone and without a branch, which no processor would foresee.
    m_hits.resize(m_current.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < m_current.size(); ++i) {
        m_hits[count] = static_cast<std::uint32_t>(i);
        count += static_cast<std::size_t>(m_current[i].from <= middle) & static_cast<std::size_t>(m_current[i].to >= middle);
    }
    for (const std::uint32_t hit : std::span(m_hits).first(count)) {
        const Trapezoid& trapezoid = m_current[hit];
        // A side that ends within the slice keeps the row that it has there.
        const double left = std::max(from, trapezoid.from);
        const double right = std::min(to, trapezoid.to);
        const Span span{trapezoid.upperAt(left), trapezoid.upperAt(right), trapezoid.lowerAt(left), trapezoid.lowerAt(right)};
        std::size_t place = m_spans.size();
        m_spans.push_back(span);
        for (; place > 0 && m_spans[place - 1].beginsBelow(span); --place)
            m_spans[place] = m_spans[place - 1];
        m_spans[place] = span;
    }
}

double UnionCoverage::joinSpans()
{
    // How far two sides are apart at both ends of the slice; they cross where it changes its sign.
    struct Distance {
        double left;
        double right;

        bool changesSign() const { return std::min(left, right) < -kSmallCrossing && std::max(left, right) > kSmallCrossing; }
        double crossing() const { return left / (left - right); }
    };
    m_joined = 0;
    double crossing = 0.0;
    const auto note = [&](const Distance& distance) { crossing = crossing == 0.0 && distance.changesSign() ? distance.crossing() : crossing; };
    for (std::size_t i = 1; i < m_spans.size(); ++i) {
        const Span next = m_spans[i];
        Span& current = m_spans[m_joined];
        const Distance gap{next.upperLeft - current.lowerLeft, next.upperRight - current.lowerRight};
        note(gap);
        if (gap.left + gap.right > 0.0) {
            // Where a crossing is too small for a cut, the corner that would count twice is taken off.
            const double left = std::max(next.upperLeft, current.lowerLeft);
            const double right = std::max(next.upperRight, current.lowerRight);
            m_spans[++m_joined] = {left, right, std::max(next.lowerLeft, left), std::max(next.lowerRight, right)};
            continue;
        }
        const Distance upper{next.upperLeft - current.upperLeft, next.upperRight - current.upperRight};
        const Distance lower{next.lowerLeft - current.lowerLeft, next.lowerRight - current.lowerRight};
        note(upper);
        note(lower);
        if (lower.left + lower.right > 0.0) {
            current.lowerLeft = next.lowerLeft;
            current.lowerRight = next.lowerRight;
        }
    }
    ++m_joined;
    return crossing;
}

} // namespace TOLVGraphing::raster
