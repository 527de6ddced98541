#include "DataDots.h"

#include "../data/TOLVLineStyle.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/ForwardingContext.h"
#include "../platform/graphics/RecordingContext.h"
#include "CurveGraphDrawing.h"

#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;
using Points = std::vector<Point>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const Points kPoints = {{10.0, 20.0}, {30.0, 50.0}, {50.0, 40.0}};

class DataDotsTest : public testing::Test {
protected:
    std::shared_ptr<TOLVLineStyle> style = TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0, 0.5), 3.0);
    const TOLVLineStyle colorless = *TOLVLineStyle::solidLineWithColor(std::nullopt, 3.0);
};

TEST_F(DataDotsTest, ADotIsSixPointsWideAndCentredOnItsPoint)
{
    EXPECT_EQ(toString(dataDotRectForPoint({100.0, 50.0})), "(97, 47, 6, 6)");
    EXPECT_EQ(toString(dataDotRectForPoint({0.25, -7.5})), "(-2.75, -10.5, 6, 6)");
}

TEST_F(DataDotsTest, RectanglesKeepTheOrderOfThePoints)
{
    const auto rects = dataDotRects(Points{{3.0, 3.0}, {kNaN, 3.0}, {13.0, 23.0}});
    ASSERT_EQ(rects.size(), 3U);
    EXPECT_EQ(toString(rects[0]), "(0, 0, 6, 6)");
    EXPECT_FALSE(rects[1].valid());
    EXPECT_EQ(toString(rects[2]), "(10, 20, 6, 6)");
    EXPECT_TRUE(dataDotRects({}).empty());
}

TEST_F(DataDotsTest, ADotIsWhiteWithARingInTheStylesColour)
{
    const Rect rect(0.0, 0.0, 6.0, 6.0);
    const std::string oval = toString(Path::pathWithOvalInRect(rect));
    EXPECT_EQ(linesDrawn([&] { drawDot(rect, style.get()); }),
        (Lines{"save", "strokeColor (1, 0, 0, 0.5)", "fillColor (1, 1, 1, 1)", "fill " + oval, "save", "lineWidth 2", "stroke " + oval, "restore", "restore"}));
}

TEST_F(DataDotsTest, AllDotsAreOnePath)
{
    const std::vector<Rect> rects = {{0.0, 0.0, 6.0, 6.0}, {20.0, 10.0, 6.0, 6.0}};
    Path ovals = Path::pathWithOvalInRect(rects[0]);
    ovals.addPath(Path::pathWithOvalInRect(rects[1]));
    const Lines lines = linesDrawn([&] { drawDataDots(rects, style.get()); });
    EXPECT_EQ(linesWith(lines, "fill"), (Lines{"fill " + toString(ovals)}));
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke " + toString(ovals)}));
    EXPECT_EQ(linesWith(lines, "lineWidth"), (Lines{"lineWidth 2"}));
}

/// Draws repeats quickly, as it says: it only keeps where they are.
class QuickContext final : public ForwardingContext {
public:
    explicit QuickContext(DrawingContext& target) : ForwardingContext(target) {}

    [[nodiscard]] bool drawsRepeatsQuickly() const override { return true; }
    void drawFilledRepeats(const Path& path, FillRule, std::span<const Point> places) override
    {
        dot = path;
        filled.assign(places.begin(), places.end());
    }
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override
    {
        ring = path;
        stroked.assign(places.begin(), places.end());
    }

    Path dot;
    Path ring;
    Points filled;
    Points stroked;
};

TEST_F(DataDotsTest, VeryManyDotsAreRepeatsAtQuartersOfAPoint)
{
    Points points;
    for (int i = 0; i < 2048; ++i)
        points.push_back({i == 5 ? kNaN : 0.13 * i, 20.0 + 0.31 * i});
    const auto opaque = TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 3.0);
    const auto drawnWith = [&](const TOLVLineStyle& with, std::size_t count) {
        RecordingContext recording;
        QuickContext context(recording);
        const CurrentContextScope scope(context);
        const auto rects = dataDotRects(std::span(points).first(count));
        drawDataDots(rects, &with);
        if (!context.filled.empty()) {
            EXPECT_EQ(recording.calls(), (Lines{"save", "strokeColor (1, 0, 0, 1)", "fillColor (1, 1, 1, 1)", "lineWidth 2", "lineJoin round", "restore"}));
        }
        EXPECT_EQ(context.stroked, context.filled);
        EXPECT_EQ(context.dot, context.ring);
        return context.filled;
    };
    const Points drawn = drawnWith(*opaque, 2048);
    ASSERT_EQ(drawn.size(), 2047U);
    // 0.13 and 20.31, 1.3 and 23.1.
    EXPECT_EQ(drawn[1], (Point{0.25, 20.25}));
    EXPECT_EQ(drawn[9], (Point{1.25, 23.0}));
    EXPECT_TRUE(drawnWith(*opaque, 2047).empty());
    // Rings that overlap would show where they are translucent.
    EXPECT_TRUE(drawnWith(*style, 2048).empty());
}

TEST_F(DataDotsTest, TheRingIgnoresTheStylesDashAndWidth)
{
    style->setPatternValues(std::vector<float>{5.0F, 2.0F});
    const Lines lines = linesDrawn([&] { drawDot({0.0, 0.0, 6.0, 6.0}, style.get()); });
    EXPECT_TRUE(linesWith(lines, "lineDash").empty());
    EXPECT_EQ(linesWith(lines, "lineWidth"), (Lines{"lineWidth 2"}));
}

TEST_F(DataDotsTest, DotsWithoutAFinitePlaceAreLeftOut)
{
    const std::vector<Rect> rects = {{kNaN, 0.0, 6.0, 6.0}, {0.0, 0.0, 6.0, 6.0}, {0.0, kInfinity, 6.0, 6.0}};
    EXPECT_EQ(linesWith(linesDrawn([&] { drawDataDots(rects, style.get()); }), "fill"), (Lines{"fill " + toString(Path::pathWithOvalInRect(rects[1]))}));
    EXPECT_TRUE(linesDrawn([&] { drawDataDots(std::vector<Rect>{rects[0], rects[2]}, style.get()); }).empty());
    EXPECT_TRUE(linesDrawn([&] { drawDataDots({}, style.get()); }).empty());
    EXPECT_TRUE(linesDrawn([&] { drawDot(rects[0], style.get()); }).empty());
}

TEST_F(DataDotsTest, ALineHasTheStylesDashWidthAndColour)
{
    style->setPatternValues(std::vector<float>{5.0F, 2.0F});
    EXPECT_EQ(linesDrawn([&] { strokePoints(kPoints, style.get()); }),
        (Lines{"save", "lineDash 0 [5, 2]", "lineWidth 3", "strokeColor (1, 0, 0, 0.5)", "lineWidth 3", "stroke M 10 20 L 30 50 L 50 40", "restore"}));
}

TEST_F(DataDotsTest, WithoutAStyleALineHasWhatTheContextHas)
{
    EXPECT_EQ(linesDrawn([&] { strokePoints(kPoints, nullptr); }), (Lines{"save", "stroke M 10 20 L 30 50 L 50 40", "restore"}));
}

TEST_F(DataDotsTest, ALinePassesOverPointsThatAreNotFinite)
{
    const Points points = {{kNaN, 1.0}, {10.0, 20.0}, {20.0, kInfinity}, {30.0, 50.0}, {-kInfinity, 5.0}};
    EXPECT_EQ(linesWith(linesDrawn([&] { strokePoints(points, style.get()); }), "stroke"), (Lines{"stroke M 10 20 L 30 50"}));
    EXPECT_EQ(linesWith(linesDrawn([&] { fillUnderPoints(points, {0.0, 5.0, 100.0, 100.0}, style.get()); }), "fill"), (Lines{"fill M 10 5 L 10 20 L 30 50 L 30 5 Z"}));
    EXPECT_TRUE(linesDrawn([&] { strokePoints(Points{{kNaN, 1.0}}, style.get()); }).empty());
}

TEST_F(DataDotsTest, AnAreaReachesDownToTheLowerEdgeAndIsATwentiethOfTheColour)
{
    EXPECT_EQ(linesDrawn([&] {
        fillUnderPoints(kPoints, {0.0, 5.0, 100.0, 100.0}, style.get());
    }),
        (Lines{"save", "fillColor (1, 0, 0, 0.05)", "strokeColor (1, 0, 0, 0.05)", "fill M 10 5 L 10 20 L 30 50 L 50 40 L 50 5 Z", "restore"}));
}

TEST_F(DataDotsTest, OnePointIsALineWithoutLengthAndAnAreaWithoutWidth)
{
    const Points one = {{10.0, 20.0}};
    EXPECT_EQ(linesWith(linesDrawn([&] { strokePoints(one, style.get()); }), "stroke"), (Lines{"stroke M 10 20"}));
    EXPECT_EQ(linesWith(linesDrawn([&] { fillUnderPoints(one, {0.0, 5.0, 100.0, 100.0}, style.get()); }), "fill"), (Lines{"fill M 10 5 L 10 20 L 10 5 Z"}));
}

TEST_F(DataDotsTest, NoPointsDrawNothing)
{
    EXPECT_TRUE(linesDrawn([&] { strokePoints({}, style.get()); }).empty());
    EXPECT_TRUE(linesDrawn([&] { fillUnderPoints({}, {0.0, 0.0, 100.0, 100.0}, style.get()); }).empty());
}

TEST_F(DataDotsTest, WithoutAColourThereAreNeitherDotsNorAreas)
{
    for (const TOLVLineStyle* none : {&colorless, static_cast<const TOLVLineStyle*>(nullptr)}) {
        EXPECT_TRUE(linesDrawn([&] { drawDot({0.0, 0.0, 6.0, 6.0}, none); }).empty());
        EXPECT_TRUE(linesDrawn([&] { drawDataDots(dataDotRects(kPoints), none); }).empty());
        EXPECT_TRUE(linesDrawn([&] { fillUnderPoints(kPoints, {0.0, 0.0, 100.0, 100.0}, none); }).empty());
    }
    EXPECT_EQ(linesWith(linesDrawn([&] { strokePoints(kPoints, &colorless); }), "strokeColor"), (Lines{"strokeColor none"}));
}

TEST_F(DataDotsTest, WithoutAContextNothingHappens)
{
    EXPECT_NO_THROW(drawDot({0.0, 0.0, 6.0, 6.0}, style.get()));
    EXPECT_NO_THROW(drawDataDots(dataDotRects(kPoints), style.get()));
    EXPECT_NO_THROW(strokePoints(kPoints, style.get()));
    EXPECT_NO_THROW(fillUnderPoints(kPoints, {0.0, 0.0, 100.0, 100.0}, style.get()));
}

TEST_F(DataDotsTest, CurvesOfferTheSameDotsToHosts)
{
    const CurveGraphDrawing drawing;
    EXPECT_EQ(linesDrawn([&] { drawing.drawDotsForPoints(kPoints, style.get()); }), linesDrawn([&] { drawDataDots(dataDotRects(kPoints), style.get()); }));
    EXPECT_TRUE(linesDrawn([&] { drawing.drawDotsForPoints(kPoints, &colorless); }).empty());
    EXPECT_TRUE(linesDrawn([&] { drawing.drawDotsForPoints(kPoints, nullptr); }).empty());
    EXPECT_TRUE(linesDrawn([&] { drawing.drawDotsForPoints({}, style.get()); }).empty());
    EXPECT_NO_THROW(drawing.drawDotsForPoints(kPoints, style.get()));
}

} // namespace
} // namespace TOLVGraphing
