#include "CairoContext.h"

#include "../graphics/LineDashRules.h"
#include "../graphics/PathWindow.h"
#include "../text/TextLayout.h"
#include "AreaFills.h"
#include "GlyphMasks.h"
#include "PathStamps.h"
#include "PolylineStrokes.h"
#include "UprightBoxes.h"
#include "TOLVGraphing/platform/text/AttributedString.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace TOLVGraphing::cairo {

namespace {

/// Paths within this distance of the device's origin are handed over as they are. Cairo's own numbers end at 8,388,607 device units.
constexpr double kSafeReach = 1.0e6;
/// How far around the clip paths are kept when they have to be cut, in device units.
constexpr double kWindowMargin = 4000.0;
constexpr double kDashedWindowMargin = 16.0;
/// A line's outline is a thin ellipse under a transform that stretches one direction this many times as far as another: it would take Cairo minutes, and no one draws so.
constexpr double kLargestStretch = 1.0e9;
/// The width that wider lines are limited to, in device units.
constexpr double kWidestLine = 4.0e4;
/// A transform that makes a square of one point smaller or larger than these areas in device units counts as one without inverse.
constexpr double kSmallestArea = 1.0e-24;
constexpr double kLargestArea = 1.0e24;
/// Text is drawn while an em is between these lengths in device units in every direction. A glyph that FreeType cannot size would put the face, and with it every later text of
/// the process, into an error state.
constexpr double kSmallestEm = 0.02;
constexpr double kLargestEm = 1.0e4;

/// Right angles are mitered from this limit on, with some room.
constexpr double kMiterOfRightAngle = 1.5;

const Rect kSafeWindow{-kSafeReach, -kSafeReach, 2.0 * kSafeReach, 2.0 * kSafeReach};

cairo_matrix_t matrixOf(const AffineTransform& transform)
{
    return {transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty};
}

AffineTransform transformOf(cairo_t* target)
{
    cairo_matrix_t matrix;
    cairo_get_matrix(target, &matrix);
    return {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0};
}

/// A length that is this long in points, along the direction that the transform stretches most, is this many device units long at most.
double largestScale(const AffineTransform& transform)
{
    return std::hypot(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
}

/// True when the transform can be inverted without leaving the numbers that Cairo computes with.
bool hasInverse(const AffineTransform& transform)
{
    const double determinant = std::abs(transform.a * transform.d - transform.b * transform.c);
    const double place = std::max(std::abs(transform.tx), std::abs(transform.ty));
    return determinant > kSmallestArea && determinant < kLargestArea && largestScale(transform) < kLargestArea && place < kLargestArea;
}

bool stretchesTooFar(const AffineTransform& transform)
{
    const double largest = largestScale(transform);
    return largest * largest > kLargestStretch * std::abs(transform.a * transform.d - transform.b * transform.c);
}

void appendElements(cairo_t* target, const Path& path)
{
    const std::span<const Point> points = path.points();
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        switch (verb) {
        case Path::Verb::Move:
            cairo_move_to(target, points[next].x, points[next].y);
            ++next;
            break;
        case Path::Verb::Line:
            cairo_line_to(target, points[next].x, points[next].y);
            ++next;
            break;
        case Path::Verb::Curve:
            cairo_curve_to(target, points[next].x, points[next].y, points[next + 1].x, points[next + 1].y, points[next + 2].x, points[next + 2].y);
            next += 3;
            break;
        case Path::Verb::Close: cairo_close_path(target); break;
        }
    }
}

/// The length of the lines through the path's points, those of curves' control points, in the path's own units.
double lengthOfPath(const Path& path)
{
    const std::span<const Point> points = path.points();
    double length = 0.0;
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        std::size_t count = verb == Path::Verb::Close ? 0 : verb == Path::Verb::Curve ? 3 : 1;
        for (; count > 0; --count, ++next) {
            if (verb != Path::Verb::Move && next > 0)
                length += std::hypot(points[next].x - points[next - 1].x, points[next].y - points[next - 1].y);
        }
    }
    return length;
}

/// The same of pieces in device units.
double lengthOfRuns(std::span<const paint::StrokeRun> runs, const AffineTransform& toDevice)
{
    AffineTransform back = toDevice.inverted();
    back.tx = 0.0;
    back.ty = 0.0;
    double length = 0.0;
    for (const paint::StrokeRun& run : runs) {
        for (std::size_t i = 1; i < run.points.size(); ++i) {
            const Point step = back.apply(Point{run.points[i].x - run.points[i - 1].x, run.points[i].y - run.points[i - 1].y});
            length += std::hypot(step.x, step.y);
        }
    }
    return length;
}

void appendRun(cairo_t* target, const paint::StrokeRun& run)
{
    cairo_move_to(target, run.points.front().x, run.points.front().y);
    for (std::size_t i = 1; i < run.points.size(); ++i)
        cairo_line_to(target, run.points[i].x, run.points[i].y);
    if (run.isClosed)
        cairo_close_path(target);
}

bool isVectorSurface(cairo_surface_t* surface)
{
    switch (cairo_surface_get_type(surface)) {
    case CAIRO_SURFACE_TYPE_PDF:
    case CAIRO_SURFACE_TYPE_PS:
    case CAIRO_SURFACE_TYPE_SVG:
    case CAIRO_SURFACE_TYPE_SCRIPT:
    case CAIRO_SURFACE_TYPE_RECORDING: return true;
    default: return false;
    }
}

/// True when a device unit is a pixel of an image in memory.
bool hasPlainPixels(cairo_surface_t* surface)
{
    double xScale = 1.0;
    double yScale = 1.0;
    double xOffset = 0.0;
    double yOffset = 0.0;
    cairo_surface_get_device_scale(surface, &xScale, &yScale);
    cairo_surface_get_device_offset(surface, &xOffset, &yOffset);
    return cairo_surface_get_type(surface) == CAIRO_SURFACE_TYPE_IMAGE && xScale == 1.0 && yScale == 1.0 && xOffset == 0.0 && yOffset == 0.0;
}

bool isDrawableBox(const FixedBox& box, const Color& color)
{
    return color.alphaComponent() >= 1.0 || box.isWholePixels();
}

bool isOnPixelCorner(Point point)
{
    return std::abs(point.x) <= kSafeReach && std::abs(point.y) <= kSafeReach && point.x == std::floor(point.x) && point.y == std::floor(point.y);
}

/// The masks of all contexts. They are used while a layout is lent out, by one thread at a time therefore.
GlyphMasks& sharedGlyphMasks()
{
    static GlyphMasks masks;
    return masks;
}

/// The stamps of all contexts of the thread.
PathStamps& sharedPathStamps()
{
    thread_local PathStamps stamps;
    return stamps;
}

} // namespace

void setUpwardCoordinates(cairo_t* target, double deviceHeight, double unitsPerPoint)
{
    cairo_translate(target, 0.0, deviceHeight);
    cairo_scale(target, unitsPerPoint, -unitsPerPoint);
}

CairoContext::CairoContext(cairo_t* target)
    : m_target(cairo_reference(target))
    , m_isVector(isVectorSurface(cairo_get_target(target)))
    , m_hasPlainPixels(hasPlainPixels(cairo_get_group_target(target)))
{
    cairo_save(m_target);
    cairo_new_path(m_target);
    cairo_set_line_width(m_target, 1.0);
    cairo_set_dash(m_target, nullptr, 0, 0.0);
    cairo_set_line_cap(m_target, CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(m_target, CAIRO_LINE_JOIN_MITER);
    cairo_set_miter_limit(m_target, 10.0);
    cairo_set_operator(m_target, CAIRO_OPERATOR_OVER);
    m_state.transform = transformOf(m_target);
    m_state.clip = foundClip();
}

CairoContext::~CairoContext()
{
    while (!m_saved.empty())
        restoreState();
    cairo_new_path(m_target);
    cairo_restore(m_target);
    cairo_destroy(m_target);
}

void CairoContext::saveState()
{
    cairo_save(m_target);
    m_saved.push_back(m_state);
}

void CairoContext::restoreState()
{
    if (m_saved.empty())
        return;
    cairo_restore(m_target);
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
}

void CairoContext::concatenateTransform(const AffineTransform& transform)
{
    m_state.transform.concatenate(transform);
    m_state.isUsable = m_state.isUsable && hasInverse(transform) && hasInverse(m_state.transform);
    if (!m_state.isUsable)
        return;
    const cairo_matrix_t matrix = matrixOf(m_state.transform);
    cairo_set_matrix(m_target, &matrix);
}

void CairoContext::clipToPath(const Path& path, FillRule rule)
{
    if (!m_state.isUsable)
        return;
    cairo_set_fill_rule(m_target, rule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    layFilledPath(path);
    cairo_clip(m_target);
    m_state.clip = clipWithin(path);
}

void CairoContext::setFillColor(const std::optional<Color>& color)
{
    m_state.fillColor = color.value_or(Color::blackColor());
}

void CairoContext::setStrokeColor(const std::optional<Color>& color)
{
    m_state.strokeColor = color.value_or(Color::blackColor());
}

void CairoContext::setLineWidth(double width)
{
    m_state.lineWidth = width;
}

void CairoContext::setLineDash(const LineDash& dash)
{
    m_state.dash = paint::usableDash(dash);
    cairo_set_dash(m_target, m_state.dash.lengths.data(), static_cast<int>(m_state.dash.lengths.size()), m_state.dash.phase);
}

void CairoContext::setLineCap(LineCap cap)
{
    cairo_set_line_cap(m_target, cap == LineCap::Round ? CAIRO_LINE_CAP_ROUND : cap == LineCap::Square ? CAIRO_LINE_CAP_SQUARE : CAIRO_LINE_CAP_BUTT);
}

void CairoContext::setLineJoin(LineJoin join)
{
    cairo_set_line_join(m_target, join == LineJoin::Round ? CAIRO_LINE_JOIN_ROUND : join == LineJoin::Bevel ? CAIRO_LINE_JOIN_BEVEL : CAIRO_LINE_JOIN_MITER);
}

void CairoContext::setMiterLimit(double limit)
{
    m_state.miterLimit = std::isfinite(limit) ? std::max(limit, 1.0) : 10.0;
    cairo_set_miter_limit(m_target, m_state.miterLimit);
}

void CairoContext::drawFilledPath(const Path& path, FillRule rule)
{
    if (path.isEmpty() || !selectColor(m_state.fillColor))
        return;
    if (fillAsBox(path) || fillAsArea(path))
        return;
    cairo_set_fill_rule(m_target, rule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    layFilledPath(path);
    cairo_fill(m_target);
}

void CairoContext::drawStrokedPath(const Path& path)
{
    if (path.isEmpty() || !(m_state.lineWidth > 0.0) || !std::isfinite(m_state.lineWidth) || !selectColor(m_state.strokeColor))
        return;
    if (stretchesTooFar(m_state.transform))
        return;
    const paint::PathReach reach = paint::reachOfPath(path, m_state.transform);
    if (!reach.isFinite) {
        drawStrokedPath(paint::finiteElements(path));
        return;
    }
    cairo_set_line_width(m_target, paintedLineWidth());
    const bool isDashed = !m_state.dash.lengths.empty();
    if (cairo_get_line_cap(m_target) != CAIRO_LINE_CAP_BUTT && paint::hasGapsClosedByEnds(m_state.dash, m_state.lineWidth)) {
        strokeWithoutDash(path);
        return;
    }
    // Vector files keep a series in one piece where they can.
    const Rect window = visibleWindow(strokeReach() + (isDashed && !m_isVector ? kDashedWindowMargin : kWindowMargin));
    if (!reach.liesWithin(isDashed ? intersectionRect(window, kSafeWindow) : kSafeWindow)) {
        strokeInPieces(path, window);
        return;
    }
    if (!m_isVector && paint::hasTooManyDashes(m_state.dash, lengthOfPath(path))) {
        strokeWithoutDash(path);
        return;
    }
    if (strokeAsBoxes(path))
        return;
    if (m_hasPlainPixels) {
        const std::optional<std::vector<paint::StrokeRun>> lines = longPolylines(path, m_state.transform);
        if (lines && strokeAsMask(*lines))
            return;
    }
    appendElements(m_target, path);
    cairo_stroke(m_target);
}

void CairoContext::drawText(const AttributedString& text, Point origin)
{
    const Color color = text.attributes().foregroundColorOrDefault();
    if (!origin.valid() || text.string().empty() || !selectColor(color))
        return;
    const auto drawLayout = [&](const text::TextLayout& layout) {
        if (!layout.layout || !hasDrawableEm(text.attributes().fontOrDefault().size))
            return;
        // Glyphs may stick out of the line box; a line height on every side is more than any face needs.
        const double reach = layout.lineHeight;
        const Rect box = m_state.transform.apply(insetRect({origin, layout.size}, -reach, -reach));
        const bool isSafe = box.x() >= -kSafeReach && box.maxX() <= kSafeReach && box.y() >= -kSafeReach && box.maxY() <= kSafeReach;
        if (isSafe && intersectsRect(box, visibleWindow(0.0)))
            drawLines(layout, origin, color);
    };
    // By reference, for which no memory is needed.
    text::SharedLayouts::withLayout(text, std::cref(drawLayout));
}

bool CairoContext::drawsRepeatsQuickly() const
{
    return canDrawBoxes();
}

void CairoContext::drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places)
{
    if (!drawsRepeatsQuickly()) {
        DrawingContext::drawFilledRepeats(path, rule, places);
        return;
    }
    cairo_set_fill_rule(m_target, rule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    drawRepeats(path, places, StampKind::Fill, m_state.fillColor, [&](const Path& moved) { drawFilledPath(moved, rule); });
}

void CairoContext::drawStrokedRepeats(const Path& path, std::span<const Point> places)
{
    const bool hasStamps
        = drawsRepeatsQuickly() && m_state.dash.lengths.empty() && m_state.lineWidth > 0.0 && std::isfinite(m_state.lineWidth) && !stretchesTooFar(m_state.transform);
    if (!hasStamps) {
        DrawingContext::drawStrokedRepeats(path, places);
        return;
    }
    cairo_set_line_width(m_target, paintedLineWidth());
    drawRepeats(path, places, StampKind::Stroke, m_state.strokeColor, [&](const Path& moved) { drawStrokedPath(moved); });
}

std::optional<Rect> CairoContext::wholePixelsOfFill(const Rect& rect) const
{
    const AffineTransform& transform = m_state.transform;
    if (!m_state.clip || !m_state.isUsable || transform.b != 0.0 || transform.c != 0.0)
        return std::nullopt;
    const Point corner = transform.apply(rect.origin);
    const Point opposite = transform.apply(Point{rect.maxX(), rect.maxY()});
    if (!isOnPixelCorner(corner) || !isOnPixelCorner(opposite) || corner.x == opposite.x || corner.y == opposite.y)
        return std::nullopt;
    return Rect(std::min(corner.x, opposite.x), std::min(corner.y, opposite.y), std::abs(opposite.x - corner.x), std::abs(opposite.y - corner.y));
}

Rect CairoContext::fillOfWholePixels(const Rect& pixels) const
{
    const AffineTransform& transform = m_state.transform;
    const Point corner{(pixels.x() - transform.tx) / transform.a, (pixels.y() - transform.ty) / transform.d};
    const Point opposite{(pixels.maxX() - transform.tx) / transform.a, (pixels.maxY() - transform.ty) / transform.d};
    return {corner, {opposite.x - corner.x, opposite.y - corner.y}};
}

std::string CairoContext::error() const
{
    const cairo_status_t status = cairo_status(m_target);
    return status == CAIRO_STATUS_SUCCESS ? std::string() : cairo_status_to_string(status);
}

bool CairoContext::selectColor(const Color& color)
{
    const Color painted = color.clamped();
    if (!m_state.isUsable || painted.alphaComponent() <= 0.0)
        return false;
    cairo_set_source_rgba(m_target, painted.redComponent(), painted.greenComponent(), painted.blueComponent(), painted.alphaComponent());
    return true;
}

Rect CairoContext::visibleWindow(double margin) const
{
    double left = 0.0;
    double low = 0.0;
    double right = 0.0;
    double high = 0.0;
    // Asked in device units: through a steep transform and back the box would lose its digits.
    cairo_matrix_t matrix;
    cairo_get_matrix(m_target, &matrix);
    cairo_identity_matrix(m_target);
    cairo_clip_extents(m_target, &left, &low, &right, &high);
    cairo_set_matrix(m_target, &matrix);
    const Rect clip{left, low, right - left, high - low};
    return clip.isEmpty() ? Rect() : insetRect(clip, -margin, -margin);
}

bool CairoContext::hasDrawableEm(double fontSize) const
{
    const double largest = largestScale(m_state.transform) * fontSize;
    const double area = std::abs(m_state.transform.a * m_state.transform.d - m_state.transform.b * m_state.transform.c) * fontSize * fontSize;
    return largest <= kLargestEm && area >= kSmallestEm * largest;
}

double CairoContext::paintedLineWidth() const
{
    // A line wider than any page covers whatever it is near: a thinner one does the same.
    return std::min(m_state.lineWidth, kWidestLine / largestScale(m_state.transform));
}

double CairoContext::strokeReach() const
{
    const double reach = paintedLineWidth() * 0.5 * std::max(m_state.miterLimit, 1.5) * largestScale(m_state.transform);
    return std::min(reach, kSafeReach);
}

std::optional<PixelRange> CairoContext::foundClip() const
{
    return m_hasPlainPixels && ImagePixels::canChange(cairo_get_group_target(m_target)) ? clipOfWholePixels(m_target) : std::nullopt;
}

std::optional<PixelRange> CairoContext::clipWithin(const Path& path) const
{
    const paint::PathReach reach = paint::reachOfPath(path, m_state.transform);
    if (!m_state.clip || !reach.isFinite || !reach.liesWithin(kSafeWindow))
        return std::nullopt;
    const auto box = boxOfPath(path, m_state.transform);
    return box && box->isWholePixels() ? std::optional(intersectionRange(*m_state.clip, box->pixels())) : std::nullopt;
}

bool CairoContext::canDrawBoxes() const
{
    return m_state.clip && cairo_get_antialias(m_target) != CAIRO_ANTIALIAS_NONE && cairo_get_operator(m_target) == CAIRO_OPERATOR_OVER;
}

bool CairoContext::fillAsBox(const Path& path)
{
    if (!canDrawBoxes())
        return false;
    const paint::PathReach reach = paint::reachOfPath(path, m_state.transform);
    if (!reach.isFinite || !reach.liesWithin(kSafeWindow))
        return false;
    const auto box = boxOfPath(path, m_state.transform);
    if (!box || !isDrawableBox(*box, m_state.fillColor))
        return false;
    ImagePixels(cairo_get_group_target(m_target)).fillBox(*box, m_state.fillColor, *m_state.clip);
    return true;
}

bool CairoContext::fillAsArea(const Path& path)
{
    if (!canDrawBoxes())
        return false;
    const std::optional<LineArea> area = areaUnderLine(path, m_state.transform);
    if (area)
        fillArea(cairo_get_group_target(m_target), *area, m_state.fillColor, *m_state.clip);
    return area.has_value();
}

bool CairoContext::strokeAsBoxes(const Path& path)
{
    if (!canDrawBoxes() || !m_state.dash.lengths.empty() || cairo_get_line_cap(m_target) != CAIRO_LINE_CAP_BUTT || cairo_get_line_join(m_target) != CAIRO_LINE_JOIN_MITER
        || m_state.miterLimit < kMiterOfRightAngle)
        return false;
    const std::vector<FixedBox> boxes = boxesOfStroke(path, m_state.transform, paintedLineWidth());
    if (boxes.empty() || !std::ranges::all_of(boxes, [&](const FixedBox& box) { return isDrawableBox(box, m_state.strokeColor); }))
        return false;
    ImagePixels pixels(cairo_get_group_target(m_target));
    for (const FixedBox& box : boxes)
        pixels.fillBox(box, m_state.strokeColor, *m_state.clip);
    return true;
}

void CairoContext::drawRepeats(const Path& path, std::span<const Point> places, StampKind kind, const Color& color, const std::function<void(const Path&)>& drawPath)
{
    if (path.isEmpty() || !selectColor(color))
        return;
    PathStamps& stamps = sharedPathStamps();
    stamps.begin(m_target, path, m_state.transform, kind, color);
    // Cairo treats an image that it has cleared, and not touched since, in another way: it paints the first itself that surely touches it.
    bool isTouched = false;
    std::optional<ImagePixels> pixels;
    for (const Point& place : places) {
        std::optional<PlacedStamp> placed = stamps.stampAt(place);
        if (placed && intersectionRange(placed->reach, *m_state.clip).isEmpty())
            continue;
        const bool isInside = placed && intersectionRange(placed->reach, *m_state.clip) == placed->reach;
        if (placed && !isInside && isTouched)
            placed = stamps.clippedStamp(*m_state.clip);
        if (placed && isTouched) {
            if (!pixels)
                pixels.emplace(cairo_get_group_target(m_target));
            pixels->drawStamp(*placed->stamp, placed->left, placed->top);
            continue;
        }
        pixels.reset();
        isTouched = isTouched || (isInside && !placed->stamp->range().isEmpty());
        Path moved = path;
        moved.transformUsingAffineTransform({1.0, 0.0, 0.0, 1.0, place.x, place.y});
        drawPath(moved);
    }
}

void CairoContext::layFilledPath(const Path& path)
{
    const paint::PathReach reach = paint::reachOfPath(path, m_state.transform);
    if (!reach.isFinite) {
        layFilledPath(paint::finiteElements(path));
        return;
    }
    if (reach.liesWithin(kSafeWindow)) {
        appendElements(m_target, path);
        return;
    }
    const Path visible = paint::filledPathWithin(path, m_state.transform, visibleWindow(kWindowMargin));
    const cairo_matrix_t matrix = matrixOf(m_state.transform);
    cairo_identity_matrix(m_target);
    appendElements(m_target, visible);
    cairo_set_matrix(m_target, &matrix);
}

void CairoContext::strokeInPieces(const Path& path, const Rect& window)
{
    const std::vector<paint::StrokeRun> runs = paint::strokeRunsWithin(path, m_state.transform, window);
    if (!m_isVector && paint::hasTooManyDashes(m_state.dash, lengthOfRuns(runs, m_state.transform))) {
        strokeWithoutDash(path);
        return;
    }
    if (m_hasPlainPixels && areLongPolylines(runs) && strokeAsMask(runs))
        return;
    const cairo_matrix_t matrix = matrixOf(m_state.transform);
    const auto lay = [&](const paint::StrokeRun& run) {
        cairo_identity_matrix(m_target);
        appendRun(m_target, run);
        cairo_set_matrix(m_target, &matrix);
    };
    const LineDash& dash = m_state.dash;
    if (dash.lengths.empty()) {
        for (const paint::StrokeRun& run : runs)
            lay(run);
        cairo_stroke(m_target);
        return;
    }
    for (const paint::StrokeRun& run : runs) {
        lay(run);
        const LineDash shifted = paint::usableDash({dash.lengths, dash.phase + run.startLength});
        cairo_set_dash(m_target, shifted.lengths.data(), static_cast<int>(shifted.lengths.size()), shifted.phase);
        cairo_stroke(m_target);
    }
    cairo_set_dash(m_target, dash.lengths.data(), static_cast<int>(dash.lengths.size()), dash.phase);
}

void CairoContext::strokeWithoutDash(const Path& path)
{
    // Wider caps cover the gaps.
    const double part = cairo_get_line_cap(m_target) == CAIRO_LINE_CAP_BUTT ? paint::paintedPart(m_state.dash) : 1.0;
    saveState();
    m_state.strokeColor = m_state.strokeColor.clamped();
    m_state.strokeColor = m_state.strokeColor.colorWithAlphaComponent(m_state.strokeColor.alphaComponent() * part);
    setLineDash({});
    drawStrokedPath(path);
    restoreState();
}

bool CairoContext::strokeAsMask(std::span<const paint::StrokeRun> lines)
{
    const std::optional<double> scale = scaleKeepingAngles(m_state.transform);
    return scale && strokePolylines(m_target, lines, paintedLineWidth(), m_state.dash, *scale, visibleWindow(0.0));
}

bool CairoContext::drawLineFromMasks(const text::TextLine& line, const AffineTransform& lineToDevice, const Color& color)
{
    if (!m_hasPlainPixels)
        return false;
    if (!m_state.clip)
        return sharedGlyphMasks().drawLine(m_target, line.shaped, lineToDevice);
    const auto mask = sharedGlyphMasks().maskOfLine(line.shaped, lineToDevice);
    if (mask && !mask->range.isEmpty())
        ImagePixels(cairo_get_group_target(m_target)).drawMask(*mask, color, *m_state.clip);
    return mask.has_value();
}

void CairoContext::drawLines(const text::TextLayout& layout, Point origin, const Color& color)
{
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        PangoLayoutLine* line = layout.lines[i].shaped;
        AffineTransform lineToDevice = m_state.transform;
        lineToDevice.concatenate({layout.scale, 0.0, 0.0, -layout.scale, origin.x, origin.y + layout.baseline(i)});
        if (drawLineFromMasks(layout.lines[i], lineToDevice, color))
            continue;
        cairo_save(m_target);
        const cairo_matrix_t matrix = matrixOf(lineToDevice);
        cairo_set_matrix(m_target, &matrix);
        cairo_move_to(m_target, 0.0, 0.0);
        if (m_isVector) {
            pango_cairo_show_layout_line(m_target, line);
        } else {
            cairo_set_fill_rule(m_target, CAIRO_FILL_RULE_WINDING);
            pango_cairo_layout_line_path(m_target, line);
            cairo_fill(m_target);
        }
        cairo_new_path(m_target);
        cairo_restore(m_target);
    }
}

} // namespace TOLVGraphing::cairo
