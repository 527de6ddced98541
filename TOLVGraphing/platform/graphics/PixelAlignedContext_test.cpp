#include "PixelAlignedContext.h"

#include "../text/AttributedString.h"
#include "RecordingContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Lines = std::vector<std::string>;

Path lineFrom(Point from, Point to)
{
    Path path;
    path.moveToPoint(from);
    path.addLineToPoint(to);
    return path;
}

Path pathThrough(const std::vector<Point>& points)
{
    Path path;
    for (const Point& point : points)
        path.addLineToPoint(point);
    return path;
}

Lines callsAt(double ratio, const std::function<void(DrawingContext&)>& drawing)
{
    RecordingContext target;
    PixelAlignedContext context(target, ratio);
    drawing(context);
    EXPECT_EQ(target.depth(), 0);
    EXPECT_FALSE(target.hasUnmatchedRestore());
    return target.calls();
}

Lines strokesAt(double ratio, double width, const Path& path)
{
    return callsAt(ratio, [&](DrawingContext& context) {
        context.setLineWidth(width);
        context.drawStrokedPath(path);
    });
}

// Lines.

TEST(PixelAlignedContext, LinesAreAWholeNumberOfPixelsWideAndLieBetweenTheirEdges)
{
    struct Case {
        double ratio;
        double width;
        double y;
        /// In points; nothing where it stays.
        const char* alignedWidth;
        const char* alignedY;
        /// What keeps the weight of a line thinner than a pixel; nothing for others.
        const char* alpha = nullptr;
    };
    // The line's place in pixels is y times the ratio: half pixels for odd widths, whole ones for even widths.
    const Case cases[] = {
        {1.0, 1.0, 10.5, nullptr, "10.5"}, {1.0, 1.0, 10.0, nullptr, "10.5"}, {1.0, 1.0, 10.9, nullptr, "10.5"}, {1.0, 0.5, 10.5, "1", "10.5", "0.5"},
        {1.0, 2.0, 10.4, nullptr, "10"}, {1.0, 2.0, 10.5, nullptr, "11"}, {1.0, 2.5, 10.5, "3", "10.5"}, {1.25, 1.0, 10.5, "0.8", "10.8"}, // 13.125 -> 13.5
        {1.25, 0.5, 10.0, "0.8", "10", "0.625"},                                                                                           // 12.5
        {1.25, 2.0, 10.5, "2.4", "10.8"},                                                                                                  // 3 wide
        {1.25, 1.5, 10.5, "1.6", "10.4"},                                                                                                  // 1.875 -> 2 wide, 13.125 -> 13
        {1.5, 1.0, 10.5, "1.3333333333333333", "10.666666666666666"},                                                                      // 1.5 -> 2 wide, 15.75 -> 16
        {1.5, 0.5, 10.5, "0.6666666666666666", "10.333333333333334", "0.75"},                                                              // 1 wide, 15.75 -> 15.5
        {2.0, 1.0, 10.5, nullptr, "10.5"},                                                                                                 // 2 wide at 21
        {2.0, 1.0, 10.3, nullptr, "10.5"},                                                                                                 // 20.6 -> 21
        {2.0, 0.5, 10.5, nullptr, "10.75"},                                                                                                // 1 wide, 21 -> 21.5
        {3.0, 1.0, 10.5, nullptr, "10.5"},                                                                                                 // 3 wide at 31.5
        {3.0, 0.5, 10.5, "0.6666666666666666", "10.666666666666666"},                                                                      // 1.5 -> 2 wide, 31.5 -> 32
        {0.5, 1.0, 10.5, "2", "11", "0.5"},                                                                                                // 1 pixel, 5.25 -> 5.5
    };
    for (const Case& c : cases) {
        const std::string stroke = std::string("stroke M 0 ") + c.alignedY + " L 40 " + c.alignedY;
        Lines expected{callsAt(1.0, [&](DrawingContext& context) { context.setLineWidth(c.width); }).front()};
        if (c.alignedWidth)
            expected.insert(expected.end(), {"save", std::string("lineWidth ") + c.alignedWidth});
        if (c.alpha)
            expected.push_back(std::string("strokeColor (0, 0, 0, ") + c.alpha + ")");
        expected.push_back(stroke);
        if (c.alignedWidth)
            expected.emplace_back("restore");
        EXPECT_EQ(strokesAt(c.ratio, c.width, lineFrom({0.0, c.y}, {40.0, c.y})), expected) << c.ratio << " " << c.width << " " << c.y;
    }
}

TEST(PixelAlignedContext, ThinLinesAreFainterByTheColourOfTheState)
{
    const auto calls = callsAt(1.0, [](DrawingContext& context) {
        context.setLineWidth(0.25);
        context.setStrokeColor(Color(1.0, 0.0, 0.0, 0.5));
        context.saveState();
        context.setStrokeColor(Color(0.0, 0.0, 1.0));
        context.restoreState();
        context.drawStrokedPath(lineFrom({0.0, 10.5}, {40.0, 10.5}));
    });
    EXPECT_EQ(Lines(calls.end() - 5, calls.end()), (Lines{"save", "lineWidth 1", "strokeColor (1, 0, 0, 0.125)", "stroke M 0 10.5 L 40 10.5", "restore"}));
}

TEST(PixelAlignedContext, UprightLinesAreAlignedLikeLyingOnes)
{
    EXPECT_EQ(strokesAt(1.25, 1.0, lineFrom({10.5, 0.0}, {10.5, 40.0})), (Lines{"lineWidth 1", "save", "lineWidth 0.8", "stroke M 10.8 0 L 10.8 40", "restore"}));
}

TEST(PixelAlignedContext, OpenEndsGoToTheNearestEdgesOfPixels)
{
    EXPECT_EQ(strokesAt(1.0, 1.0, lineFrom({1.4, 5.0}, {8.6, 5.0})), (Lines{"lineWidth 1", "stroke M 1 5.5 L 9 5.5"}));
    EXPECT_EQ(strokesAt(1.0, 1.0, lineFrom({8.6, 5.0}, {1.5, 5.0})), (Lines{"lineWidth 1", "stroke M 9 5.5 L 2 5.5"}));
    EXPECT_EQ(strokesAt(2.0, 1.0, lineFrom({3.0, 1.2}, {3.0, 7.3})), (Lines{"lineWidth 1", "stroke M 3 1 L 3 7.5"}));
}

TEST(PixelAlignedContext, CapsThatStickOutEndOnEdgesOfPixels)
{
    const auto capped = [](LineCap cap, double width) {
        return callsAt(1.0, [&](DrawingContext& context) {
            context.setLineCap(cap);
            context.setLineWidth(width);
            context.drawStrokedPath(lineFrom({1.4, 5.0}, {8.6, 5.0}));
        }).back();
    };
    EXPECT_EQ(capped(LineCap::Butt, 1.0), "stroke M 1 5.5 L 9 5.5");
    EXPECT_EQ(capped(LineCap::Square, 1.0), "stroke M 1.5 5.5 L 8.5 5.5");
    EXPECT_EQ(capped(LineCap::Round, 1.0), "stroke M 1.5 5.5 L 8.5 5.5");
    EXPECT_EQ(capped(LineCap::Square, 2.0), "stroke M 1 5 L 9 5");
}

TEST(PixelAlignedContext, LinesTooShortForTheirEndsKeepTheirLength)
{
    EXPECT_EQ(strokesAt(1.0, 1.0, lineFrom({3.6, 5.0}, {4.2, 5.0})).back(), "stroke M 3.6 5.5 L 4.2 5.5");
    EXPECT_EQ(strokesAt(1.0, 1.0, lineFrom({3.2, 5.0}, {3.2, 5.3})).back(), "stroke M 3.5 5 L 3.5 5.3");
    EXPECT_EQ(strokesAt(1.0, 1.0, pathThrough({{3.6, 5.0}, {3.8, 5.0}, {4.2, 5.0}})).back(), "stroke M 3.6 5.5 L 3.8 5.5 L 4.2 5.5");
    EXPECT_EQ(strokesAt(1.0, 1.0, lineFrom({3.4, 5.0}, {3.6, 5.0})).back(), "stroke M 3 5.5 L 4 5.5");
    // A point has no direction.
    EXPECT_EQ(strokesAt(1.0, 1.0, lineFrom({3.2, 5.0}, {3.2, 5.0})).back(), "stroke M 3.5 5.5 L 3.5 5.5");
}

TEST(PixelAlignedContext, StepsAreAlignedAtEveryCorner)
{
    EXPECT_EQ(strokesAt(1.0, 1.0, pathThrough({{0.2, 1.1}, {3.3, 1.1}, {3.3, 4.8}, {7.7, 4.8}})).back(), "stroke M 0 1.5 L 3.5 1.5 L 3.5 4.5 L 8 4.5");
    // Between its ends a line goes on to the edges of pixels, so that no point lies beyond an end.
    EXPECT_EQ(strokesAt(1.0, 1.0, pathThrough({{0.4, 2.0}, {3.3, 2.0}, {10.2, 2.0}, {10.4, 2.0}})).back(), "stroke M 0 2.5 L 3 2.5 L 10 2.5 L 10 2.5");
    // Equal points side by side are one corner.
    EXPECT_EQ(strokesAt(1.0, 1.0, pathThrough({{0.2, 1.1}, {3.3, 1.1}, {3.3, 1.1}, {3.3, 4.8}})).back(), "stroke M 0 1.5 L 3.5 1.5 L 3.5 1.5 L 3.5 5");
}

TEST(PixelAlignedContext, RectanglesAreStrokedBetweenTheEdgesOfPixels)
{
    struct Case {
        double ratio;
        const char* width;
        const char* path;
    };
    const Case cases[] = {
        {1.0, nullptr, "M 10.5 20.5 L 49.5 20.5 L 49.5 69.5 L 10.5 69.5 Z"},
        {1.25, "0.8", "M 10.8 20.4 L 49.2 20.4 L 49.2 69.2 L 10.8 69.2 Z"}, // 13.125 25.625 61.875 86.875 -> 13.5 25.5 61.5 86.5
        {2.0, nullptr, "M 10.5 20.5 L 49.5 20.5 L 49.5 69.5 L 10.5 69.5 Z"},
        {3.0, nullptr, "M 10.5 20.5 L 49.5 20.5 L 49.5 69.5 L 10.5 69.5 Z"},
    };
    for (const Case& c : cases) {
        Lines expected{"lineWidth 1"};
        if (c.width)
            expected.insert(expected.end(), {"save", std::string("lineWidth ") + c.width});
        expected.push_back(std::string("stroke ") + c.path);
        if (c.width)
            expected.emplace_back("restore");
        EXPECT_EQ(strokesAt(c.ratio, 1.0, Path::pathWithRect({10.5, 20.5, 39.0, 49.0})), expected) << c.ratio;
    }
}

TEST(PixelAlignedContext, AClosedLineThatReturnsToItsBeginningIsAlignedLikeOneThatIsClosed)
{
    Path path = pathThrough({{1.1, 1.1}, {5.2, 1.1}, {5.2, 5.2}, {1.1, 5.2}, {1.1, 1.1}});
    path.closeSubpath();
    EXPECT_EQ(strokesAt(1.0, 1.0, path).back(), "stroke M 1.5 1.5 L 5.5 1.5 L 5.5 5.5 L 1.5 5.5 L 1.5 1.5 Z");
}

TEST(PixelAlignedContext, SeveralLinesInOnePathAreAlignedEachForItself)
{
    Path path = lineFrom({0.0, 1.2}, {9.0, 1.2});
    path.addPath(lineFrom({2.7, 0.0}, {2.7, 9.0}));
    path.addRect({4.2, 4.2, 2.0, 2.0});
    EXPECT_EQ(strokesAt(1.0, 1.0, path).back(), "stroke M 0 1.5 L 9 1.5 M 2.5 0 L 2.5 9 M 4.5 4.5 L 6.5 4.5 L 6.5 6.5 L 4.5 6.5 Z");
}

TEST(PixelAlignedContext, EqualCoordinatesGoToTheSamePlaceWhateverRoundingDidToThem)
{
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (int step = 0; step <= 400; ++step) {
            const double y = 7.0 + step / 40.0;
            const auto one = strokesAt(ratio, 1.0, lineFrom({0.0, y}, {8.0, y}));
            const double before = std::nextafter(y, 0.0);
            const double after = std::nextafter(y, 100.0);
            EXPECT_EQ(strokesAt(ratio, 1.0, lineFrom({0.0, before}, {8.0, before})), one) << ratio << " " << y;
            EXPECT_EQ(strokesAt(ratio, 1.0, lineFrom({0.0, after}, {8.0, after})), one) << ratio << " " << y;
        }
    }
}

/// Keeps the paths that it is given.
class PathKeeper final : public ForwardingContext {
public:
    explicit PathKeeper(DrawingContext& target) : ForwardingContext(target) {}
    void drawFilledPath(const Path& path, FillRule) override { fills.push_back(path); }
    void drawStrokedPath(const Path& path) override { strokes.push_back(path); }
    void setLineWidth(double width) override { widths.push_back(width); }

    std::vector<Path> fills;
    std::vector<Path> strokes;
    std::vector<double> widths;
};

TEST(PixelAlignedContext, NoCoordinateMovesByMoreThanHalfAPixel)
{
    for (const double ratio : {0.7, 1.0, 1.25, 1.5, 2.0, 2.75, 3.0}) {
        RecordingContext recording;
        PathKeeper keeper(recording);
        PixelAlignedContext context(keeper, ratio);
        std::vector<Path> paths;
        for (int step = 0; step < 50; ++step) {
            const double offset = step * 0.137;
            paths.push_back(Path::pathWithRect({3.0 + offset, 4.0 - offset, 20.0 + 0.31 * offset, 30.0 - offset}));
            context.setLineWidth(0.3 + 0.11 * step);
            context.drawStrokedPath(paths.back());
            context.drawFilledPath(paths.back(), FillRule::NonZero);
        }
        const double most = 0.5 / ratio + 1e-8;
        for (std::size_t i = 0; i < paths.size(); ++i) {
            for (std::size_t k = 0; k < paths[i].points().size(); ++k) {
                for (const Path* aligned : {&keeper.strokes[i], &keeper.fills[i]}) {
                    EXPECT_NEAR(aligned->points()[k].x, paths[i].points()[k].x, most) << ratio;
                    EXPECT_NEAR(aligned->points()[k].y, paths[i].points()[k].y, most) << ratio;
                }
            }
        }
    }
}

TEST(PixelAlignedContext, RepeatsAreAlignedAsTheirPathsAre)
{
    const std::vector<Point> places{{0.3, 0.4}, {10.7, 3.2}, {5.0, 6.0}};
    Path slanted = lineFrom({0.0, 0.0}, {3.0, 2.0});
    for (const Path& path : {Path::pathWithRect({0.2, 0.1, 3.3, 2.2}), lineFrom({0.0, 0.25}, {5.0, 0.25}), slanted, Path::pathWithOvalInRect({0.1, 0.1, 4.0, 4.0})}) {
        const auto repeats = callsAt(1.25, [&](DrawingContext& context) {
            context.drawFilledRepeats(path, FillRule::NonZero, places);
            context.drawStrokedRepeats(path, places);
        });
        const auto paths = callsAt(1.25, [&](DrawingContext& context) {
            for (const bool isStroke : {false, true}) {
                for (const Point& place : places) {
                    Path moved = path;
                    moved.transformUsingAffineTransform({1.0, 0.0, 0.0, 1.0, place.x, place.y});
                    if (isStroke)
                        context.drawStrokedPath(moved);
                    else
                        context.drawFilledPath(moved, FillRule::NonZero);
                }
            }
        });
        EXPECT_EQ(repeats, paths) << toString(path);
    }
}

TEST(PixelAlignedContext, DashesKeepTheirLengths)
{
    const auto calls = callsAt(1.25, [](DrawingContext& context) {
        context.setLineDash({{5.0, 2.0}, 1.0});
        context.drawStrokedPath(lineFrom({0.0, 10.5}, {40.0, 10.5}));
    });
    EXPECT_EQ(calls, (Lines{"lineDash 1 [5, 2]", "save", "lineWidth 0.8", "stroke M 0 10.8 L 40 10.8", "restore"}));
}

TEST(PixelAlignedContext, LineWidthAndCapAreThoseOfTheState)
{
    const auto calls = callsAt(1.0, [](DrawingContext& context) {
        context.saveState();
        context.setLineWidth(2.0);
        context.setLineCap(LineCap::Square);
        context.restoreState();
        // Nothing is left to restore.
        context.restoreState();
        context.drawStrokedPath(lineFrom({0.0, 10.0}, {40.0, 10.0}));
    });
    EXPECT_EQ(calls, (Lines{"save", "lineWidth 2", "lineCap square", "restore", "stroke M 0 10.5 L 40 10.5"}));
}

// What passes unchanged.

TEST(PixelAlignedContext, OtherLinesPassUnchanged)
{
    Path curve;
    curve.moveToX(1.2, 1.2);
    curve.addCurveToPoint({5.2, 1.2}, {2.2, 1.2}, {3.2, 1.2});
    Path mixed = lineFrom({1.2, 1.2}, {5.2, 1.2});
    mixed.addPath(lineFrom({0.0, 0.0}, {5.2, 1.2}));
    Path triangle = pathThrough({{1.2, 1.2}, {5.2, 1.2}, {5.2, 3.2}});
    triangle.closeSubpath();
    Path goesOn = Path::pathWithRect({1.2, 1.2, 3.0, 3.0});
    goesOn.addLineToX(1.2, 0.3);
    const Path paths[]
        = {lineFrom({1.2, 1.2}, {5.2, 1.3}), curve, mixed, triangle, goesOn, Path(), Path::pathWithRoundedRect({1.2, 1.2, 5.0, 5.0}, 1.0, 1.0), lineFrom({kNaN, 1.2}, {5.2, 1.2}),
            lineFrom({1.2, kNaN}, {5.2, kNaN}), lineFrom({-kInfinity, 1.2}, {kInfinity, 1.2}), lineFrom({1.2, 1e10}, {5.2, 1e10}), lineFrom({-1e300, 1.2}, {1e300, 1.2})};
    for (const Path& path : paths)
        EXPECT_EQ(strokesAt(1.25, 1.0, path), (Lines{"lineWidth 1", "stroke " + toString(path)}));
}

TEST(PixelAlignedContext, LinesOfUnusableWidthPassUnchanged)
{
    for (const double width : {0.0, -1.0, kNaN, kInfinity, 1e300})
        EXPECT_EQ(strokesAt(1.25, width, lineFrom({0.0, 10.2}, {40.0, 10.2})).back(), "stroke M 0 10.2 L 40 10.2") << width;
}

TEST(PixelAlignedContext, WithoutAUsableRatioEverythingPassesUnchanged)
{
    const Path rect = Path::pathWithRect({1.2, 1.2, 3.0, 3.0});
    for (const double ratio : {0.0, -1.0, kNaN, kInfinity}) {
        const auto calls = callsAt(ratio, [&](DrawingContext& context) {
            context.drawStrokedPath(rect);
            context.drawFilledPath(rect, FillRule::EvenOdd);
            context.clipToPath(rect, FillRule::NonZero);
        });
        EXPECT_EQ(calls, (Lines{"stroke " + toString(rect), "eofill " + toString(rect), "clip " + toString(rect)})) << ratio;
    }
}

TEST(PixelAlignedContext, TextColorsAndTheRestPassUnchanged)
{
    const auto calls = callsAt(1.25, [](DrawingContext& context) {
        context.setFillColor(Color::whiteColor());
        context.setStrokeColor(std::nullopt);
        context.setLineJoin(LineJoin::Round);
        context.setMiterLimit(3.0);
        context.drawText(AttributedString("Tj", {Font{"HelveticaNeue", 9.5}, Color::grayColor()}), {1.3, 2.2});
    });
    EXPECT_EQ(calls, (Lines{"fillColor (1, 1, 1, 1)", "strokeColor none", "lineJoin round", "miterLimit 3", "text \"Tj\" HelveticaNeue 9.5 (0.5, 0.5, 0.5, 1) at (1.3, 2.2)"}));
}

// Areas and clips.

TEST(PixelAlignedContext, EdgesOfFilledRectanglesGoToTheNearestEdgesOfPixels)
{
    struct Case {
        double ratio;
        Rect rect;
        const char* path;
    };
    const Case cases[] = {
        {1.0, {1.0, 2.0, 3.0, 4.0}, "M 1 2 L 4 2 L 4 6 L 1 6 Z"},
        {1.0, {1.4, 2.5, 3.2, 4.2}, "M 1 3 L 5 3 L 5 7 L 1 7 Z"},
        {1.25, {1.0, 2.0, 3.0, 4.0}, "M 0.8 2.4 L 4 2.4 L 4 6.4 L 0.8 6.4 Z"}, // 1.25 2.5 5 7.5 -> 1 3 5 8
        {1.5, {1.0, 2.0, 3.0, 4.0}, "M 1.3333333333333333 2 L 4 2 L 4 6 L 1.3333333333333333 6 Z"},
        {2.0, {1.3, 2.2, 3.0, 4.0}, "M 1.5 2 L 4.5 2 L 4.5 6 L 1.5 6 Z"},
        {3.0, {1.0, 2.0, 3.0, 4.0}, "M 1 2 L 4 2 L 4 6 L 1 6 Z"},
        // Downwards.
        {1.0, {1.4, 6.7, 3.2, -4.2}, "M 1 7 L 5 7 L 5 3 L 1 3 Z"},
        // What has an area keeps a pixel.
        {1.0, {1.6, 2.0, 0.3, 4.0}, "M 1 2 L 2 2 L 2 6 L 1 6 Z"},
        {1.0, {1.2, 2.1, 3.0, 0.2}, "M 1 2 L 4 2 L 4 3 L 1 3 Z"},
        {1.0, {1.2, 2.9, 3.0, 0.2}, "M 1 3 L 4 3 L 4 4 L 1 4 Z"},
        {1.0, {1.2, 3.2, 3.0, -0.1}, "M 1 4 L 4 4 L 4 3 L 1 3 Z"},
        {2.0, {1.1, 2.0, 0.05, 4.0}, "M 1 2 L 1.5 2 L 1.5 6 L 1 6 Z"},
        // What has none stays.
        {1.0, {1.2, 2.1, 0.0, 4.2}, "M 1.2 2.1 L 1.2 2.1 L 1.2 6.300000000000001 L 1.2 6.300000000000001 Z"},
        {1.0, {1.2, 2.1, 3.0, 0.0}, "M 1.2 2.1 L 4.2 2.1 L 4.2 2.1 L 1.2 2.1 Z"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(callsAt(c.ratio, [&](DrawingContext& context) { context.fillRect(c.rect); }), Lines{std::string("fill ") + c.path}) << c.ratio << " " << toString(c.rect);
}

TEST(PixelAlignedContext, NeighboursOfFilledRectanglesStayNeighbours)
{
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        RecordingContext recording;
        PathKeeper keeper(recording);
        PixelAlignedContext context(keeper, ratio);
        for (int i = 0; i < 40; ++i)
            context.fillRect({i * 2.3, 0.0, (i + 1) * 2.3 - i * 2.3, 5.0});
        for (std::size_t i = 1; i < keeper.fills.size(); ++i)
            EXPECT_EQ(keeper.fills[i].points()[0].x, keeper.fills[i - 1].points()[1].x) << ratio << " " << i;
    }
}

TEST(PixelAlignedContext, ARectangleMayBeginAnywhereAndBeDrawnInEitherDirection)
{
    const auto filled = [](const Path& path) { return callsAt(1.0, [&](DrawingContext& context) { context.drawFilledPath(path, FillRule::NonZero); }).front(); };
    EXPECT_EQ(filled(pathThrough({{4.2, 1.2}, {4.2, 6.2}, {1.2, 6.2}, {1.2, 1.2}})), "fill M 4 1 L 4 6 L 1 6 L 1 1");
    EXPECT_EQ(filled(pathThrough({{1.2, 1.2}, {1.2, 6.2}, {4.2, 6.2}, {4.2, 1.2}, {1.2, 1.2}})), "fill M 1 1 L 1 6 L 4 6 L 4 1 L 1 1");
}

TEST(PixelAlignedContext, OtherAreasPassUnchanged)
{
    Path two = Path::pathWithRect({1.2, 1.2, 3.0, 3.0});
    two.addRect({6.2, 1.2, 3.0, 3.0});
    const Path paths[] = {Path(), two, pathThrough({{1.2, 1.2}, {4.2, 1.2}, {4.2, 5.2}}), pathThrough({{1.2, 1.2}, {4.2, 1.2}, {4.2, 5.2}, {1.3, 5.2}}),
        pathThrough({{1.2, 1.2}, {4.2, 1.2}, {4.2, 5.2}, {1.2, 5.2}, {1.2, 1.3}}), Path::pathWithOvalInRect({1.2, 1.2, 3.0, 3.0}), Path::pathWithRect({1.2, 1.2, kInfinity, 3.0}),
        Path::pathWithRect({kNaN, 1.2, 3.0, 3.0}), Path::pathWithRect({1.2, -1e12, 3.0, 2e12})};
    for (const Path& path : paths) {
        EXPECT_EQ(callsAt(1.25, [&](DrawingContext& context) { context.drawFilledPath(path, FillRule::NonZero); }), Lines{"fill " + toString(path)});
        EXPECT_EQ(callsAt(1.25, [&](DrawingContext& context) { context.clipToPath(path, FillRule::EvenOdd); }), Lines{"eoclip " + toString(path)});
    }
}

TEST(PixelAlignedContext, ClipsGrowToWholePixels)
{
    struct Case {
        double ratio;
        Rect rect;
        const char* path;
    };
    const Case cases[] = {
        {1.0, {1.0, 2.0, 3.0, 4.0}, "M 1 2 L 4 2 L 4 6 L 1 6 Z"},
        {1.0, {1.4, 2.9, 3.2, 4.2}, "M 1 2 L 5 2 L 5 8 L 1 8 Z"},
        {1.25, {1.0, 2.0, 3.0, 4.0}, "M 0.8 1.6 L 4 1.6 L 4 6.4 L 0.8 6.4 Z"}, // 1.25 2.5 5 7.5 -> 1 2 5 8
        {2.0, {1.3, 2.2, 3.0, 4.0}, "M 1 2 L 4.5 2 L 4.5 6.5 L 1 6.5 Z"},
        {1.0, {1.4, 7.1, 3.2, -4.2}, "M 1 8 L 5 8 L 5 2 L 1 2 Z"},
        // What lets nothing through stays so.
        {1.0, {1.2, 2.5, 0.0, 4.0}, "M 1.2 2.5 L 1.2 2.5 L 1.2 6.5 L 1.2 6.5 Z"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(callsAt(c.ratio, [&](DrawingContext& context) { context.clipToPath(Path::pathWithRect(c.rect), FillRule::NonZero); }), Lines{std::string("clip ") + c.path})
            << c.ratio;
}

TEST(PixelAlignedContext, AClipOnTheGridUpToRoundingDoesNotGrow)
{
    // 0.1 + 0.2 is a little more than 0.3.
    const auto calls = callsAt(10.0, [](DrawingContext& context) { context.clipToPath(Path::pathWithRect({0.1, 0.1, 0.2, 0.2}), FillRule::NonZero); });
    EXPECT_EQ(calls, Lines{"clip M 0.1 0.1 L 0.3 0.1 L 0.3 0.3 L 0.1 0.3 Z"});
}

// Transforms.

TEST(PixelAlignedContext, AlignsUnderMovesScalesAndFlips)
{
    const auto transformed = [](double ratio, const AffineTransform& transform) {
        return callsAt(ratio, [&](DrawingContext& context) {
            context.saveState();
            context.concatenateTransform(transform);
            context.drawStrokedPath(lineFrom({0.0, 10.0}, {8.0, 10.0}));
            context.fillRect({0.2, 0.2, 2.0, 2.0});
            context.restoreState();
            context.drawStrokedPath(lineFrom({0.0, 10.0}, {8.0, 10.0}));
        });
    };
    EXPECT_EQ(transformed(1.0, {1.0, 0.0, 0.0, 1.0, 0.25, 0.75}),
        (Lines{"save", "transform [1 0 0 1 0.25 0.75]", "stroke M -0.25 9.75 L 7.75 9.75", "fill M -0.25 0.25 L 1.75 0.25 L 1.75 2.25 L -0.25 2.25 Z", "restore",
            "stroke M 0 10.5 L 8 10.5"}));
    // Downwards from 20.25.
    EXPECT_EQ(transformed(1.0, {1.0, 0.0, 0.0, -1.0, 0.0, 20.25}),
        (Lines{"save", "transform [1 0 0 -1 0 20.25]", "stroke M 0 9.75 L 8 9.75", "fill M 0 0.25 L 2 0.25 L 2 2.25 L 0 2.25 Z", "restore", "stroke M 0 10.5 L 8 10.5"}));
    // Four pixels wide altogether.
    EXPECT_EQ(transformed(2.0, {2.0, 0.0, 0.0, 2.0, 0.125, 0.0}),
        (Lines{"save", "transform [2 0 0 2 0.125 0]", "stroke M -0.0625 10 L 7.9375 10", "fill M 0.1875 0.25 L 2.1875 0.25 L 2.1875 2.25 L 0.1875 2.25 Z", "restore",
            "stroke M 0 10 L 8 10"}));
}

TEST(PixelAlignedContext, OneStretchedDirectionAlignsAreasOnly)
{
    const auto calls = callsAt(1.0, [](DrawingContext& context) {
        context.concatenateTransform({2.0, 0.0, 0.0, 1.0, 0.0, 0.0});
        context.drawStrokedPath(lineFrom({0.0, 10.2}, {8.0, 10.2}));
        context.fillRect({0.2, 0.2, 2.0, 2.0});
    });
    EXPECT_EQ(calls, (Lines{"transform [2 0 0 1 0 0]", "stroke M 0 10.2 L 8 10.2", "fill M 0 0 L 2 0 L 2 2 L 0 2 Z"}));
}

TEST(PixelAlignedContext, NothingIsAlignedUnderTurnsShearsAndTransformsWithoutInverse)
{
    AffineTransform turned;
    turned.rotateDegrees(30.0);
    AffineTransform upright;
    upright.rotateDegrees(90.0);
    const Path line = lineFrom({0.2, 10.2}, {8.2, 10.2});
    const Path rect = Path::pathWithRect({0.2, 0.2, 2.0, 2.0});
    const AffineTransform transforms[] = {turned, upright, {1.0, 0.0, 0.5, 1.0, 0.0, 0.0}, {0.0, 1.0, -1.0, 0.0, 0.0, 0.0}, {0.0, 0.0, 0.0, 1.0, 0.0, 0.0},
        {kNaN, 0.0, 0.0, 1.0, 0.0, 0.0}, {1.0, 0.0, 0.0, 1.0, kInfinity, 0.0}};
    for (const AffineTransform& transform : transforms) {
        const auto calls = callsAt(1.0, [&](DrawingContext& context) {
            context.concatenateTransform(transform);
            context.drawStrokedPath(line);
            context.drawFilledPath(rect, FillRule::NonZero);
            context.clipToPath(rect, FillRule::NonZero);
        });
        EXPECT_EQ(calls, (Lines{"transform " + toString(transform), "stroke " + toString(line), "fill " + toString(rect), "clip " + toString(rect)}));
    }
}

// Whole pixels.

TEST(PixelAlignedContext, KnowsThePixelsOfAFill)
{
    struct Case {
        double ratio;
        Rect rect;
        Rect pixels;
    };
    const Case cases[] = {
        {1.0, {0.2, 0.2, 2.0, 2.0}, {0.0, 0.0, 2.0, 2.0}},
        {1.0, {3.0, 4.0, 1.0, -2.5}, {3.0, 2.0, 1.0, 2.0}}, // From 1.5 to 4.
        {1.0, {3.6, 4.6, 0.1, 0.3}, {3.0, 4.0, 1.0, 1.0}},
        {1.25, {2.0, 2.0, 2.0, 3.0}, {3.0, 3.0, 2.0, 3.0}}, // From 2.5 to 5 and to 6.25.
        {2.0, {0.25, 0.0, 1.0, 1.0}, {1.0, 0.0, 2.0, 2.0}},
    };
    for (const Case& c : cases) {
        RecordingContext target;
        PixelAlignedContext context(target, c.ratio);
        EXPECT_EQ(context.wholePixelsOfFill(c.rect), c.pixels) << toString(c.rect);
        // It is what the fill is drawn as.
        context.fillRect(c.rect);
        context.fillRect(context.fillOfWholePixels(c.pixels));
        ASSERT_EQ(target.calls().size(), 2U);
        EXPECT_EQ(context.wholePixelsOfFill(context.fillOfWholePixels(c.pixels)), c.pixels);
        if (c.rect.height() > 0.0) {
            EXPECT_EQ(target.calls()[0], target.calls()[1]);
        }
    }
}

TEST(PixelAlignedContext, PixelsOfAFillHoldUnderTheTransformInForce)
{
    RecordingContext target;
    PixelAlignedContext context(target, 2.0);
    context.saveState();
    context.concatenateTransform({1.0, 0.0, 0.0, -1.0, 0.0, 10.0});
    EXPECT_EQ(context.wholePixelsOfFill({1.0, 1.0, 2.0, 3.0}), Rect(2.0, 12.0, 4.0, 6.0));
    context.fillRect({1.0, 1.0, 2.0, 3.0});
    EXPECT_EQ(context.wholePixelsOfFill(context.fillOfWholePixels({2.0, 12.0, 4.0, 6.0})), Rect(2.0, 12.0, 4.0, 6.0));
    context.concatenateTransform({0.0, 1.0, -1.0, 0.0, 0.0, 0.0});
    EXPECT_EQ(context.wholePixelsOfFill({1.0, 1.0, 2.0, 3.0}), std::nullopt);
    context.restoreState();
    EXPECT_EQ(context.wholePixelsOfFill({1.0, 1.0, 2.0, 3.0}), Rect(2.0, 2.0, 4.0, 6.0));
}

TEST(PixelAlignedContext, AFillHasNoWholePixelsWithoutAreaOrOffTheGrid)
{
    RecordingContext target;
    PixelAlignedContext context(target, 1.0);
    for (const Rect& rect : {Rect(), Rect(1.0, 1.0, 0.0, 5.0), Rect(1.0, 1.0, 5.0, 0.0), Rect(1.0, 1.0, kNaN, 5.0), Rect(1.0, 1.0, 1.0, 1e30), Rect(-kInfinity, 1.0, 1.0, 1.0)})
        EXPECT_EQ(context.wholePixelsOfFill(rect), std::nullopt) << toString(rect);
    EXPECT_EQ(PixelAlignedContext(target, kNaN).wholePixelsOfFill({1.0, 1.0, 2.0, 2.0}), std::nullopt);
}

TEST(PixelAlignedContext, AFillHasNoWholePixelsInsideAClipThatCutsThem)
{
    RecordingContext target;
    PixelAlignedContext context(target, 1.0);
    const Rect rect(1.0, 1.0, 2.0, 2.0);
    context.saveState();
    context.clipToPath(Path::pathWithRect({0.3, 0.3, 8.0, 8.0}), FillRule::NonZero);
    EXPECT_EQ(context.wholePixelsOfFill(rect), rect);
    context.clipToPath(Path::pathWithOvalInRect({0.0, 0.0, 8.0, 8.0}), FillRule::NonZero);
    EXPECT_EQ(context.wholePixelsOfFill(rect), std::nullopt);
    context.clipToPath(Path::pathWithRect({0.0, 0.0, 8.0, 8.0}), FillRule::NonZero);
    EXPECT_EQ(context.wholePixelsOfFill(rect), std::nullopt);
    context.restoreState();
    EXPECT_EQ(context.wholePixelsOfFill(rect), rect);
}

} // namespace
} // namespace TOLVGraphing
