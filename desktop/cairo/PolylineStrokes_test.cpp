#include "PolylineStrokes.h"

#include "../raster/StrokeWorkers.h"
#include "../raster/testing/SampledStroke.h"
#include "CairoContext.h"
#include "CairoPointers.h"
#include "TOLVGraphing/platform/graphics/GraphicsStateSaver.h"
#include "tests/support/Generated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

using namespace TOLVGraphing;
using namespace TOLVGraphing::cairo;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const Color kBlue{0.0, 0.4, 0.8};

/// An image that one side draws into, and the other looks at.
class Picture {
public:
    explicit Picture(int width, int height, cairo_format_t format = CAIRO_FORMAT_ARGB32)
        : m_width(width)
        , m_height(height)
        , m_surface(cairo_image_surface_create(format, width, height))
        , m_target(cairo_create(m_surface.get()))
    {
    }

    cairo_t* target() { return m_target.get(); }
    cairo_surface_t* surface() { return m_surface.get(); }
    int width() const { return m_width; }
    int height() const { return m_height; }

    /// The premultiplied pixel, rows downwards.
    std::uint32_t pixel(int x, int y)
    {
        cairo_surface_flush(m_surface.get());
        std::uint32_t value = 0;
        std::memcpy(&value, cairo_image_surface_get_data(m_surface.get()) + y * cairo_image_surface_get_stride(m_surface.get()) + x * 4, sizeof value);
        return value;
    }

    int alpha(int x, int y) { return static_cast<int>(pixel(x, y) >> 24U); }

private:
    int m_width;
    int m_height;
    SurfacePointer m_surface;
    ContextPointer m_target;
};

/// The largest difference of a channel, and the mean of the pixels that either picture has painted.
struct Differences {
    int largest = 0;
    double mean = 0.0;
};

Differences differencesOf(Picture& one, Picture& other)
{
    Differences differences;
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const std::uint32_t a = one.pixel(x, y);
            const std::uint32_t b = other.pixel(x, y);
            count += (a | b) != 0U ? 1 : 0;
            for (unsigned shift = 0; shift < 32; shift += 8) {
                const int difference = std::abs(static_cast<int>((a >> shift) & 255U) - static_cast<int>((b >> shift) & 255U));
                differences.largest = std::max(differences.largest, difference);
                differences.mean += difference / 4.0;
            }
        }
    }
    differences.mean /= std::max(count, 1);
    return differences;
}

Path pathOf(const std::vector<Point>& points)
{
    Path path;
    for (const Point& point : points)
        path.addLineToPoint(point);
    return path;
}

std::vector<Point> wave(int count, double step, double middle, double height)
{
    std::vector<Point> points;
    for (int i = 0; i < count; ++i)
        points.push_back({i * step, middle + height * std::sin(i * step * 0.09) * std::cos(i * step * 0.013)});
    return points;
}

std::vector<Point> noise(int columns, double height)
{
    testing_support::Generated generated(5);
    std::vector<Point> points;
    for (int column = 0; column < columns; ++column) {
        points.push_back({column + generated.number(0.0, 0.5), height * generated.number(0.05, 0.4)});
        points.push_back({column + generated.number(0.5, 1.0), height * generated.number(0.6, 0.95)});
    }
    return points;
}

std::vector<Point> steps(int count)
{
    std::vector<Point> points;
    for (int i = 0; i < count; ++i) {
        points.push_back({i * 2.5, 30.0 + i * 7 % 40});
        points.push_back({(i + 1) * 2.5, 30.0 + i * 7 % 40});
    }
    return points;
}

/// Draws by way of a context, and once more with Cairo alone.
void drawBoth(Picture& ours, Picture& cairos, const Path& path, const std::function<void(DrawingContext&)>& prepare)
{
    {
        CairoContext context(ours.target());
        prepare(context);
        context.drawStrokedPath(path);
        EXPECT_EQ(context.error(), "");
    }
    CairoContext context(cairos.target());
    prepare(context);
    cairo_set_line_width(cairos.target(), 1.5);
    cairo_set_source_rgb(cairos.target(), kBlue.redComponent(), kBlue.greenComponent(), kBlue.blueComponent());
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        const Point point = path.points()[next++];
        verb == Path::Verb::Move ? cairo_move_to(cairos.target(), point.x, point.y) : cairo_line_to(cairos.target(), point.x, point.y);
    }
    cairo_stroke(cairos.target());
}

/// True when the context strokes the path from its own coverage: Cairo's coverage of the shallow line is coarser, so that pictures differ.
bool strokesAsMask(const std::function<void(CairoContext&)>& prepare, const std::function<Path(Path)>& change = {}, cairo_format_t format = CAIRO_FORMAT_ARGB32)
{
    std::vector<Point> points;
    for (int i = 0; i < 100; ++i)
        points.push_back({i * 3.0, 20.0 + i * 0.0371});
    const Path path = change ? change(pathOf(points)) : pathOf(points);
    Picture picture(300, 60, format);
    Picture cairos(300, 60, format);
    {
        CairoContext context(picture.target());
        prepare(context);
        context.drawStrokedPath(path);
    }
    CairoContext context(cairos.target());
    prepare(context);
    // A curve of no length keeps the path from its fast way.
    Path slow;
    slow.moveToX(-4.0, -4.0);
    slow.addCurveToPoint({-4.0, -4.0}, {-4.0, -4.0}, {-4.0, -4.0});
    slow.addPath(path);
    context.drawStrokedPath(slow);
    return differencesOf(picture, cairos).largest > 0;
}

} // namespace

TEST(PolylineStrokes, picturesAreCloseToCairos)
{
    struct Case {
        const char* name;
        std::vector<Point> points;
        int largest;
        int largestDashed;
        double mean;
    };
    // Cairo's rows have 15 parts: a level edge is off by 9 levels, and a line has two. Its points lie on a raster of 1/256 pixel, so that along ten thousand pixels of noise its
    // dashes move by some hundredths of a pixel, and a corner may come to lie in a gap.
    const std::vector<Case> cases{
        {"wave", wave(400, 0.5, 50.0, 40.0), 18, 18, 1.5},
        {"fine wave", wave(3000, 0.07, 50.0, 45.0), 18, 18, 1.5},
        {"noise", noise(200, 100.0), 30, 255, 1.5},
        {"steps", steps(80), 18, 18, 1.5},
    };
    for (const Case& entry : cases) {
        for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
            for (const LineDash& dash : {LineDash{}, LineDash{{6.13, 3.31}, 2.0}}) {
                Picture ours(200, 100);
                Picture cairos(200, 100);
                drawBoth(ours, cairos, pathOf(entry.points), [&](DrawingContext& context) {
                    context.setStrokeColor(kBlue);
                    context.setLineWidth(1.5);
                    context.setLineJoin(join);
                    context.setLineDash(dash);
                });
                const Differences differences = differencesOf(ours, cairos);
                EXPECT_GT(differences.largest, 0) << entry.name << ": not painted from its own coverage";
                EXPECT_LE(differences.largest, dash.lengths.empty() ? entry.largest : entry.largestDashed) << entry.name;
                EXPECT_LE(differences.mean, entry.mean) << entry.name;
            }
        }
    }
}

TEST(PolylineStrokes, onlyWhatIsExactIsTaken)
{
    EXPECT_TRUE(strokesAsMask([](CairoContext&) {}));
    EXPECT_TRUE(strokesAsMask([](CairoContext&) {}, {}, CAIRO_FORMAT_RGB24));
    EXPECT_TRUE(strokesAsMask([](CairoContext& context) { context.concatenateTransform({0.8, 0.0, 0.0, -0.8, 5.0, 50.0}); }));
    EXPECT_TRUE(strokesAsMask([](CairoContext& context) { context.concatenateTransform({-0.8, 0.1, 0.1, 0.8, 295.0, 0.0}); }));
    EXPECT_TRUE(strokesAsMask([](CairoContext& context) { context.setLineDash({{5.0, 2.0}, 0.0}); }));
    EXPECT_FALSE(strokesAsMask([](CairoContext& context) { context.concatenateTransform({0.8, 0.0, 0.0, 0.7, 0.0, 0.0}); }));
    EXPECT_FALSE(strokesAsMask([](CairoContext& context) { context.concatenateTransform({0.8, 0.0, 0.1, 0.8, 0.0, 0.0}); }));
    EXPECT_FALSE(strokesAsMask([](CairoContext& context) { context.setLineCap(LineCap::Round); }));
    EXPECT_FALSE(strokesAsMask([](CairoContext& context) { context.setLineCap(LineCap::Square); }));
    // Too fine to be seen: the line is stroked without them.
    EXPECT_TRUE(strokesAsMask([](CairoContext& context) { context.setLineDash({{1e-4, 1e-4}, 0.0}); }));
    EXPECT_FALSE(strokesAsMask([](CairoContext& context) { cairo_set_antialias(context.target(), CAIRO_ANTIALIAS_NONE); }));
    const auto nothing = [](CairoContext&) {};
    EXPECT_FALSE(strokesAsMask(nothing, [](Path path) {
        path.closeSubpath();
        return path;
    }));
    EXPECT_FALSE(strokesAsMask(nothing, [](Path path) {
        path.addLineToX(10.0, 50.0);
        return path;
    }));
    EXPECT_FALSE(strokesAsMask(nothing, [](const Path&) { return pathOf({{0.0, 20.0}, {150.0, 22.2}, {300.0, 23.7}}); }));
}

TEST(PolylineStrokes, translucentStrokesBlendOnce)
{
    // The spikes of the noise overlap all over the picture.
    Picture opaque(64, 64);
    Picture translucent(64, 64);
    for (Picture* picture : {&opaque, &translucent}) {
        CairoContext context(picture->target());
        context.setStrokeColor(Color(0.0, 0.0, 0.0, picture == &opaque ? 1.0 : 0.5));
        context.setLineWidth(3.0);
        context.drawStrokedPath(pathOf(noise(64, 64.0)));
    }
    int full = 0;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            EXPECT_NEAR(translucent.alpha(x, y), opaque.alpha(x, y) * 0.5, 1.0) << x << ", " << y;
            full += opaque.alpha(x, y) == 255 ? 1 : 0;
        }
    }
    EXPECT_GT(full, 1000);
}

TEST(PolylineStrokes, clipsAreThoseOfCairo)
{
    struct Case {
        const char* name;
        Path clip;
    };
    Path triangle;
    triangle.moveToX(10.0, 10.0);
    triangle.addLineToX(90.0, 20.0);
    triangle.addLineToX(30.0, 55.0);
    triangle.closeSubpath();
    Path two = Path::pathWithRect({5.0, 5.0, 20.0, 40.0});
    two.addRect({40.0, 10.0, 30.0, 40.0});
    const std::vector<Case> cases{
        {"whole pixels", Path::pathWithRect({10.0, 7.0, 50.0, 40.0})},
        {"parts of pixels", Path::pathWithRect({10.3, 7.6, 50.5, 40.1})},
        {"less than a pixel", Path::pathWithRect({33.25, 20.25, 0.5, 0.5})},
        {"triangle", triangle},
        {"two rectangles", two},
        {"oval", Path::pathWithOvalInRect({3.0, 3.0, 80.0, 50.0})},
        {"out of sight", Path::pathWithRect({300.0, 7.0, 50.0, 40.0})},
        {"larger than the picture", Path::pathWithRect({-300.0, -300.0, 1000.0, 1000.0})},
    };
    for (const Case& entry : cases) {
        // A line so wide that it covers the picture shows the clip's own coverage.
        Picture stroked(100, 60);
        Picture filled(100, 60);
        {
            CairoContext context(stroked.target());
            context.clipToPath(entry.clip, FillRule::NonZero);
            context.setLineWidth(500.0);
            std::vector<Point> points;
            for (int i = 0; i < 100; ++i)
                points.push_back({i * 3.0 - 100.0, 30.0});
            context.drawStrokedPath(pathOf(points));
        }
        CairoContext context(filled.target());
        context.clipToPath(entry.clip, FillRule::NonZero);
        context.fillRect({-10.0, -10.0, 200.0, 200.0});
        EXPECT_LE(differencesOf(stroked, filled).largest, 1) << entry.name;
    }
}

TEST(PolylineStrokes, pixelsAreThoseOfAMask)
{
    // A clip of two parts goes through Cairo.
    Path halves = Path::pathWithRect({0.0, 0.0, 30.0, 70.0});
    halves.addRect({30.0, 0.0, 41.0, 70.0});
    std::vector<Point> leftwards = noise(71, 70.0);
    std::reverse(leftwards.begin(), leftwards.end());
    for (const std::vector<Point>& points : {noise(71, 70.0), leftwards, wave(200, 0.35, 30.0, 20.0)}) {
        for (const cairo_format_t format : {CAIRO_FORMAT_ARGB32, CAIRO_FORMAT_RGB24}) {
            for (const double alpha : {1.0, 0.37, 0.004}) {
                for (const LineDash& dash : {LineDash{}, LineDash{{6.0, 3.0}, 1.0}}) {
                    Picture direct(71, 70, format);
                    Picture masked(71, 70, format);
                    for (Picture* picture : {&direct, &masked}) {
                        cairo_set_source_rgba(picture->target(), 0.9, 0.6, 0.2, 0.8);
                        cairo_rectangle(picture->target(), 10.0, 10.0, 40.0, 50.0);
                        cairo_fill(picture->target());
                        CairoContext context(picture->target());
                        if (picture == &masked)
                            context.clipToPath(halves, FillRule::NonZero);
                        context.setStrokeColor(Color(0.1, 0.45, 0.7, alpha));
                        context.setLineDash(dash);
                        context.setLineWidth(1.3);
                        context.drawStrokedPath(pathOf(points));
                    }
                    const std::uint32_t visible = format == CAIRO_FORMAT_RGB24 ? 0x00FFFFFFU : 0xFFFFFFFFU;
                    int different = 0;
                    for (int y = 0; y < 70; ++y) {
                        for (int x = 0; x < 71; ++x)
                            different += (direct.pixel(x, y) & visible) != (masked.pixel(x, y) & visible) ? 1 : 0;
                    }
                    EXPECT_EQ(different, 0) << "alpha " << alpha;
                }
            }
        }
    }
}

TEST(PolylineStrokes, pixelsDoNotDependOnTheNumberOfWorkers)
{
    const std::vector<Point> points = noise(700, 300.0);
    const int workers = raster::strokeWorkerCount();
    const auto pictureWith = [&](int count) {
        raster::setStrokeWorkerCount(count);
        Picture picture(720, 300);
        CairoContext context(picture.target());
        context.setStrokeColor(kBlue);
        context.drawStrokedPath(pathOf(points));
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < 300; ++y) {
            for (int x = 0; x < 720; ++x)
                pixels.push_back(picture.pixel(x, y));
        }
        return pixels;
    };
    const std::vector<std::uint32_t> alone = pictureWith(0);
    EXPECT_GT(std::count_if(alone.begin(), alone.end(), [](std::uint32_t pixel) { return pixel != 0; }), 100000);
    for (const int count : {1, 2, 3}) {
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(pictureWith(count), alone) << count;
    }
    raster::setStrokeWorkerCount(workers);
}

TEST(PolylineStrokes, whatIsPaintedIsSeenByCairo)
{
    // A copy of the image is taken before and after; in a group, and with another operator, Cairo paints.
    Picture picture(71, 70);
    Picture copy(71, 70);
    cairo_set_source_surface(copy.target(), picture.surface(), 0.0, 0.0);
    cairo_paint(copy.target());
    {
        CairoContext context(picture.target());
        context.drawStrokedPath(pathOf(noise(71, 70.0)));
    }
    cairo_paint(copy.target());
    EXPECT_EQ(differencesOf(picture, copy).largest, 0);
    Picture grouped(71, 70);
    cairo_push_group(grouped.target());
    {
        CairoContext context(grouped.target());
        context.drawStrokedPath(pathOf(noise(71, 70.0)));
    }
    EXPECT_EQ(grouped.alpha(35, 35), 0);
    cairo_pop_group_to_source(grouped.target());
    cairo_paint(grouped.target());
    EXPECT_LE(differencesOf(picture, grouped).largest, 30);
}

TEST(PolylineStrokes, turnedAndMirroredNoiseIsTheSame)
{
    const std::vector<Point> points = noise(120, 90.0);
    const auto draw = [&](Picture& picture, const AffineTransform& transform) {
        CairoContext context(picture.target());
        context.concatenateTransform(transform);
        context.drawStrokedPath(pathOf(points));
    };
    Picture upright(120, 90);
    Picture mirrored(120, 90);
    draw(upright, {});
    draw(mirrored, {-1.0, 0.0, 0.0, 1.0, 120.0, 0.0});
    int inked = 0;
    int different = 0;
    for (int y = 0; y < 90; ++y) {
        for (int x = 0; x < 120; ++x) {
            inked += upright.alpha(x, y) > 0 ? 1 : 0;
            different += std::abs(mirrored.alpha(119 - x, y) - upright.alpha(x, y)) > 16 ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 6000);
    EXPECT_LE(different, inked / 1000);
}

TEST(PolylineStrokes, turnedAndMirroredPicturesAreTheSame)
{
    const std::vector<Point> points = wave(400, 0.5, 30.0, 20.0);
    const auto draw = [&](Picture& picture, const AffineTransform& transform) {
        CairoContext context(picture.target());
        context.concatenateTransform(transform);
        context.setLineWidth(1.5);
        context.drawStrokedPath(pathOf(points));
    };
    Picture upright(200, 60);
    Picture mirrored(200, 60);
    Picture turned(200, 60);
    draw(upright, {});
    draw(mirrored, {-1.0, 0.0, 0.0, 1.0, 200.0, 0.0});
    draw(turned, {-1.0, 0.0, 0.0, -1.0, 200.0, 60.0});
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 200; ++x) {
            EXPECT_NEAR(mirrored.alpha(199 - x, y), upright.alpha(x, y), 1) << x << ", " << y;
            EXPECT_NEAR(turned.alpha(199 - x, 59 - y), upright.alpha(x, y), 1) << x << ", " << y;
        }
    }
}

TEST(PolylineStrokes, lengthsScaleWithTheTransform)
{
    // A hundred points on a level line; width 1, dashes of 4 and 2 points, four pixels to a point.
    std::vector<Point> points;
    for (int i = 0; i <= 100; ++i)
        points.push_back({i * 0.25, 2.0});
    Picture picture(32, 16);
    {
        CairoContext context(picture.target());
        context.concatenateTransform({4.0, 0.0, 0.0, 4.0, 0.0, 0.0});
        context.setLineDash({{4.0, 2.0}, 1.0});
        context.drawStrokedPath(pathOf(points));
    }
    for (int x = 0; x < 32; ++x) {
        for (int y = 0; y < 16; ++y) {
            const bool isPainted = y >= 6 && y < 10 && (x + 4) % 24 < 16;
            EXPECT_EQ(picture.alpha(x, y), isPainted ? 255 : 0) << x << ", " << y;
        }
    }
}

TEST(PolylineStrokes, cutLinesGoOnWithTheirDash)
{
    // Far beyond what Cairo can hold: the context cuts the line, and the dash starts in the middle of its pattern.
    Path path;
    path.moveToX(-3e6, 5.5);
    for (int i = 0; i <= 200; ++i)
        path.addLineToX(i * 0.2, 5.5);
    path.addLineToX(4e6, 5.5);
    Picture picture(40, 10);
    {
        CairoContext context(picture.target());
        context.setLineDash({{4.0, 6.0}, 0.0});
        context.drawStrokedPath(path);
    }
    for (int x = 0; x < 40; ++x)
        EXPECT_EQ(picture.alpha(x, 5), x % 10 < 4 ? 255 : 0) << x;
}

TEST(PolylineStrokes, anyImageAndAnyPointsAreHarmless)
{
    for (const auto& [width, height] : {std::pair{1, 1}, std::pair{1, 300}, std::pair{700, 1}, std::pair{257, 3}}) {
        for (const double bad : {0.5, kNaN, std::numeric_limits<double>::infinity(), 1e6, -1e6, 1e15, -1e300}) {
            for (const double lineWidth : {1e-300, 0.3, 20.0, 1e300}) {
                for (const LineDash& dash : {LineDash{}, LineDash{{2.0, 1.0}, 0.5}, LineDash{{1e-300, 1e-300}, 0.0}, LineDash{{1e300, 1.0}, 1e300}}) {
                    Picture picture(width, height);
                    CairoContext context(picture.target());
                    context.setLineWidth(lineWidth);
                    context.setLineDash(dash);
                    Path path = pathOf(noise(40, 10.0));
                    path.addLineToX(41.0, bad);
                    path.addLineToX(42.0, 1.0);
                    path.moveToX(0.0, bad);
                    path.addLineToX(std::abs(bad), 0.5);
                    context.drawStrokedPath(path);
                    EXPECT_EQ(context.error(), "");
                }
            }
        }
    }
}

TEST(PolylineStrokes, linesOfManyPiecesAndMovesAlone)
{
    Path path = pathOf(wave(100, 1.0, 10.0, 3.0));
    path.moveToX(0.0, 25.5);
    for (int i = 1; i < 100; ++i)
        path.addLineToX(i, 25.5);
    path.moveToX(50.0, 35.0);
    Picture picture(100, 40);
    {
        CairoContext context(picture.target());
        context.drawStrokedPath(path);
        EXPECT_EQ(context.error(), "");
    }
    EXPECT_EQ(picture.alpha(50, 25), 255);
    EXPECT_EQ(picture.alpha(50, 24), 0);
    EXPECT_EQ(picture.alpha(50, 35), 0);
    const auto alphasOfColumn = [&](int x) {
        int sum = 0;
        for (int y = 0; y < 20; ++y)
            sum += picture.alpha(x, y);
        return sum;
    };
    EXPECT_GT(alphasOfColumn(50), 240);
}

TEST(PolylineStrokes, tellsWhichTransformsKeepAngles)
{
    EXPECT_EQ(scaleKeepingAngles({2.0, 0.0, 0.0, -2.0, 7.0, 8.0}), 2.0);
    EXPECT_EQ(scaleKeepingAngles({3.0, 4.0, -4.0, 3.0, 0.0, 0.0}), 5.0);
    EXPECT_EQ(scaleKeepingAngles({3.0, 4.0, 4.0, -3.0, 0.0, 0.0}), 5.0);
    EXPECT_EQ(scaleKeepingAngles({2.0, 0.0, 0.0, 2.001, 0.0, 0.0}), std::nullopt);
    EXPECT_EQ(scaleKeepingAngles({1.0, 0.0, 0.5, 1.0, 0.0, 0.0}), std::nullopt);
    EXPECT_EQ(scaleKeepingAngles({0.0, 0.0, 0.0, 0.0, 0.0, 0.0}), std::nullopt);
    EXPECT_EQ(scaleKeepingAngles({kNaN, 0.0, 0.0, 1.0, 0.0, 0.0}), std::nullopt);
}

TEST(PolylineStrokes, longLinesOfOneDirectionAreTaken)
{
    const std::vector<Point> rightwards = wave(100, 1.0, 5.0, 2.0);
    const std::vector<Point> leftwards(rightwards.rbegin(), rightwards.rend());
    std::vector<Point> turning = rightwards;
    turning.push_back({50.0, 0.0});
    EXPECT_TRUE(longPolylines(pathOf(rightwards), {}).has_value());
    EXPECT_TRUE(longPolylines(pathOf(leftwards), {}).has_value());
    EXPECT_TRUE(longPolylines(pathOf(std::vector<Point>(100, Point{3.0, 3.0})), {}).has_value());
    EXPECT_FALSE(longPolylines(pathOf(turning), {}).has_value());
    EXPECT_FALSE(longPolylines(pathOf(rightwards), {0.0, 1.0, -1.0, 0.0, 0.0, 0.0}).has_value());
    EXPECT_FALSE(longPolylines({}, {}).has_value());
    // A rectangle around each of many points is a matter for Cairo.
    Path pieces;
    for (int i = 0; i < 100; ++i) {
        pieces.moveToX(i, 0.0);
        pieces.addLineToX(i, 5.0);
    }
    EXPECT_FALSE(longPolylines(pieces, {}).has_value());
    const auto lines = longPolylines(pathOf(rightwards), {2.0, 0.0, 0.0, 2.0, 1.0, 3.0});
    ASSERT_EQ(lines->size(), 1U);
    EXPECT_EQ(lines->front().points.size(), 100U);
    EXPECT_EQ(lines->front().points[1], (Point{3.0, 2.0 * rightwards[1].y + 3.0}));
}
