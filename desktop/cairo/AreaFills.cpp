#include "AreaFills.h"

#include "../raster/AreaCoverage.h"
#include "../raster/CoverageBlender.h"
#include "PixelBytes.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace TOLVGraphing::cairo {

namespace {

/// Cairo paints areas of fewer points.
constexpr std::size_t kManyPoints = 64;
constexpr double kFarthest = 1.0e6;

/// A move, lines and perhaps a close.
bool isPolygon(std::span<const Path::Verb> verbs)
{
    const std::size_t end = verbs.size() - (verbs.back() == Path::Verb::Close ? 1 : 0);
    return verbs.front() == Path::Verb::Move
        && std::all_of(verbs.begin() + 1, verbs.begin() + static_cast<std::ptrdiff_t>(end), [](Path::Verb verb) { return verb == Path::Verb::Line; });
}

bool goesOneWay(std::span<const Point> line)
{
    const bool goesLeft = line.front().x > line.back().x;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (goesLeft ? line[i].x > line[i - 1].x : line[i].x < line[i - 1].x)
            return false;
    }
    return true;
}

} // namespace

std::optional<LineArea> areaUnderLine(const Path& path, const AffineTransform& toDevice)
{
    const std::span<const Point> points = path.points();
    if (points.size() < kManyPoints || toDevice.b != 0.0 || toDevice.c != 0.0 || !isPolygon(path.verbs()))
        return std::nullopt;
    const std::span<const Point> line = points.subspan(1, points.size() - 2);
    const bool hasBase = points.front().y == points.back().y && points.front().x == line.front().x && points.back().x == line.back().x;
    if (!hasBase || !goesOneWay(line))
        return std::nullopt;
    LineArea area;
    area.base = toDevice.apply(points.front()).y;
    area.line.reserve(line.size());
    for (const Point& point : line) {
        area.line.push_back(toDevice.apply(point));
        if (!(std::abs(area.line.back().x) < kFarthest) || !(std::abs(area.line.back().y) < kFarthest))
            return std::nullopt;
    }
    return std::abs(area.base) < kFarthest ? std::optional(std::move(area)) : std::nullopt;
}

void fillArea(cairo_surface_t* surface, const LineArea& area, const Color& color, const PixelRange& clip)
{
    if (clip.isEmpty() || !ImagePixels::canChange(surface))
        return;
    cairo_surface_flush(surface);
    const raster::PixelBox box{clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top};
    const raster::CoverageBlender blender({cairo_image_surface_get_data(surface), cairo_image_surface_get_stride(surface)}, box, pixelOfColor(color));
    raster::AreaCoverage(box, area.line, area.base).forEachStrip([&](const raster::CoverageStrip& strip) { blender.paint(strip); });
    cairo_surface_mark_dirty(surface);
}

} // namespace TOLVGraphing::cairo
