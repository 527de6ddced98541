#include "PathStamps.h"

#include "CairoPointers.h"
#include "PixelBytes.h"

#include <cairo.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace TOLVGraphing::cairo {

namespace {

constexpr std::size_t kMostPoints = 32;
constexpr int kLargestSide = 64;
constexpr double kFarthest = 1.0e6;
constexpr std::size_t kMostBytes = std::size_t{4} << 20U;
/// What one more stamp costs besides its own memory.
constexpr std::size_t kEntryBytes = 256;
constexpr int kFixedOne = 256;
/// A point counted in 256ths of a pixel and added to this number has its whole part, rounded to even where it lies in the middle, in the lowest bits: so Cairo rounds, and the processor needs no call for it.
constexpr double kFixedRounding = 26388279066624.0;

std::int32_t fixedFrom(double pixels)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(pixels + kFixedRounding)));
}

int floorOfFixed(int fixed)
{
    return fixed >> 8;
}

int ceilingOfFixed(int fixed)
{
    return (fixed + kFixedOne - 1) >> 8;
}

double pixelsFrom(std::int32_t fixed)
{
    return static_cast<double>(fixed) / kFixedOne;
}

/// The path's elements at other points, which are in 256ths of a pixel.
void appendAt(cairo_t* target, std::span<const Path::Verb> verbs, std::span<const std::int32_t> points)
{
    std::size_t next = 0;
    const auto coordinate = [&] { return pixelsFrom(points[next++]); };
    for (const Path::Verb verb : verbs) {
        if (verb == Path::Verb::Close) {
            cairo_close_path(target);
            continue;
        }
        const double x = coordinate();
        const double y = coordinate();
        if (verb == Path::Verb::Move) {
            cairo_move_to(target, x, y);
        } else if (verb == Path::Verb::Line) {
            cairo_line_to(target, x, y);
        } else {
            const double secondX = coordinate();
            const double secondY = coordinate();
            const double endX = coordinate();
            const double endY = coordinate();
            cairo_curve_to(target, x, y, secondX, secondY, endX, endY);
        }
    }
}

/// How far a stroke sticks out from its points, in pixels.
double strokeReach(cairo_t* target, const AffineTransform& transform)
{
    const double scale = std::hypot(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
    return 0.5 * cairo_get_line_width(target) * std::max(cairo_get_miter_limit(target), 1.5) * scale;
}

void copySettings(cairo_t* from, cairo_t* to)
{
    cairo_set_antialias(to, cairo_get_antialias(from));
    cairo_set_tolerance(to, cairo_get_tolerance(from));
    cairo_set_fill_rule(to, cairo_get_fill_rule(from));
    cairo_set_line_width(to, cairo_get_line_width(from));
    cairo_set_line_cap(to, cairo_get_line_cap(from));
    cairo_set_line_join(to, cairo_get_line_join(from));
    cairo_set_miter_limit(to, cairo_get_miter_limit(from));
}

/// The mask without the rows and columns around it that are not covered.
CoverageMask trimmed(const CoverageMask& mask)
{
    PixelRange covered{mask.range.right, mask.range.bottom, mask.range.left, mask.range.top};
    for (int y = mask.range.top; y < mask.range.bottom; ++y) {
        const std::uint8_t* row = mask.coverage + (y - mask.range.top) * mask.stride - mask.range.left;
        for (int x = mask.range.left; x < mask.range.right; ++x) {
            if (row[x] != 0)
                covered = {std::min(covered.left, x), std::min(covered.top, y), std::max(covered.right, x + 1), y + 1};
        }
    }
    if (covered.isEmpty())
        return {};
    return {covered, mask.coverage + (covered.top - mask.range.top) * mask.stride + (covered.left - mask.range.left), mask.stride};
}

/// The pixels that points in 256ths lie in or on the edges of.
PixelRange pixelsOfPoints(std::span<const std::int32_t> points)
{
    PixelRange range{points[0], points[1], points[0], points[1]};
    for (std::size_t i = 2; i < points.size(); i += 2)
        range = {std::min(range.left, points[i]), std::min(range.top, points[i + 1]), std::max(range.right, points[i]), std::max(range.bottom, points[i + 1])};
    return {floorOfFixed(range.left), floorOfFixed(range.top), ceilingOfFixed(range.right), ceilingOfFixed(range.bottom)};
}

/// The pixels around what the target would stroke.
PixelRange outlineOfStroke(cairo_t* target, AffineTransform toPixels)
{
    double left = 0.0;
    double low = 0.0;
    double right = 0.0;
    double high = 0.0;
    cairo_stroke_extents(target, &left, &low, &right, &high);
    toPixels.tx = 0.0;
    toPixels.ty = 0.0;
    const Rect box = toPixels.apply(Rect(left, low, right - left, high - low));
    return {static_cast<int>(std::floor(box.x())), static_cast<int>(std::floor(box.y())), static_cast<int>(std::ceil(box.maxX())), static_cast<int>(std::ceil(box.maxY()))};
}

PixelRange rangeAround(const PixelRange& one, const PixelRange& other)
{
    if (one.isEmpty() || other.isEmpty())
        return one.isEmpty() ? other : one;
    return {std::min(one.left, other.left), std::min(one.top, other.top), std::max(one.right, other.right), std::max(one.bottom, other.bottom)};
}

} // namespace

template <typename Number>
std::size_t PathStamps::Hash<Number>::operator()(const std::vector<Number>& numbers) const
{
    std::uint64_t hash = numbers.size();
    for (const Number number : numbers)
        hash = (hash ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15U + (hash >> 29U);
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

void PathStamps::begin(cairo_t* target, const Path& path, const AffineTransform& toPixels, StampKind kind, const Color& color)
{
    m_target = target;
    m_path = &path;
    m_toPixels = toPixels;
    m_kind = kind;
    m_color = pixelOfColor(color);
    m_description = description();
    m_known = nullptr;
}

std::optional<PlacedStamp> PathStamps::stampAt(Point place)
{
    const bool keepsDirections = m_toPixels.b == 0.0 && m_toPixels.c == 0.0;
    forgetIfFull();
    if (!keepsDirections || m_path->isEmpty() || m_path->points().size() > kMostPoints || !placePoints(place))
        return std::nullopt;
    if (!m_known || m_knownPoints != m_points) {
        m_known = &stampFor(m_points, std::nullopt);
        m_knownPoints = m_points;
    }
    return m_known->isUsable ? std::optional(placed(*m_known)) : std::nullopt;
}

std::optional<PlacedStamp> PathStamps::clippedStamp(const PixelRange& clip)
{
    const PixelRange left = intersectionRange(m_known->reach, {clip.left - m_column, clip.top - m_row, clip.right - m_column, clip.bottom - m_row});
    m_clippedKey = m_points;
    m_clippedKey.insert(m_clippedKey.end(), {left.left, left.top, left.right, left.bottom});
    const Stamp& stamp = stampFor(m_clippedKey, left);
    if (!stamp.isUsable || m_column + stamp.colored.range().right > clip.right)
        return std::nullopt;
    return placed(stamp);
}

const PathStamps::Stamp& PathStamps::stampFor(const std::vector<std::int32_t>& key, const std::optional<PixelRange>& clip)
{
    Shape& shape = m_shapes[m_description];
    const auto known = shape.find(key);
    if (known != shape.end())
        return known->second;
    const Stamp& stamp = shape.emplace(key, makeStamp(clip)).first->second;
    m_bytes += stamp.colored.byteCount() + kEntryBytes;
    return stamp;
}

PlacedStamp PathStamps::placed(const Stamp& stamp) const
{
    const PixelRange& range = stamp.colored.range();
    const PixelRange& reach = stamp.reach;
    return {&stamp.colored, m_column + range.left, m_row + range.top, {m_column + reach.left, m_row + reach.top, m_column + reach.right, m_row + reach.bottom}};
}

std::vector<std::uint64_t> PathStamps::description() const
{
    std::vector<std::uint64_t> numbers{
        static_cast<std::uint64_t>(m_kind), m_color, static_cast<std::uint64_t>(cairo_get_antialias(m_target)), std::bit_cast<std::uint64_t>(cairo_get_tolerance(m_target))};
    for (const Path::Verb verb : m_path->verbs())
        numbers.push_back(static_cast<std::uint64_t>(verb));
    if (m_kind == StampKind::Fill) {
        numbers.push_back(static_cast<std::uint64_t>(cairo_get_fill_rule(m_target)));
        return numbers;
    }
    numbers.push_back(static_cast<std::uint64_t>(cairo_get_line_cap(m_target)));
    numbers.push_back(static_cast<std::uint64_t>(cairo_get_line_join(m_target)));
    for (const double number : {cairo_get_line_width(m_target), cairo_get_miter_limit(m_target), m_toPixels.a, m_toPixels.b, m_toPixels.c, m_toPixels.d})
        numbers.push_back(std::bit_cast<std::uint64_t>(number));
    return numbers;
}

bool PathStamps::placePoints(Point place)
{
    const std::span<const Point> points = m_path->points();
    m_points.resize(2 * points.size());
    bool isNear = true;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double x = points[i].x + place.x;
        const double y = points[i].y + place.y;
        const double column = m_toPixels.a * x + m_toPixels.tx;
        const double row = m_toPixels.d * y + m_toPixels.ty;
        isNear = isNear && std::abs(column) < kFarthest && std::abs(row) < kFarthest;
        m_points[2 * i] = fixedFrom(column);
        m_points[2 * i + 1] = fixedFrom(row);
    }
    if (!isNear)
        return false;
    m_column = floorOfFixed(m_points[0]);
    m_row = floorOfFixed(m_points[1]);
    for (std::size_t i = 0; i < points.size(); ++i) {
        m_points[2 * i] -= m_column * kFixedOne;
        m_points[2 * i + 1] -= m_row * kFixedOne;
    }
    return true;
}

PathStamps::Stamp PathStamps::makeStamp(const std::optional<PixelRange>& clip) const
{
    const std::optional<PixelRange> reach = reachOfPoints();
    if (!reach || !hasSlants() || hasMiters())
        return {};
    const SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_A8, reach->right - reach->left, reach->bottom - reach->top));
    const ContextPointer pen(cairo_create(surface.get()));
    copySettings(m_target, pen.get());
    if (clip) {
        cairo_rectangle(pen.get(), clip->left - reach->left, clip->top - reach->top, clip->right - clip->left, clip->bottom - clip->top);
        cairo_clip(pen.get());
    }
    std::vector<std::int32_t> points = m_points;
    for (std::size_t i = 0; i < points.size(); i += 2) {
        points[i] -= reach->left * kFixedOne;
        points[i + 1] -= reach->top * kFixedOne;
    }
    appendAt(pen.get(), m_path->verbs(), points);
    const cairo_matrix_t matrix{m_toPixels.a, m_toPixels.b, m_toPixels.c, m_toPixels.d, 0.0, 0.0};
    if (m_kind == StampKind::Stroke)
        cairo_set_matrix(pen.get(), &matrix);
    // What a clip would cut: the outline of the stroke, thin points that cover nothing included, or all points of what is filled.
    const PixelRange outline = m_kind == StampKind::Stroke ? outlineOfStroke(pen.get(), m_toPixels) : pixelsOfPoints(points);
    if (m_kind == StampKind::Fill)
        cairo_fill(pen.get());
    else
        cairo_stroke(pen.get());
    cairo_surface_flush(surface.get());
    const std::uint8_t* coverage = cairo_image_surface_get_data(surface.get());
    if (cairo_status(pen.get()) != CAIRO_STATUS_SUCCESS || !coverage)
        return {};
    Stamp stamp{true, ColorStamp(trimmed({*reach, coverage, cairo_image_surface_get_stride(surface.get())}), m_color), {}};
    stamp.reach
        = clip ? *clip : rangeAround(stamp.colored.range(), {outline.left + reach->left, outline.top + reach->top, outline.right + reach->left, outline.bottom + reach->top});
    return stamp;
}

std::optional<PixelRange> PathStamps::reachOfPoints() const
{
    const double sticksOut = m_kind == StampKind::Stroke ? strokeReach(m_target, m_toPixels) : 0.0;
    if (!(sticksOut < kLargestSide))
        return std::nullopt;
    const PixelRange pixels = pixelsOfPoints(m_points);
    const int margin = static_cast<int>(std::ceil(sticksOut)) + 1;
    const PixelRange reach{pixels.left - margin, pixels.top - margin, pixels.right + margin, pixels.bottom + margin};
    const bool isSmall = reach.right - reach.left <= kLargestSide && reach.bottom - reach.top <= kLargestSide;
    return isSmall ? std::optional(reach) : std::nullopt;
}

bool PathStamps::hasSlants() const
{
    std::size_t next = 0;
    for (const Path::Verb verb : m_path->verbs()) {
        if (verb == Path::Verb::Curve)
            return true;
        if (verb == Path::Verb::Line && next > 0 && m_points[next] != m_points[next - 2] && m_points[next + 1] != m_points[next - 1])
            return true;
        next += verb == Path::Verb::Close ? 0 : 2;
    }
    return false;
}

bool PathStamps::hasMiters() const
{
    if (m_kind == StampKind::Fill || cairo_get_line_join(m_target) != CAIRO_LINE_JOIN_MITER)
        return false;
    const std::span<const Path::Verb> verbs = m_path->verbs();
    for (std::size_t i = 1; i < verbs.size(); ++i) {
        if (verbs[i] != Path::Verb::Move && verbs[i - 1] != Path::Verb::Move)
            return true;
    }
    return false;
}

void PathStamps::forgetIfFull()
{
    if (m_bytes <= kMostBytes)
        return;
    m_shapes.clear();
    m_bytes = 0;
    m_known = nullptr;
}

} // namespace TOLVGraphing::cairo
