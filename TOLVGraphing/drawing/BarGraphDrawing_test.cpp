#include "BarGraphDrawing.h"

#include "../axes/TOLVBarAxis.h"
#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/ChangingSamples.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/PointGraph.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// The data area is the whole rectangle; 2 points stay clear on each side, so that the groups share 196 points.
const Rect kRect(0.0, 0.0, 200.0, 100.0);

/// "fill M ..." of a rectangle.
std::string fillOf(const Rect& rect)
{
    return "fill " + toString(Path::pathWithRect(rect));
}

/// A graph whose y range is its height in points.
class BarGraphDrawingTest : public testing_support::PointGraphTest {
protected:
    Lines drawn(const Rect& rect = kRect) const
    {
        return linesDrawn([&] { BarGraphDrawing().drawGraph(graph, rect); });
    }

    Lines bars(const Rect& rect = kRect) const { return linesWith(drawn(rect), "fill"); }
};

TEST_F(BarGraphDrawingTest, OneBarFillsItsSlotButForTheGaps)
{
    add({1.0F}, {50.0F});
    // A slot of 196 points has a place of 192 for its bar, of which 8 % on each side are gaps.
    EXPECT_EQ(drawn(),
        (Lines{"save", "clip M 0 0 L 200 0 L 200 100 L 0 100 Z", "fillColor (1, 0, 0, 1)", fillOf({4.0 + 0.08 * 192.0, 0.0, 192.0 - 2.0 * (0.08 * 192.0), 50.0}), "restore"}));
}

TEST_F(BarGraphDrawingTest, AGroupWithFewerBarsFillsItsPlacesFromTheLeft)
{
    const Rect rect(0.0, 0.0, 1000.0, 100.0);
    add({1.0F, 2.0F, 3.0F}, {10.0F, 20.0F, 30.0F});
    add({1.0F, 2.0F}, {40.0F, 50.0F}, Color(0.0, 0.0, 1.0));
    // 10 points stay clear on each side; three slots of 980 / 3 points, with 10 points clear again: two places of 153.33 each.
    const double slotWidth = 980.0 / 3.0;
    const double place = (slotWidth - 20.0) / 2.0;
    const double gap = 0.08 * place;
    const auto barAt = [&](int group, int bar, double height) { return fillOf({10.0 + group * slotWidth + 10.0 + bar * place + gap, 0.0, place - 2.0 * gap, height}); };
    EXPECT_EQ(bars(rect), (Lines{barAt(0, 0, 10.0), barAt(0, 1, 40.0), barAt(1, 0, 20.0), barAt(1, 1, 50.0), barAt(2, 0, 30.0)}));
    EXPECT_EQ(linesWith(drawn(rect), "fillColor"),
        (Lines{"fillColor (1, 0, 0, 1)", "fillColor (0, 0, 1, 1)", "fillColor (1, 0, 0, 1)", "fillColor (0, 0, 1, 1)", "fillColor (1, 0, 0, 1)"}));
}

TEST_F(BarGraphDrawingTest, TheClearSpaceIsAPartOfTheWholeRectangle)
{
    // 500 points give 5, whatever the margins: the data area of 200 points has 4 times 5 clear ones.
    add({1.0F}, {50.0F});
    graph->setMargin({0.0, 100.0, 0.0, 200.0});
    const double place = 200.0 - 20.0;
    EXPECT_EQ(bars({0.0, 0.0, 500.0, 100.0}), (Lines{fillOf({100.0 + 10.0 + 0.08 * place, 0.0, place - 2.0 * (0.08 * place), 50.0})}));
}

TEST_F(BarGraphDrawingTest, AValueBelowTheDataAreaGivesABarDownwards)
{
    add({1.0F, 2.0F}, {-30.0F, 0.0F});
    const double place = 98.0 - 4.0;
    const double gap = 0.08 * place;
    EXPECT_EQ(bars(), (Lines{fillOf({4.0 + gap, 0.0, place - 2.0 * gap, -30.0}), fillOf({102.0 + gap, 0.0, place - 2.0 * gap, 0.0})}));
}

TEST_F(BarGraphDrawingTest, BarsStandOnTheLowerEdgeOfTheDataArea)
{
    graph->setMargin({0.0, 0.0, 20.0, 0.0});
    graph->zoomYToFixedMin(-80.0, 0.0);
    add({1.0F}, {-30.0F});
    const Lines filled = bars();
    ASSERT_EQ(filled.size(), 1U);
    EXPECT_TRUE(filled[0].starts_with("fill M 19.36 20 L ")) << filled[0];
    EXPECT_TRUE(filled[0].ends_with(" 70 L 19.36 70 Z")) << filled[0];
}

TEST_F(BarGraphDrawingTest, ABarIsNeverThinnerThanAPoint)
{
    for (int i = 0; i < 200; ++i)
        add({1.0F, 2.0F}, {50.0F, 60.0F});
    // Two slots of 98 points hold 200 places of 0.47 each.
    const Lines filled = bars();
    ASSERT_EQ(filled.size(), 400U);
    const double place = (98.0 - 4.0) / 200.0;
    EXPECT_EQ(filled[0], fillOf({4.0 + 0.08 * place, 0.0, 1.0, 50.0}));
    EXPECT_EQ(filled[199], fillOf({4.0 + 199.0 * place + 0.08 * place, 0.0, 1.0, 50.0}));
}

TEST_F(BarGraphDrawingTest, SlotsNarrowerThanTheirClearSpaceGiveBarsOfOnePoint)
{
    std::vector<float> x;
    for (int i = 0; i < 98; ++i)
        x.push_back(static_cast<float>(i));
    add(x, std::vector<float>(98, 50.0F));
    // Slots are 2 points wide, the places -2; the gap is negative too.
    const Lines filled = bars();
    ASSERT_EQ(filled.size(), 98U);
    EXPECT_EQ(filled[0], fillOf({4.0 + 0.08 * -2.0, 0.0, 1.0, 50.0}));
    EXPECT_EQ(filled[1], fillOf({6.0 + 0.08 * -2.0, 0.0, 1.0, 50.0}));
}

TEST_F(BarGraphDrawingTest, ASeriesWithoutColourKeepsItsPlace)
{
    add({1.0F}, {10.0F});
    add({1.0F}, {20.0F}, std::nullopt);
    add({1.0F}, {30.0F})->setLineStyle(nullptr);
    add({1.0F}, {40.0F});
    const double place = 192.0 / 4.0;
    const double gap = 0.08 * place;
    EXPECT_EQ(bars(), (Lines{fillOf({4.0 + gap, 0.0, place - 2.0 * gap, 10.0}), fillOf({4.0 + 3.0 * place + gap, 0.0, place - 2.0 * gap, 40.0})}));
}

TEST_F(BarGraphDrawingTest, AValueWithoutAPositionHasNoBarAndKeepsItsPlace)
{
    add({1.0F, 2.0F, 3.0F, 4.0F}, {kNaN, 10.0F, kInfinity, -kInfinity});
    const double place = 49.0 - 4.0;
    const double gap = 0.08 * place;
    EXPECT_EQ(bars(), (Lines{fillOf({2.0 + 49.0 + 2.0 + gap, 0.0, place - 2.0 * gap, 10.0})}));
}

TEST_F(BarGraphDrawingTest, TheVisibleRangeChoosesTheGroups)
{
    add({0.0F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F}, {5.0F, 10.0F, 20.0F, 30.0F, 40.0F, 50.0F});
    add({2.0F, 3.0F, 9.0F}, {21.0F, 31.0F, 91.0F}, Color(0.0, 0.0, 1.0));
    graph->zoomXToFixedMin(2.0F, 4.0F);
    const double slotWidth = 196.0 / 3.0;
    const double place = (slotWidth - 4.0) / 2.0;
    const double gap = 0.08 * place;
    const auto barAt = [&](int group, int bar, double height) { return fillOf({2.0 + group * slotWidth + 2.0 + bar * place + gap, 0.0, place - 2.0 * gap, height}); };
    EXPECT_EQ(bars(), (Lines{barAt(0, 0, 20.0), barAt(0, 1, 21.0), barAt(1, 0, 30.0), barAt(1, 1, 31.0), barAt(2, 0, 40.0)}));
}

TEST_F(BarGraphDrawingTest, BetweenTwoSamplesThereAreNoBars)
{
    add({1.0F, 2.0F}, {10.0F, 20.0F});
    graph->zoomXToFixedMin(1.25F, 1.75F);
    EXPECT_EQ(drawn(), (Lines{"save", "clip M 0 0 L 200 0 L 200 100 L 0 100 Z", "restore"}));
}

TEST_F(BarGraphDrawingTest, SeriesWithoutVectorsTakeNoPlace)
{
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(std::make_shared<ChangingSamples>(std::vector<float>{1.0F}), TOLVRealVector::vectorWithComponents({1.0F}), Color::blackColor()));
    add({}, {});
    add({1.0F}, {50.0F});
    EXPECT_EQ(bars(), (Lines{fillOf({4.0 + 0.08 * 192.0, 0.0, 192.0 - 2.0 * (0.08 * 192.0), 50.0})}));
}

TEST_F(BarGraphDrawingTest, AbscissaeWithoutOrdinatesMakeRoomForGroups)
{
    add({1.0F}, {50.0F});
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({1.0F, 2.0F}), nullptr, Color::blackColor()));
    EXPECT_EQ(bars(), (Lines{fillOf({4.0 + 0.08 * 94.0, 0.0, 94.0 - 2.0 * (0.08 * 94.0), 50.0})}));
}

TEST_F(BarGraphDrawingTest, WhereTheLengthsDifferTheShorterOneCounts)
{
    // The abscissae make four groups; the last two have no bars.
    add({1.0F, 2.0F, 3.0F, 4.0F}, {10.0F, 20.0F});
    add({1.0F}, {30.0F, 40.0F, 50.0F}, Color(0.0, 0.0, 1.0));
    const double place = (49.0 - 4.0) / 2.0;
    const double gap = 0.08 * place;
    const auto barAt = [&](int group, int bar, double height) { return fillOf({2.0 + group * 49.0 + 2.0 + bar * place + gap, 0.0, place - 2.0 * gap, height}); };
    EXPECT_EQ(bars(), (Lines{barAt(0, 0, 10.0), barAt(0, 1, 30.0), barAt(1, 0, 20.0)}));
}

TEST_F(BarGraphDrawingTest, WithoutSeriesOnlyTheClipIsSet)
{
    EXPECT_EQ(drawn(), (Lines{"save", "clip M 0 0 L 200 0 L 200 100 L 0 100 Z", "restore"}));
    add({}, {});
    EXPECT_EQ(drawn().size(), 3U);
}

TEST_F(BarGraphDrawingTest, OddRectanglesDrawFiniteBars)
{
    add({1.0F, 2.0F}, {10.0F, 20.0F});
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    for (const Rect& rect : {Rect(0.0, 0.0, 0.0, 0.0), Rect(5.0, 5.0, -200.0, -100.0), Rect(0.0, 0.0, 1.0, 1.0)})
        EXPECT_EQ(bars(rect).size(), 2U) << toString(rect);
    EXPECT_TRUE(bars({kNotANumber, 0.0, 200.0, 100.0}).empty());
    EXPECT_TRUE(bars({0.0, 0.0, 200.0, kNotANumber}).empty());
}

TEST_F(BarGraphDrawingTest, WithoutAGraphOrAContextNothingIsDrawn)
{
    add({1.0F}, {10.0F});
    EXPECT_TRUE(linesDrawn([] { BarGraphDrawing().drawGraph(nullptr, kRect); }).empty());
    EXPECT_NO_THROW(BarGraphDrawing().drawGraph(graph, kRect));
}

TEST_F(BarGraphDrawingTest, TheStateIsRestoredWhenAnAxisThrows)
{
    add({1.0F}, {10.0F});
    // An axis of the base class has no positions.
    graph->setVerticalAxis(std::make_shared<TOLVAxis>());
    EXPECT_EQ(linesDrawn([&] { EXPECT_THROW(BarGraphDrawing().drawGraph(graph, kRect), UnrecognizedOperation); }).back(), "restore");
}

TEST_F(BarGraphDrawingTest, TheAxisOfTheGraphPlaysNoPart)
{
    add({1.0F, 2.0F}, {10.0F, 20.0F});
    const Lines before = drawn();
    graph->setHorizontalAxis(std::make_shared<TOLVBarAxis>());
    graph->prepareForDrawingInRect(kRect);
    EXPECT_EQ(drawn(), before);
}

// Groups.

TEST_F(BarGraphDrawingTest, AGroupDrawsItsBarsIntoItsSlot)
{
    const auto red = TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 1.0);
    const auto blue = TOLVLineStyle::solidLineWithColor(Color(0.0, 0.0, 1.0), 1.0);
    const BarGroup group{{{50.0F, 0, red}, {60.0F, 1, nullptr}, {70.0F, 2, blue}}, graph, kRect, 7.0F};
    RecordingContext context;
    group.drawInRect({10.0, 5.0, 90.0, 3.0}, 25.0, context);
    EXPECT_EQ(context.calls(), (Lines{"fillColor (1, 0, 0, 1)", fillOf({12.0, 5.0, 21.0, 45.0}), "fillColor (0, 0, 1, 1)", fillOf({62.0, 5.0, 21.0, 65.0})}));
}

TEST_F(BarGraphDrawingTest, AGroupKeepsOnePointOfWidthFromOnePointOn)
{
    const BarGroup group{{{50.0F, 0, TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 1.0)}}, graph, kRect};
    for (const auto& [place, width] : {std::pair{0.0, 1.0}, std::pair{1.0, 1.0}, std::pair{1.25, 1.25 - 2.0 * (0.08 * 1.25)}, std::pair{-5.0, 1.0}}) {
        RecordingContext context;
        group.drawInRect({0.0, 0.0, 100.0, 100.0}, place, context);
        ASSERT_EQ(context.calls().size(), 2U);
        EXPECT_EQ(context.calls()[1], fillOf({0.08 * place, 0.0, width, 50.0})) << place;
    }
}

TEST_F(BarGraphDrawingTest, AGroupWithoutAGraphOrBarsDrawsNothing)
{
    RecordingContext context;
    BarGroup group{{{50.0F, 0, TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 1.0)}}, nullptr, kRect};
    group.drawInRect({0.0, 0.0, 100.0, 100.0}, 20.0, context);
    group = BarGroup{{}, graph, kRect};
    group.drawInRect({0.0, 0.0, 100.0, 100.0}, 20.0, context);
    EXPECT_TRUE(context.calls().empty());
}

} // namespace
} // namespace TOLVGraphing
