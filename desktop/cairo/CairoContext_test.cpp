#include "CairoContext.h"

#include "CairoPointers.h"
#include "TOLVGraphing/platform/graphics/GraphicsStateSaver.h"
#include "TOLVGraphing/platform/text/AttributedString.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>

using namespace TOLVGraphing;
using TOLVGraphing::cairo::CairoContext;
using TOLVGraphing::cairo::ContextPointer;
using TOLVGraphing::cairo::SurfacePointer;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint32_t kBlack = 0xFF000000U;
constexpr std::uint32_t kRed = 0xFFFF0000U;

/// A transparent image with a context whose points are pixels times `scale`, y growing upwards.
class Canvas {
public:
    explicit Canvas(int width = 20, int height = 10, double scale = 1.0)
        : m_surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height))
        , m_target(cairo_create(m_surface.get()))
    {
        cairo::setUpwardCoordinates(m_target.get(), height, scale);
        m_context = std::make_unique<CairoContext>(m_target.get());
    }

    CairoContext& context() { return *m_context; }
    cairo_t* target() { return m_target.get(); }
    void endDrawing() { m_context.reset(); }

    /// The premultiplied pixel, counted from the lower-left corner.
    std::uint32_t pixel(int x, int y)
    {
        cairo_surface_flush(m_surface.get());
        const int row = cairo_image_surface_get_height(m_surface.get()) - 1 - y;
        std::uint32_t value = 0;
        std::memcpy(&value, cairo_image_surface_get_data(m_surface.get()) + row * cairo_image_surface_get_stride(m_surface.get()) + x * 4, sizeof value);
        return value;
    }

    /// How many pixels are not transparent.
    int paintedCount()
    {
        int count = 0;
        for (int y = 0; y < cairo_image_surface_get_height(m_surface.get()); ++y) {
            for (int x = 0; x < cairo_image_surface_get_width(m_surface.get()); ++x)
                count += pixel(x, y) != 0U ? 1 : 0;
        }
        return count;
    }

    /// The pixels of a row as text, '#' where something is painted.
    std::string row(int y)
    {
        std::string text;
        for (int x = 0; x < cairo_image_surface_get_width(m_surface.get()); ++x)
            text += pixel(x, y) == 0U ? '.' : '#';
        return text;
    }

private:
    SurfacePointer m_surface;
    ContextPointer m_target;
    std::unique_ptr<CairoContext> m_context;
};

Path line(double x1, double y1, double x2, double y2)
{
    Path path;
    path.moveToX(x1, y1);
    path.addLineToX(x2, y2);
    return path;
}

} // namespace

TEST(CairoContext, fillsFromTheLowerLeftCorner)
{
    Canvas canvas;
    canvas.context().setFillColor(Color(1.0, 0.0, 0.0));
    canvas.context().fillRect({2.0, 1.0, 3.0, 4.0});
    EXPECT_EQ(canvas.pixel(2, 1), kRed);
    EXPECT_EQ(canvas.pixel(4, 4), kRed);
    EXPECT_EQ(canvas.paintedCount(), 12);
}

TEST(CairoContext, negativeHeightsFillDownwards)
{
    Canvas canvas;
    canvas.context().fillRect({2.0, 5.0, 3.0, -4.0});
    EXPECT_EQ(canvas.pixel(2, 4), kBlack);
    EXPECT_EQ(canvas.pixel(4, 1), kBlack);
    EXPECT_EQ(canvas.paintedCount(), 12);
}

TEST(CairoContext, linesBetweenPixelsAreExact)
{
    Canvas plain;
    plain.context().drawStrokedPath(line(0.0, 3.5, 20.0, 3.5));
    EXPECT_EQ(plain.pixel(7, 3), kBlack);
    EXPECT_EQ(plain.paintedCount(), 20);
    Canvas twofold(20, 10, 2.0);
    twofold.context().drawStrokedPath(line(0.0, 2.5, 10.0, 2.5));
    EXPECT_EQ(twofold.pixel(7, 4), kBlack);
    EXPECT_EQ(twofold.pixel(7, 5), kBlack);
    EXPECT_EQ(twofold.paintedCount(), 40);
}

TEST(CairoContext, coloursAreLimitedWhenPaintedAndAbsentOnesAreBlack)
{
    Canvas canvas;
    canvas.context().setFillColor(Color(7.0, -3.0, kNaN, 2.0));
    canvas.context().fillRect({0.0, 0.0, 1.0, 1.0});
    canvas.context().setFillColor(std::nullopt);
    canvas.context().fillRect({1.0, 0.0, 1.0, 1.0});
    canvas.context().setFillColor(Color(1.0, 1.0, 1.0, -1.0));
    canvas.context().fillRect({2.0, 0.0, 1.0, 1.0});
    canvas.context().setFillColor(Color(1.0, 0.0, 0.0, 0.5));
    canvas.context().fillRect({3.0, 0.0, 1.0, 1.0});
    EXPECT_EQ(canvas.pixel(0, 0), kRed);
    EXPECT_EQ(canvas.pixel(1, 0), kBlack);
    EXPECT_EQ(canvas.pixel(2, 0), 0U);
    EXPECT_EQ(canvas.pixel(3, 0), 0x80800000U);
}

TEST(CairoContext, savesAndRestoresEverySetting)
{
    Canvas canvas;
    CairoContext& context = canvas.context();
    context.saveState();
    context.setFillColor(Color(1.0, 0.0, 0.0));
    context.setStrokeColor(Color(1.0, 0.0, 0.0));
    context.setLineWidth(4.0);
    context.setLineDash({{1.0, 1.0}, 0.0});
    context.setLineCap(LineCap::Square);
    context.setLineJoin(LineJoin::Round);
    context.setMiterLimit(2.0);
    context.clipToPath(Path::pathWithRect({0.0, 0.0, 1.0, 1.0}), FillRule::NonZero);
    context.concatenateTransform({3.0, 0.0, 0.0, 3.0, 5.0, 5.0});
    context.restoreState();
    context.drawStrokedPath(line(2.0, 3.5, 18.0, 3.5));
    context.fillRect({2.0, 5.0, 16.0, 1.0});
    EXPECT_EQ(canvas.row(3), "..################..");
    EXPECT_EQ(canvas.row(5), "..################..");
    EXPECT_EQ(canvas.pixel(5, 3), kBlack);
    EXPECT_EQ(canvas.pixel(5, 5), kBlack);
    EXPECT_EQ(canvas.paintedCount(), 32);
}

TEST(CairoContext, unbalancedSavesAndRestoresAreHarmless)
{
    Canvas canvas;
    for (int i = 0; i < 3; ++i)
        canvas.context().restoreState();
    canvas.context().fillRect({0.0, 0.0, 1.0, 1.0});
    canvas.context().saveState();
    canvas.context().saveState();
    canvas.context().concatenateTransform({1.0, 0.0, 0.0, 1.0, 3.0, 0.0});
    canvas.context().fillRect({0.0, 0.0, 1.0, 1.0});
    EXPECT_EQ(canvas.row(0).substr(0, 5), "#..#.");
    EXPECT_EQ(canvas.context().error(), "");
    // The target comes back as it was given.
    canvas.endDrawing();
    cairo_matrix_t matrix;
    cairo_get_matrix(canvas.target(), &matrix);
    EXPECT_EQ(matrix.x0, 0.0);
    EXPECT_EQ(matrix.yy, -1.0);
}

TEST(CairoContext, clipsIntersectWithBothRules)
{
    Canvas canvas;
    Path ring = Path::pathWithRect({1.0, 0.0, 8.0, 5.0});
    ring.addRect({3.0, 0.0, 2.0, 5.0});
    {
        const GraphicsStateSaver saver(canvas.context());
        canvas.context().clipToPath(ring, FillRule::EvenOdd);
        canvas.context().clipToPath(Path::pathWithRect({0.0, 0.0, 7.0, 1.0}), FillRule::NonZero);
        canvas.context().fillRect({0.0, 0.0, 20.0, 10.0});
    }
    EXPECT_EQ(canvas.row(0).substr(0, 10), ".##..##...");
    EXPECT_EQ(canvas.paintedCount(), 4);
    canvas.context().clipToPath({}, FillRule::NonZero);
    canvas.context().fillRect({0.0, 0.0, 20.0, 10.0});
    EXPECT_EQ(canvas.paintedCount(), 4);
}

TEST(CairoContext, fillRulesDiffer)
{
    Canvas canvas;
    Path twice = Path::pathWithRect({0.0, 0.0, 4.0, 1.0});
    twice.addRect({1.0, 0.0, 2.0, 1.0});
    canvas.context().drawFilledPath(twice, FillRule::EvenOdd);
    EXPECT_EQ(canvas.row(0).substr(0, 6), "#..#..");
    canvas.context().drawFilledPath(twice, FillRule::NonZero);
    EXPECT_EQ(canvas.row(0).substr(0, 6), "####..");
}

TEST(CairoContext, dashesFollowPatternAndPhase)
{
    Canvas canvas;
    canvas.context().setLineDash({{3.0, 2.0}, 1.0});
    canvas.context().drawStrokedPath(line(0.0, 2.5, 20.0, 2.5));
    EXPECT_EQ(canvas.row(2), "##..###..###..###..#");
    // An odd pattern alternates paint and gap.
    canvas.context().setLineDash({{2.0}, 0.0});
    canvas.context().drawStrokedPath(line(0.0, 4.5, 20.0, 4.5));
    EXPECT_EQ(canvas.row(4), "##..##..##..##..##..");
    for (const LineDash& impossible : {LineDash{{0.0, 0.0}, 0.0}, LineDash{{-1.0, 2.0}, 0.0}, LineDash{{kNaN}, 0.0}, LineDash{{kInfinity, 1.0}, kNaN}}) {
        canvas.context().setLineDash(impossible);
        canvas.context().drawStrokedPath(line(0.0, 6.5, 20.0, 6.5));
        EXPECT_EQ(canvas.row(6), "####################");
    }
    EXPECT_EQ(canvas.context().error(), "");
}

TEST(CairoContext, capsAndJoins)
{
    Canvas butt;
    butt.context().setLineWidth(2.0);
    butt.context().drawStrokedPath(line(4.0, 3.0, 8.0, 3.0));
    EXPECT_EQ(butt.paintedCount(), 8);
    Canvas square;
    square.context().setLineWidth(2.0);
    square.context().setLineCap(LineCap::Square);
    square.context().drawStrokedPath(line(4.0, 3.0, 8.0, 3.0));
    EXPECT_EQ(square.paintedCount(), 12);
    Path corner = line(4.0, 2.0, 8.0, 2.0);
    corner.addLineToX(8.0, 6.0);
    Canvas miter;
    miter.context().setLineWidth(2.0);
    miter.context().drawStrokedPath(corner);
    EXPECT_EQ(miter.pixel(8, 1), kBlack);
    Canvas bevel;
    bevel.context().setLineWidth(2.0);
    bevel.context().setLineJoin(LineJoin::Bevel);
    bevel.context().drawStrokedPath(corner);
    EXPECT_NE(bevel.pixel(8, 1), kBlack);
}

TEST(CairoContext, widthsThatAreNotAboveZeroDrawNothing)
{
    for (const double width : {0.0, -2.0, kNaN, kInfinity, -kInfinity}) {
        Canvas canvas;
        canvas.context().setLineWidth(width);
        canvas.context().drawStrokedPath(line(0.0, 2.5, 20.0, 2.5));
        EXPECT_EQ(canvas.paintedCount(), 0) << width;
        EXPECT_EQ(canvas.context().error(), "");
    }
    Canvas covered;
    covered.context().setLineWidth(1e300);
    covered.context().drawStrokedPath(line(0.0, 2.5, 20.0, 2.5));
    EXPECT_EQ(covered.paintedCount(), 200);
}

TEST(CairoContext, nonFinitePointsAreLeftOut)
{
    Canvas canvas;
    Path path = line(2.0, 2.5, 6.0, 2.5);
    path.addLineToX(kNaN, 5.0);
    path.addLineToX(10.0, 2.5);
    canvas.context().drawStrokedPath(path);
    EXPECT_EQ(canvas.row(2), "..########..........");
    Path area;
    area.moveToX(kInfinity, 0.0);
    area.addLineToX(0.0, 5.0);
    area.addLineToX(4.0, 5.0);
    area.addLineToX(kNaN, kNaN);
    area.addLineToX(4.0, 6.0);
    area.addLineToX(0.0, 6.0);
    area.closeSubpath();
    canvas.context().drawFilledPath(area, FillRule::NonZero);
    EXPECT_EQ(canvas.row(5), "####................");
    canvas.context().drawText(AttributedString("1"), {kNaN, 0.0});
    EXPECT_EQ(canvas.context().error(), "");
}

TEST(CairoContext, hugeCoordinatesKeepTheirShape)
{
    Canvas canvas;
    canvas.context().drawStrokedPath(line(-1e12, 2.5, 1e12, 2.5));
    EXPECT_EQ(canvas.row(2), "####################");
    EXPECT_EQ(canvas.paintedCount(), 20);
    canvas.context().fillRect({10.0, 5.0, 1e300, 1e300});
    EXPECT_EQ(canvas.row(4), "....................");
    EXPECT_EQ(canvas.row(5), "..........##########");
    Canvas dashed;
    dashed.context().setLineDash({{3.0, 2.0}, 0.0});
    dashed.context().drawStrokedPath(line(-1e7, 2.5, 1e7, 2.5));
    EXPECT_EQ(dashed.row(2), "###..###..###..###..");
    Canvas clipped;
    clipped.context().clipToPath(Path::pathWithRect({5.0, -1e9, 5.0, 2e9}), FillRule::NonZero);
    clipped.context().fillRect({-1e9, 2.0, 2e9, 1.0});
    EXPECT_EQ(clipped.row(2), ".....#####..........");
    EXPECT_EQ(clipped.paintedCount(), 5);
}

TEST(CairoContext, dashedLinesOutOfSightCostLittle)
{
    Canvas canvas;
    Path path;
    for (int i = 0; i < 2000; ++i)
        path.addLineToX(i * 0.01, i % 2 == 0 ? -9e5 : 9e5);
    canvas.context().setLineDash({{0.5, 0.5}, 0.0});
    const auto start = std::chrono::steady_clock::now();
    canvas.context().drawStrokedPath(path);
    // Walking along 3.6 thousand million dashes would take minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_GT(canvas.paintedCount(), 0);
}

TEST(CairoContext, dashesTooFineToBeSeenWeakenTheLine)
{
    // A billion of them and more, in one straight line and in two thousand, which reach far out of sight as well.
    for (const double farthest : {20.0, 1e9}) {
        Canvas canvas;
        canvas.context().setLineDash({{1e-9, 3e-9}, 0.0});
        canvas.context().drawStrokedPath(line(-farthest, 2.5, farthest, 2.5));
        EXPECT_EQ(canvas.pixel(7, 2), 0x40000000U) << "a quarter of the line is painted";
        EXPECT_EQ(canvas.row(2), "####################");
        EXPECT_EQ(canvas.paintedCount(), 20);
        canvas.context().setLineCap(LineCap::Square);
        canvas.context().drawStrokedPath(line(-farthest, 4.5, farthest, 4.5));
        EXPECT_EQ(canvas.pixel(7, 4), kBlack) << "the caps cover the gaps";
        canvas.context().setLineDash({{3.0, 2.0}, 1.0});
        canvas.context().setLineCap(LineCap::Butt);
        canvas.context().drawStrokedPath(line(0.0, 6.5, 20.0, 6.5));
        EXPECT_EQ(canvas.row(6), "##..###..###..###..#") << "the next dash holds again";
    }
}

TEST(CairoContext, dashesOfALongLineThatFillsTheImageNeedLittleMemory)
{
    Canvas canvas(400, 300);
    Path path;
    for (int i = 0; i < 100'000; ++i)
        path.addLineToX(i * 0.004, i % 2 == 0 ? 0.0 : 300.0);
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    canvas.context().setLineDash({{5.0, 2.0}, 0.0});
    canvas.context().drawStrokedPath(path);
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    // Eight million dashes and gaps would take a gigabyte.
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 100L * 1024L);
    EXPECT_EQ(canvas.paintedCount(), 400 * 300);
}

TEST(CairoContext, transformsWithoutInverseDrawNothingUntilRestored)
{
    for (const AffineTransform& transform : {AffineTransform{0.0, 0.0, 0.0, 0.0, 1.0, 1.0}, AffineTransform{1.0, 0.0, 0.0, 0.0, 0.0, 0.0},
             AffineTransform{kNaN, 0.0, 0.0, 1.0, 0.0, 0.0}, AffineTransform{1.0, 0.0, 0.0, 1.0, kInfinity, 0.0}, AffineTransform{1e-200, 0.0, 0.0, 1e-200, 0.0, 0.0}}) {
        Canvas canvas;
        {
            const GraphicsStateSaver saver(canvas.context());
            canvas.context().concatenateTransform(transform);
            canvas.context().concatenateTransform({2.0, 0.0, 0.0, 2.0, 0.0, 0.0});
            canvas.context().fillRect({0.0, 0.0, 5.0, 5.0});
            canvas.context().drawStrokedPath(line(0.0, 0.0, 5.0, 5.0));
            canvas.context().drawText(AttributedString("1"), {0.0, 0.0});
            canvas.context().clipToPath(Path::pathWithRect({0.0, 0.0, 1.0, 1.0}), FillRule::NonZero);
        }
        EXPECT_EQ(canvas.paintedCount(), 0) << toString(transform);
        canvas.context().fillRect({0.0, 0.0, 5.0, 5.0});
        EXPECT_EQ(canvas.paintedCount(), 25) << toString(transform);
        EXPECT_EQ(canvas.context().error(), "");
    }
}

TEST(CairoContext, knowsThePixelsOfFillsThatCutNone)
{
    Canvas canvas(20, 10, 1.25);
    const CairoContext& context = canvas.context();
    // Rows count downwards from the top.
    EXPECT_EQ(context.wholePixelsOfFill({4.0, 0.0, 8.0, 4.0}), Rect(5.0, 5.0, 10.0, 5.0));
    EXPECT_EQ(context.fillOfWholePixels({5.0, 5.0, 10.0, 5.0}), Rect(4.0, 4.0, 8.0, -4.0));
    EXPECT_EQ(context.wholePixelsOfFill({4.0, 4.0, 8.0, -4.0}), Rect(5.0, 5.0, 10.0, 5.0));
    for (const Rect& rect : {Rect(), Rect(4.0, 0.0, 0.0, 4.0), Rect(4.0, 0.0, 1.0, 4.0), Rect(4.0, 0.5, 8.0, 4.0), Rect(kNaN, 0.0, 8.0, 4.0), Rect(0.0, 0.0, 8e6, 4.0)})
        EXPECT_EQ(context.wholePixelsOfFill(rect), std::nullopt) << toString(rect);
}

TEST(CairoContext, knowsNoWholePixelsWhereTheClipOrTheTransformCutsThem)
{
    Canvas canvas;
    CairoContext& context = canvas.context();
    const Rect rect(2.0, 2.0, 4.0, 4.0);
    const auto isKnownAfter = [&](const std::function<void()>& change) {
        const GraphicsStateSaver saver(context);
        change();
        return context.wholePixelsOfFill(rect).has_value();
    };
    EXPECT_TRUE(isKnownAfter([&] { context.clipToPath(Path::pathWithRect({1.0, 1.0, 8.0, 8.0}), FillRule::NonZero); }));
    EXPECT_FALSE(isKnownAfter([&] { context.clipToPath(Path::pathWithRect({1.5, 1.0, 8.0, 8.0}), FillRule::NonZero); }));
    EXPECT_FALSE(isKnownAfter([&] { context.clipToPath(Path::pathWithOvalInRect({1.0, 1.0, 8.0, 8.0}), FillRule::NonZero); }));
    EXPECT_FALSE(isKnownAfter([&] { context.concatenateTransform({1.0, 0.0, 0.0, 1.0, 0.5, 0.0}); }));
    EXPECT_FALSE(isKnownAfter([&] { context.concatenateTransform({0.0, 1.0, -1.0, 0.0, 0.0, 0.0}); }));
    EXPECT_TRUE(isKnownAfter([] {}));
}

TEST(CairoContext, knowsNoWholePixelsOfVectors)
{
    const SurfacePointer surface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    const ContextPointer target(cairo_create(surface.get()));
    EXPECT_EQ(CairoContext(target.get()).wholePixelsOfFill({2.0, 2.0, 4.0, 4.0}), std::nullopt);
}

TEST(CairoContext, textStandsOnItsBaselineAndUpright)
{
    // A capital without overhang: 12 points of Helvetica leave 0.23 em below the baseline and the letter is about 0.73 em high.
    Canvas canvas(40, 40, 1.0);
    canvas.context().drawText(AttributedString("L", TextAttributes{Font{"Helvetica", 20.0}, Color(1.0, 0.0, 0.0)}), {10.0, 5.0});
    int lowest = 40;
    int highest = -1;
    int widestRow = 0;
    int widest = 0;
    for (int y = 0; y < 40; ++y) {
        int width = 0;
        for (int x = 0; x < 40; ++x)
            width += canvas.pixel(x, y) != 0U ? 1 : 0;
        if (width == 0)
            continue;
        lowest = std::min(lowest, y);
        highest = std::max(highest, y);
        if (width > widest) {
            widest = width;
            widestRow = y;
        }
    }
    EXPECT_NEAR(lowest, 5.0 + 0.23 * 20.0, 1.0);
    EXPECT_NEAR(highest, 5.0 + (0.23 + 0.72) * 20.0, 1.5);
    // The foot of the L is at the bottom.
    EXPECT_LE(widestRow, lowest + 2);
}

TEST(CairoContext, textOutOfReachIsLeftOut)
{
    Canvas canvas;
    const auto draw = [&](const char* text, double size, Point origin) {
        canvas.context().drawText(AttributedString(text, TextAttributes{Font{"Helvetica", size}, std::nullopt}), origin);
    };
    draw("1", 12.0, {1e9, 0.0});
    draw("1", 12.0, {-1e300, 1e300});
    draw("1", 1e300, {0.0, 0.0});
    draw("1", 1e-300, {0.0, 0.0});
    draw("1", 1e-4, {5.0, 5.0});
    draw("1", kNaN, {0.0, 0.0});
    EXPECT_EQ(canvas.paintedCount(), 0);
    EXPECT_EQ(canvas.context().error(), "");
    for (const double scale : {1e-6, 1e-3, 1e3, 1e5, 1e9}) {
        const GraphicsStateSaver saver(canvas.context());
        canvas.context().concatenateTransform({scale, 0.0, 0.0, 1.0, 0.0, 0.0});
        draw("1", 12.0, {30.0, 30.0});
        canvas.context().concatenateTransform({1.0, 0.0, 0.0, scale, 0.0, 0.0});
        draw("1", 12.0, {30.0, 30.0});
    }
    // What the font library cannot do must not have spoilt the face.
    draw("1", 12.0, {5.0, 0.0});
    EXPECT_EQ(canvas.context().error(), "");
    EXPECT_GT(canvas.paintedCount(), 0);
}

TEST(CairoContext, equalLayoutAtEveryScale)
{
    // The ink of a long number ends at the same point, whatever the pixel density.
    const auto inkEnd = [](double scale) {
        Canvas canvas(static_cast<int>(100 * scale), static_cast<int>(20 * scale), scale);
        canvas.context().drawText(AttributedString("1,111,111,111H", TextAttributes{Font{"HelveticaNeue", 11.0}, std::nullopt}), {2.0, 2.0});
        int end = 0;
        for (int y = 0; y < static_cast<int>(20 * scale); ++y) {
            for (int x = 0; x < static_cast<int>(100 * scale); ++x)
                end = canvas.pixel(x, y) >> 24U > 127U ? std::max(end, x + 1) : end;
        }
        return end / scale;
    };
    const double exact = inkEnd(16.0);
    EXPECT_NEAR(inkEnd(1.0), exact, 0.6);
    EXPECT_NEAR(inkEnd(2.0), exact, 0.3);
    EXPECT_NEAR(inkEnd(4.0), exact, 0.15);
}
