#include "DrawingContext.h"

#include "GraphicsStateSaver.h"

#include <utility>

namespace TOLVGraphing {

namespace {

/// The path moved to each place in turn.
template <typename Draw>
void drawAtPlaces(const Path& path, std::span<const Point> places, Draw draw)
{
    for (const Point& place : places) {
        const AffineTransform move{1.0, 0.0, 0.0, 1.0, place.x, place.y};
        Path moved = path;
        moved.transformUsingAffineTransform(move);
        draw(moved);
    }
}

} // namespace

DrawingContext::~DrawingContext() = default;

bool DrawingContext::drawsRepeatsQuickly() const
{
    return false;
}

void DrawingContext::drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places)
{
    drawAtPlaces(path, places, [&](const Path& moved) { drawFilledPath(moved, rule); });
}

void DrawingContext::drawStrokedRepeats(const Path& path, std::span<const Point> places)
{
    drawAtPlaces(path, places, [&](const Path& moved) { drawStrokedPath(moved); });
}

std::optional<Rect> DrawingContext::wholePixelsOfFill(const Rect&) const
{
    return std::nullopt;
}

Rect DrawingContext::fillOfWholePixels(const Rect& pixels) const
{
    return pixels;
}

void DrawingContext::inIsolatedContext(const std::function<void(DrawingContext&)>& drawing)
{
    const GraphicsStateSaver saver(*this);
    drawing(*this);
}

void DrawingContext::addPath(const Path& path)
{
    m_currentPath.addPath(path);
}

void DrawingContext::addRect(const Rect& rect)
{
    m_currentPath.addRect(rect);
}

void DrawingContext::clip()
{
    clipToPath(std::exchange(m_currentPath, {}), FillRule::NonZero);
}

void DrawingContext::EOClip()
{
    clipToPath(std::exchange(m_currentPath, {}), FillRule::EvenOdd);
}

void DrawingContext::strokePath()
{
    drawStrokedPath(std::exchange(m_currentPath, {}));
}

void DrawingContext::fillPath()
{
    drawFilledPath(std::exchange(m_currentPath, {}), FillRule::NonZero);
}

void DrawingContext::EOFillPath()
{
    drawFilledPath(std::exchange(m_currentPath, {}), FillRule::EvenOdd);
}

void DrawingContext::fillRect(const Rect& rect)
{
    drawFilledPath(Path::pathWithRect(rect), FillRule::NonZero);
}

void DrawingContext::fill(const Rect& rect, const std::optional<Color>& withColor)
{
    if (withColor)
        setFillColor(withColor);
    fillRect(rect);
}

void DrawingContext::fill(const Path* path, const std::optional<Color>& withColor)
{
    if (withColor)
        setFillColor(withColor);
    if (path)
        addPath(*path);
    fillPath();
}

void DrawingContext::stroke(const Path* path, const std::optional<Color>& withColor)
{
    if (withColor)
        setStrokeColor(withColor);
    if (path)
        addPath(*path);
    strokePath();
}

} // namespace TOLVGraphing
