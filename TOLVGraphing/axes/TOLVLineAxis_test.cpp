#include "TOLVLineAxis.h"

#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const Rect kRect(0.0, 0.0, 400.0, 100.0);
const std::string kFrame = "stroke M 0.5 15.5 L 399.5 15.5 L 399.5 99.5 L 0.5 99.5 Z";

/// A graph with a line axis over two categories; the data area is (0, 15, 400, 85).
class TOLVLineAxisTest : public testing::Test {
protected:
    TOLVLineAxisTest()
    {
        graph->setMargin({0.0, 0.0, 15.0, 0.0});
        graph->setHorizontalAxis(std::make_shared<TOLVLineAxis>());
        graph->zoomXToFixedMin(0.0F, 10.0F);
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({1.0F, 2.0F}), TOLVRealVector::vectorWithComponents({1.0F, 2.0F}), Color::blackColor()));
        graph->prepareForDrawingInRect(kRect);
    }

    TOLVLineAxis& axis() { return dynamic_cast<TOLVLineAxis&>(*graph->horizontalAxis()); }
    Lines majorLines(const Rect& rect = kRect)
    {
        return linesDrawn([&] { axis().drawMajorLinesInRect(rect); });
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(TOLVLineAxisTest, GridLinesStandHalfAPointLeftOfTheCentresAndEndAPointShortOfTheFrame)
{
    EXPECT_EQ(majorLines(),
        (Lines{"fillColor (0.5, 0.5, 0.5, 1)", "strokeColor (0.5, 0.5, 0.5, 1)", kFrame, "save", "strokeColor (0.5, 0.5, 0.5, 1)", "lineWidth 1",
            "stroke M 104.5 16 L 104.5 99 M 294.5 16 L 294.5 99", "restore"}));
}

TEST_F(TOLVLineAxisTest, DashWidthAndColourOfTheStyleTakeEffect)
{
    const auto style = TOLVLineStyle::dashedLineStyle();
    style->setColor(Color(1.0, 0.0, 0.0));
    style->setThickness(2.5);
    graph->setMajorLineStyle(style);
    EXPECT_EQ(majorLines(),
        (Lines{"fillColor (1, 0, 0, 1)", "strokeColor (1, 0, 0, 1)", kFrame, "save", "lineDash 0 [5, 2]", "lineWidth 2.5", "strokeColor (1, 0, 0, 1)", "lineWidth 2.5",
            "stroke M 104.5 16 L 104.5 99 M 294.5 16 L 294.5 99", "restore"}));
}

TEST_F(TOLVLineAxisTest, WithoutAStyleTheContextsOwnHolds)
{
    graph->setMajorLineStyle(nullptr);
    EXPECT_EQ(majorLines(), (Lines{kFrame, "save", "stroke M 104.5 16 L 104.5 99 M 294.5 16 L 294.5 99", "restore"}));
}

TEST_F(TOLVLineAxisTest, MinorLinesAreNone)
{
    EXPECT_TRUE(linesDrawn([&] { axis().drawMinorLinesInRect(kRect); }).empty());
}

TEST_F(TOLVLineAxisTest, WithoutCategoriesTheFrameIsAll)
{
    graph->zoomXToFixedMin(1.25F, 1.75F);
    graph->prepareForDrawingInRect(kRect);
    EXPECT_EQ(linesWith(majorLines(), "stroke"), (Lines{kFrame}));
}

TEST_F(TOLVLineAxisTest, AnAxisThatWasNeverPreparedHasNoGrid)
{
    const auto other = graph->copy();
    other->horizontalAxis()->setMargin(15.0);
    EXPECT_EQ(linesWith(linesDrawn([&] { other->horizontalAxis()->drawMajorLinesInRect(kRect); }), "stroke"), (Lines{kFrame}));
}

TEST_F(TOLVLineAxisTest, LinesWithoutAFinitePlaceAreLeftOut)
{
    for (const Rect& rect : {Rect(kNaN, 0.0, 400.0, 100.0), Rect(0.0, 0.0, kInfinity, 100.0), Rect(0.0, kInfinity, 400.0, 100.0), Rect(0.0, 0.0, 400.0, kNaN)}) {
        for (const std::string& line : linesWith(majorLines(rect), "stroke"))
            EXPECT_EQ(line, "stroke ") << toString(rect);
    }
}

TEST_F(TOLVLineAxisTest, EmptyAndNegativeAreasPassThrough)
{
    EXPECT_EQ(linesWith(majorLines({0.0, 0.0, 0.0, 15.0}), "stroke"), (Lines{"stroke M 4.5 16 L 4.5 14 M -5.5 16 L -5.5 14"}));
    EXPECT_EQ(linesWith(majorLines({0.0, 0.0, -20.0, -5.0}), "stroke"), (Lines{"stroke M -0.5 16 L -0.5 -6 M -20.5 16 L -20.5 -6"}));
}

TEST_F(TOLVLineAxisTest, WithoutAGraphOrAContextNothingIsDrawn)
{
    TOLVLineAxis alone;
    alone.setDataPointCount(1);
    EXPECT_EQ(linesWith(linesDrawn([&] {
        alone.drawMajorLinesInRect({0.0, 0.0, 40.0, 20.0});
    }),
                  "stroke"),
        (Lines{"stroke M 0.5 0.5 L 39.5 0.5 L 39.5 19.5 L 0.5 19.5 Z", "stroke M 19.5 1 L 19.5 19"}));
    EXPECT_NO_THROW(axis().drawMajorLinesInRect(kRect));
}

TEST_F(TOLVLineAxisTest, ACopyIsALineAxisWithTheSameTexts)
{
    axis().setTickLabels({{"one", "two"}});
    const auto copy = std::dynamic_pointer_cast<TOLVLineAxis>(axis().copy());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->tickLabels(), axis().tickLabels());
    EXPECT_EQ(copy->dataPointCount(), 0U);
    EXPECT_EQ(copy->graph(), graph);
}

TEST_F(TOLVLineAxisTest, AnArchivedGraphHasItsLineAxisBack)
{
    axis().setDrawsMajorLines(false);
    EXPECT_EQ(axis().archiveBaseClassNames(), (Lines{"TOLVBarAxis", "TOLVAxis"}));
    const auto back = std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(KeyedArchiver::archivedObject(*graph)));
    ASSERT_TRUE(back);
    const auto restored = std::dynamic_pointer_cast<TOLVLineAxis>(back->horizontalAxis());
    ASSERT_TRUE(restored);
    EXPECT_FALSE(restored->drawsMajorLines());
    EXPECT_TRUE(restored->drawsMinorLines());
    EXPECT_EQ(restored->dataPointCount(), 0U);
}

TEST_F(TOLVLineAxisTest, TextsAreThoseOfABarAxis)
{
    axis().setTickLabels({{"one", "two"}});
    EXPECT_EQ(linesWith(linesDrawn([&] { axis().drawTickLabelsInRect(kRect); }), "text"),
        (Lines{"text \"one\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (96, 4.5)", "text \"two\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (286, 4.5)"}));
}

} // namespace
} // namespace TOLVGraphing
