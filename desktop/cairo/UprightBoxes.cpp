#include "UprightBoxes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace TOLVGraphing::cairo {

namespace {

constexpr std::array kRectangle{Path::Verb::Move, Path::Verb::Line, Path::Verb::Line, Path::Verb::Line, Path::Verb::Close};

/// Half of an eighth of a pixel: Cairo leaves out lines that are much thinner.
constexpr int kThinnestHalf = 16;

struct FixedPoint {
    int x = 0;
    int y = 0;
};

/// Half the width of lines across x and across y.
struct HalfWidths {
    int x = 0;
    int y = 0;
};

FixedPoint fixedPoint(const Point& point, const AffineTransform& toPixels)
{
    const Point pixels = toPixels.apply(point);
    return {fixedFromPixels(pixels.x), fixedFromPixels(pixels.y)};
}

bool keepsDirections(const AffineTransform& transform)
{
    return transform.b == 0.0 && transform.c == 0.0;
}

/// The box around a line from one point to another; nothing when it has no length or is slanted.
std::optional<FixedBox> boxOfLine(const FixedPoint& from, const FixedPoint& to, const HalfWidths& half)
{
    if ((from.x == to.x) == (from.y == to.y))
        return std::nullopt;
    if (from.x == to.x)
        return FixedBox{from.x - half.x, std::min(from.y, to.y), from.x + half.x, std::max(from.y, to.y)};
    return FixedBox{std::min(from.x, to.x), from.y - half.y, std::max(from.x, to.x), from.y + half.y};
}

std::vector<FixedBox> boxesOfRectangle(const FixedBox& rectangle, const HalfWidths& half)
{
    const FixedBox outer{rectangle.left - half.x, rectangle.top - half.y, rectangle.right + half.x, rectangle.bottom + half.y};
    const FixedBox inner{rectangle.left + half.x, rectangle.top + half.y, rectangle.right - half.x, rectangle.bottom - half.y};
    if (inner.left >= inner.right || inner.top >= inner.bottom || !outer.isWholePixels() || !inner.isWholePixels())
        return {};
    return {{outer.left, outer.top, outer.right, inner.top}, {outer.left, inner.top, inner.left, inner.bottom}, {inner.right, inner.top, outer.right, inner.bottom},
        {outer.left, inner.bottom, outer.right, outer.bottom}};
}

/// True when each range of pixels begins where the one before it has ended, or all the other way round.
template <typename Low, typename High>
bool goOneWay(std::span<const FixedBox> boxes, Low low, High high)
{
    const auto isPast = [&](const FixedBox& first, const FixedBox& second) { return low(second.pixels()) >= high(first.pixels()); };
    bool forwards = true;
    bool backwards = true;
    for (std::size_t i = 1; i < boxes.size() && (forwards || backwards); ++i) {
        forwards = forwards && isPast(boxes[i - 1], boxes[i]);
        backwards = backwards && isPast(boxes[i], boxes[i - 1]);
    }
    return forwards || backwards;
}

bool shareNoPixel(std::span<const FixedBox> boxes, bool areLevel)
{
    if (areLevel)
        return goOneWay(
            boxes, [](const PixelRange& range) { return range.top; }, [](const PixelRange& range) { return range.bottom; });
    return goOneWay(
        boxes, [](const PixelRange& range) { return range.left; }, [](const PixelRange& range) { return range.right; });
}

/// The boxes of lines of two points each.
std::vector<FixedBox> boxesOfLines(const Path& path, const AffineTransform& toPixels, const HalfWidths& half)
{
    const std::span<const Path::Verb> verbs = path.verbs();
    const std::span<const Point> points = path.points();
    std::vector<FixedBox> boxes;
    boxes.reserve(verbs.size() / 2);
    bool areLevel = false;
    for (std::size_t i = 0; i + 1 < verbs.size(); i += 2) {
        // Only these two have a point each.
        if (verbs[i] != Path::Verb::Move || verbs[i + 1] != Path::Verb::Line)
            return {};
        const FixedPoint from = fixedPoint(points[i], toPixels);
        const FixedPoint to = fixedPoint(points[i + 1], toPixels);
        const auto box = boxOfLine(from, to, half);
        if (!box || (i > 0 && areLevel != (from.y == to.y)))
            return {};
        areLevel = from.y == to.y;
        boxes.push_back(*box);
    }
    return verbs.size() % 2 == 0 && shareNoPixel(boxes, areLevel) ? boxes : std::vector<FixedBox>();
}

} // namespace

std::optional<FixedBox> boxOfPath(const Path& path, const AffineTransform& toPixels)
{
    if (!std::ranges::equal(path.verbs(), kRectangle) || !keepsDirections(toPixels))
        return std::nullopt;
    const std::span<const Point> corners = path.points();
    const bool beginsLevel = corners[0].y == corners[1].y && corners[1].x == corners[2].x && corners[2].y == corners[3].y && corners[3].x == corners[0].x;
    if (!beginsLevel)
        return std::nullopt;
    const FixedPoint one = fixedPoint(corners[0], toPixels);
    const FixedPoint other = fixedPoint(corners[2], toPixels);
    return FixedBox{std::min(one.x, other.x), std::min(one.y, other.y), std::max(one.x, other.x), std::max(one.y, other.y)};
}

std::vector<FixedBox> boxesOfStroke(const Path& path, const AffineTransform& toPixels, double lineWidth)
{
    if (!keepsDirections(toPixels))
        return {};
    const HalfWidths half{fixedFromPixels(std::abs(toPixels.a) * lineWidth * 0.5), fixedFromPixels(std::abs(toPixels.d) * lineWidth * 0.5)};
    if (std::min(half.x, half.y) < kThinnestHalf)
        return {};
    if (const auto rectangle = boxOfPath(path, toPixels))
        return boxesOfRectangle(*rectangle, half);
    // One look at the beginning spares curves the rest.
    const std::span<const Path::Verb> verbs = path.verbs();
    if (verbs.size() > 2 && verbs[2] != Path::Verb::Move)
        return {};
    return boxesOfLines(path, toPixels, half);
}

} // namespace TOLVGraphing::cairo
