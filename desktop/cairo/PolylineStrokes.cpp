#include "PolylineStrokes.h"

#include "../graphics/LineDashRules.h"
#include "../raster/CoverageBlender.h"
#include "../raster/Lanes.h"
#include "../raster/PolylineStroker.h"
#include "../raster/StrokeWorkers.h"
#include "../raster/SweptCoverage.h"
#include "CairoPointers.h"
#include "ImagePixels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <mutex>

namespace TOLVGraphing::cairo {

namespace {

/// Cairo is quicker with fewer points than this.
constexpr std::size_t kManyPoints = 64;
/// Larger differences between the transform's columns, as parts of their length, count as angles not kept: a line of 1,000 pixels would be off by a hundredth of a pixel in its width.
constexpr double kSameAngle = 1e-5;
constexpr double kFarthest = 1e6;
/// Lines of this many segments are stroked in bands so many columns wide, which several threads may share. Both are the same on every machine, so that pictures are too.
constexpr std::size_t kManySegments = 400;
constexpr int kBandWidth = 128;
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
    double length = 0.0;
    for (const paint::StrokeRun& line : lines)
        length += lengthOfLine(line.points);
    return !paint::hasTooManyDashes(dash, length);
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
template <typename Coverage>
Coverage& sharedCoverage()
{
    thread_local Coverage coverage;
    if (coverage.keptBytes() > kMostKeptBytes)
        coverage = Coverage();
    return coverage;
}

LineJoin joinOf(cairo_t* target)
{
    const cairo_line_join_t join = cairo_get_line_join(target);
    return join == CAIRO_LINE_JOIN_ROUND ? LineJoin::Round : join == CAIRO_LINE_JOIN_BEVEL ? LineJoin::Bevel : LineJoin::Miter;
}

/// The target's colour as an image has it; nothing when its source is not one colour.
std::optional<std::uint32_t> solidColor(cairo_t* target)
{
    cairo_pattern_t* source = cairo_get_source(target);
    if (cairo_pattern_get_type(source) != CAIRO_PATTERN_TYPE_SOLID)
        return std::nullopt;
    std::uint32_t color = 0;
    const SurfacePointer pixel(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(&color), CAIRO_FORMAT_ARGB32, 1, 1, sizeof color));
    const ContextPointer context(cairo_create(pixel.get()));
    cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
    cairo_set_source(context.get(), source);
    cairo_paint(context.get());
    cairo_surface_flush(pixel.get());
    return color;
}

/// What writes the image's pixels as Cairo would; nothing when only Cairo can, because of a group, the operator, the source or the clip.
std::optional<raster::CoverageBlender> blenderOf(cairo_t* target)
{
    cairo_surface_t* surface = cairo_get_target(target);
    const bool isPlain = surface == cairo_get_group_target(target) && ImagePixels::canChange(surface) && cairo_get_operator(target) == CAIRO_OPERATOR_OVER;
    if (!raster::kHasVectorLanes || !isPlain)
        return std::nullopt;
    const std::optional<std::uint32_t> color = solidColor(target);
    const std::optional<PixelRange> clip = clipOfWholePixels(target);
    if (!color || !clip)
        return std::nullopt;
    const raster::PixelBox box{clip->left, clip->top, clip->right - clip->left, clip->bottom - clip->top};
    cairo_surface_flush(surface);
    return raster::CoverageBlender({cairo_image_surface_get_data(surface), cairo_image_surface_get_stride(surface)}, box, *color);
}

/// Puts the target's source where strips of coverage are, in device units while it lives: by itself where it can, otherwise by way of Cairo.
class StripPainter {
public:
    explicit StripPainter(cairo_t* target) : m_target(target)
    {
        cairo_save(m_target);
        cairo_identity_matrix(m_target);
        m_blender = blenderOf(m_target);
    }

    ~StripPainter()
    {
        if (m_left < m_right)
            cairo_surface_mark_dirty_rectangle(cairo_get_target(m_target), m_left, m_top, m_right - m_left, m_bottom - m_top);
        cairo_restore(m_target);
    }

    StripPainter(const StripPainter&) = delete;
    StripPainter& operator=(const StripPainter&) = delete;

    /// True when strips of different columns may be painted by different threads at a time.
    bool canShare() const { return m_blender.has_value(); }

    void paint(const raster::CoverageStrip& strip)
    {
        if (!m_blender) {
            paintThroughMask(strip);
            return;
        }
        m_blender->paint(strip);
        const std::scoped_lock lock(m_mutex);
        m_left = std::min(m_left, strip.box.left);
        m_top = std::min(m_top, strip.box.top);
        m_right = std::max(m_right, strip.box.left + strip.box.width);
        m_bottom = std::max(m_bottom, strip.box.top + strip.box.height);
    }

private:
    void paintThroughMask(const raster::CoverageStrip& strip)
    {
        // Cairo only reads the mask. NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
        auto* pixels = const_cast<unsigned char*>(strip.coverage);
        const SurfacePointer mask(cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_A8, strip.box.width, strip.box.height, static_cast<int>(strip.stride)));
        cairo_mask_surface(m_target, mask.get(), strip.box.left, strip.box.top);
    }

    cairo_t* m_target;
    std::optional<raster::CoverageBlender> m_blender;
    std::mutex m_mutex;
    /// The sides of what was painted without Cairo's knowledge.
    int m_left = std::numeric_limits<int>::max();
    int m_top = std::numeric_limits<int>::max();
    int m_right = 0;
    int m_bottom = 0;
};

/// True when the lines may be stroked in their order by a coverage that goes from left to right, and are worth it.
bool suitSweep(std::span<const paint::StrokeRun> lines, double width)
{
    double end = -std::numeric_limits<double>::infinity();
    for (const paint::StrokeRun& line : lines) {
        if (line.points.empty())
            continue;
        if (line.points.front().x < end || !raster::SweptCoverage::suits(line.points, width))
            return false;
        end = line.points.back().x;
    }
    return true;
}

/// The same lines from their other ends.
std::vector<paint::StrokeRun> turnedRound(std::span<const paint::StrokeRun> lines)
{
    std::vector<paint::StrokeRun> turned(lines.rbegin(), lines.rend());
    for (paint::StrokeRun& line : turned)
        std::reverse(line.points.begin(), line.points.end());
    return turned;
}

void strokeLines(raster::PolygonSink& coverage, std::span<const paint::StrokeRun> lines, const raster::StrokeStyle& style, double scale)
{
    raster::StrokeStyle lineStyle = style;
    for (const paint::StrokeRun& line : lines) {
        lineStyle.dash.phase = style.dash.phase + line.startLength * scale;
        raster::PolylineStroker(coverage, lineStyle).strokeLine(line.points);
    }
}

/// Strokes bands of the box one by one or side by side; what goes on in one does not depend on the others. False, with nothing painted, when the lines are not worth it.
bool strokeBands(StripPainter& painter, const raster::PixelBox& box, std::span<const paint::StrokeRun> lines, const raster::StrokeStyle& style)
{
    std::size_t count = 0;
    for (const paint::StrokeRun& line : lines)
        count += line.points.size();
    if (count < kManySegments || box.isEmpty() || !style.dash.lengths.empty())
        return false;
    if (painter.canShare())
        raster::rouseStrokeWorkers();
    std::vector<raster::PolylineStroker> strokers;
    strokers.reserve(lines.size());
    for (const paint::StrokeRun& line : lines) {
        strokers.emplace_back(style);
        strokers.back().takeLine(line.points);
    }
    const auto strokeBand = [&](int index) {
        const int left = box.left + index * kBandWidth;
        const int width = std::min(kBandWidth, box.left + box.width - left);
        auto& coverage = sharedCoverage<raster::SweptCoverage>();
        coverage.begin({left, box.top, width, box.height}, [&](const raster::CoverageStrip& strip) { painter.paint(strip); });
        for (const raster::PolylineStroker& stroker : strokers)
            stroker.strokeBetween(coverage, left, left + width);
        coverage.end();
    };
    const int bandCount = (box.width + kBandWidth - 1) / kBandWidth;
    if (painter.canShare()) {
        raster::runSideBySide(bandCount, strokeBand);
        return true;
    }
    for (int i = 0; i < bandCount; ++i)
        strokeBand(i);
    return true;
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
    const raster::StrokeStyle style{width * scale, joinOf(target), cairo_get_miter_limit(target), deviceDash};
    const raster::PixelBox box = pixelBox(visible);
    StripPainter painter(target);
    const auto paint = [&](const raster::CoverageStrip& strip) { painter.paint(strip); };
    const bool goesLeft = !lines.empty() && !lines.front().points.empty() && lines.front().points.front().x > lines.front().points.back().x;
    const std::vector<paint::StrokeRun> turned = goesLeft && dash.lengths.empty() ? turnedRound(lines) : std::vector<paint::StrokeRun>();
    const std::span<const paint::StrokeRun> rightwards = turned.empty() ? lines : turned;
    const bool isSwept = raster::kHasVectorLanes && suitSweep(rightwards, style.width);
    if (isSwept && strokeBands(painter, box, rightwards, style))
        return true;
    if (isSwept) {
        auto& coverage = sharedCoverage<raster::SweptCoverage>();
        coverage.begin(box, paint);
        strokeLines(coverage, rightwards, style, scale);
        coverage.end();
    } else {
        auto& coverage = sharedCoverage<raster::UnionCoverage>();
        coverage.begin(box);
        strokeLines(coverage, lines, style, scale);
        coverage.forEachStrip(paint);
    }
    return true;
}

} // namespace TOLVGraphing::cairo
