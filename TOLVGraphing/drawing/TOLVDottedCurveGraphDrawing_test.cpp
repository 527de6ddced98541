#include "TOLVDottedCurveGraphDrawing.h"

#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class TOLVDottedCurveGraphDrawingTest : public testing::Test {
protected:
    TOLVDottedCurveGraphDrawingTest()
    {
        graph->setMargin({0.0, 10.3, 0.0, 0.0});
        graph->zoomYToFixedMin(0.0, 100.0);
    }

    void add(std::vector<float> y, const Color& color = Color(1.0, 0.0, 0.0))
    {
        graph->addGraphData(TOLVGraphData::graphDataWithX(nullptr, TOLVRealVector::vectorWithComponents(std::move(y)), color));
    }

    Lines drawn() const
    {
        return linesDrawn([&] { TOLVDottedCurveGraphDrawing().drawGraph(graph, kRect); });
    }

    /// The data area is (10.3, 0, 90, 100).
    const Rect kRect{0.0, 0.0, 100.3, 100.0};
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(TOLVDottedCurveGraphDrawingTest, HasNoMarkerDrawing)
{
    const std::shared_ptr<TOLVGraphDrawing> drawing = std::make_shared<TOLVDottedCurveGraphDrawing>();
    EXPECT_EQ(std::dynamic_pointer_cast<TOLVGraphMarkerDrawing>(drawing), nullptr);
}

TEST_F(TOLVDottedCurveGraphDrawingTest, OnlyTheFirstTwoCellEdgesAreRounded)
{
    ASSERT_EQ(toString(graph->dataRectInRect(kRect)), "(10.3, 0, 90, 100)");
    add({50.0F, 20.0F, 80.0F});
    EXPECT_EQ(drawn(),
        (Lines{"save", "clip M 10.3 0 L 100.3 0 L 100.3 100 L 10.3 100 Z", "fillColor (1, 0, 0, 1)", "strokeColor (1, 0, 0, 1)", "fill M 22 47 L 28 47 L 28 53 L 22 53 Z",
            "fill M 52 17 L 58 17 L 58 23 L 52 23 Z", "fill M 82 77 L 88 77 L 88 83 L 82 83 Z", "save", "stroke M 25 50 L 55 20 L 85 80", "restore", "restore"}));
}

TEST_F(TOLVDottedCurveGraphDrawingTest, FractionalStepsAddUpAsFloats)
{
    add({0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F});
    const float step = static_cast<float>(90.0 / 7.0);
    float previous = 10.0F;
    float current = 23.0F;
    std::string expected = "stroke";
    for (int i = 0; i < 7; ++i) {
        const Point point{static_cast<double>((previous + current) * 0.5F), 0.0};
        Path path;
        path.moveToPoint(point);
        expected += " " + (i ? "L" + toString(path).substr(1) : toString(path));
        previous = current;
        current += step;
    }
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{expected}));
}

TEST_F(TOLVDottedCurveGraphDrawingTest, TheAbscissaePlayNoPart)
{
    add({50.0F, 20.0F, 80.0F});
    const Lines without = drawn();
    graph->graphData()[0]->setX(TOLVRealVector::vectorWithComponents({5.0F}));
    EXPECT_EQ(drawn(), without);
}

TEST_F(TOLVDottedCurveGraphDrawingTest, AnEmptySeriesStrokesAnEmptyCurve)
{
    const Lines expected
        = {"save", "clip M 10.3 0 L 100.3 0 L 100.3 100 L 10.3 100 Z", "fillColor (1, 0, 0, 1)", "strokeColor (1, 0, 0, 1)", "save", "stroke ", "restore", "restore"};
    add({});
    EXPECT_EQ(drawn(), expected);
    graph->graphData()[0]->setY(nullptr);
    EXPECT_EQ(drawn(), expected);
}

TEST_F(TOLVDottedCurveGraphDrawingTest, SeriesHaveTheirOwnColours)
{
    add({50.0F});
    add({20.0F}, Color(0.0, 0.0, 1.0));
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    graph->graphData()[2]->setLineStyle(nullptr);
    EXPECT_EQ(linesWith(drawn(), "fillColor"), (Lines{"fillColor (1, 0, 0, 1)", "fillColor (0, 0, 1, 1)", "fillColor (0, 0, 0, 1)"}));
}

TEST_F(TOLVDottedCurveGraphDrawingTest, OrdinatesWithoutAPositionHaveNoDotAndTheLineGoesOn)
{
    add({50.0F, kNaN, 80.0F});
    const Lines lines = drawn();
    EXPECT_EQ(linesWith(lines, "fill").size(), 2U);
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 25 50 L 85 80"}));
}

TEST_F(TOLVDottedCurveGraphDrawingTest, WithoutAGraphOrAContextNothingIsDrawn)
{
    EXPECT_TRUE(linesDrawn([&] { TOLVDottedCurveGraphDrawing().drawGraph(nullptr, kRect); }).empty());
    add({50.0F});
    TOLVDottedCurveGraphDrawing().drawGraph(graph, kRect);
}

} // namespace
} // namespace TOLVGraphing
