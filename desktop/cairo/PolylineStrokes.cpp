#include "PolylineStrokes.h"

#include "../raster/PolylineStroker.h"
#include "CairoPointers.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::cairo {

namespace {

/// Cairo is quicker with fewer points than this.
constexpr std::size_t kManyPoints = 64;
/// Larger differences between the transform's columns, as parts of their length, count as angles not kept: a line of 1,000 pixels would be off by a hundredth of a pixel in its width.
constexpr double kSameAngle = 1e-5;
constexpr double kMostDashes = 1e6;
constexpr double kFarthest = 1e6;
constexpr std::size_t kMostKeptBytes = std::size_t{8} << 20U;

bool goesOneWay(std::span<const Point> points)
{
    const auto goesLeft = [](const Point& from, const Point& to) { return to.x < from.x; };
    const auto goesRight = [](const Point& from, const Point& to) { return to.x > from.x; };
    return std::adjacent_find(points.begin(), points.end(), goesLeft) == points.end() || std::adjacent_find(points.begin(), points.end(), goesRight) == points.end();
}

double lengthOfLine(std::span<const Point> points)
{
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    return length;
}

/// True when the dash comes in numbers that are worth walking through.
bool hasFewDashes(std::span<const paint::StrokeRun> lines, const LineDash& dash)
{
    if (dash.lengths.empty())
        return true;
    double pattern = 0.0;
    for (const double length : dash.lengths)
        pattern += length;
    double length = 0.0;
    for (const paint::StrokeRun& line : lines)
        length += lengthOfLine(line.points);
    return length * static_cast<double>(dash.lengths.size()) < kMostDashes * pattern;
}

LineDash scaledDash(const LineDash& dash, double scale)
{
    LineDash scaled = dash;
    for (double& length : scaled.lengths)
        length *= scale;
    scaled.phase *= scale;
    return scaled;
}

raster::PixelBox pixelBox(const Rect& visible)
{
    if (visible.isEmpty() || !(std::abs(visible.x()) < kFarthest) || !(std::abs(visible.y()) < kFarthest) || !(visible.maxX() < kFarthest) || !(visible.maxY() < kFarthest))
        return {};
    const auto left = static_cast<int>(std::floor(visible.x()));
    const auto top = static_cast<int>(std::floor(visible.y()));
    return {left, top, static_cast<int>(std::ceil(visible.maxX())) - left, static_cast<int>(std::ceil(visible.maxY())) - top};
}

/// The calculation's memory is kept for the thread's next line: a picture has many, and every page of fresh memory costs.
raster::UnionCoverage& sharedCoverage()
{
    thread_local raster::UnionCoverage coverage;
    if (coverage.keptBytes() > kMostKeptBytes)
        coverage = raster::UnionCoverage();
    return coverage;
}

LineJoin joinOf(cairo_t* target)
{
    const cairo_line_join_t join = cairo_get_line_join(target);
    return join == CAIRO_LINE_JOIN_ROUND ? LineJoin::Round : join == CAIRO_LINE_JOIN_BEVEL ? LineJoin::Bevel : LineJoin::Miter;
}

void paintStrip(cairo_t* target, const raster::CoverageStrip& strip)
{
    // Cairo only reads the mask.
    auto* pixels = const_cast<unsigned char*>(strip.coverage);
    const SurfacePointer mask(cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_A8, strip.box.width, strip.box.height, static_cast<int>(strip.stride)));
    cairo_mask_surface(target, mask.get(), strip.box.left, strip.box.top);
}

} // namespace

std::optional<double> scaleKeepingAngles(const AffineTransform& transform)
{
    const double length = std::hypot(transform.a, transform.b);
    const double skew = transform.a * transform.c + transform.b * transform.d;
    const bool keepsAngles = std::abs(std::hypot(transform.c, transform.d) - length) <= kSameAngle * length && std::abs(skew) <= kSameAngle * length * length;
    return keepsAngles && length > 0.0 ? std::optional(length) : std::nullopt;
}

std::optional<std::vector<paint::StrokeRun>> longPolylines(const Path& path, const AffineTransform& toDevice)
{
    if (path.points().size() < kManyPoints)
        return std::nullopt;
    std::vector<paint::StrokeRun> lines;
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        if (verb != Path::Verb::Move && verb != Path::Verb::Line)
            return std::nullopt;
        if (verb == Path::Verb::Move || lines.empty())
            lines.emplace_back();
        lines.back().points.push_back(toDevice.apply(path.points()[next]));
        ++next;
    }
    return areLongPolylines(lines) ? std::optional(std::move(lines)) : std::nullopt;
}

bool areLongPolylines(std::span<const paint::StrokeRun> lines)
{
    std::size_t count = 0;
    for (const paint::StrokeRun& line : lines) {
        if (line.isClosed || !goesOneWay(line.points))
            return false;
        count += line.points.size();
    }
    // Many short pieces may lie on top of one another; it is the long ones that this is for.
    return count >= kManyPoints && lines.size() * kManyPoints / 4 <= count;
}

bool strokePolylines(cairo_t* target, std::span<const paint::StrokeRun> lines, double width, const LineDash& dash, double scale, const Rect& visible)
{
    const LineDash deviceDash = scaledDash(dash, scale);
    if (cairo_get_line_cap(target) != CAIRO_LINE_CAP_BUTT || cairo_get_antialias(target) == CAIRO_ANTIALIAS_NONE || !hasFewDashes(lines, deviceDash))
        return false;
    raster::UnionCoverage& coverage = sharedCoverage();
    coverage.begin(pixelBox(visible));
    for (const paint::StrokeRun& line : lines) {
        raster::StrokeStyle style{width * scale, joinOf(target), cairo_get_miter_limit(target), deviceDash};
        style.dash.phase += line.startLength * scale;
        raster::PolylineStroker(coverage, style).strokeLine(line.points);
    }
    cairo_save(target);
    cairo_identity_matrix(target);
    coverage.forEachStrip([&](const raster::CoverageStrip& strip) { paintStrip(target, strip); });
    cairo_restore(target);
    return true;
}

} // namespace TOLVGraphing::cairo
