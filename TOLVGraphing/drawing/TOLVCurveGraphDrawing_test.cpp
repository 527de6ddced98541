#include "TOLVCurveGraphDrawing.h"

#include "../axes/TOLVLogarithmicAxis.h"
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
const Rect kRect(0.0, 0.0, 100.0, 100.0);

class TOLVCurveGraphDrawingTest : public testing::Test {
protected:
    TOLVCurveGraphDrawingTest()
    {
        graph->setMargin({});
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 100.0);
    }

    void add(std::vector<float> x, std::vector<float> y, const Color& color = Color(1.0, 0.0, 0.0))
    {
        graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), color));
    }

    Lines drawn() const
    {
        return linesDrawn([&] { TOLVCurveGraphDrawing().drawGraph(graph, kRect); });
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(TOLVCurveGraphDrawingTest, HasNoMarkerDrawing)
{
    const std::shared_ptr<TOLVGraphDrawing> drawing = std::make_shared<TOLVCurveGraphDrawing>();
    EXPECT_EQ(std::dynamic_pointer_cast<TOLVGraphMarkerDrawing>(drawing), nullptr);
}

TEST_F(TOLVCurveGraphDrawingTest, DrawsTheSeriesInOrderInsideTheFrame)
{
    add({0.0F, 50.0F, 100.0F}, {0.0F, 20.0F, 0.0F});
    add({0.0F, 50.0F, 100.0F}, {0.0F, 40.0F, 0.0F}, Color(0.0, 0.0, 1.0));
    EXPECT_EQ(drawn(),
        (Lines{"save", "clip M 1 1 L 99 1 L 99 99 L 1 99 Z", "save", "strokeColor (1, 0, 0, 1)", "lineWidth 1", "stroke M 0 0 L 0 0 L 50 20", "restore", "save",
            "strokeColor (0, 0, 1, 1)", "lineWidth 1", "stroke M 0 0 L 0 0 L 50 40", "restore", "restore"}));
}

TEST_F(TOLVCurveGraphDrawingTest, PositionsFollowTheExtents)
{
    add({0.0F, 50.0F, 100.0F}, {0.0F, 20.0F, 0.0F});
    graph->zoomXToFixedMin(0.0F, 200.0F);
    graph->zoomYToFixedMin(-100.0, 100.0);
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 0 50 L 0 50 L 25 60"}));
}

TEST_F(TOLVCurveGraphDrawingTest, LogarithmicAxesMapLogarithms)
{
    add({1.0F, 10.0F, 100.0F}, {1.0F, 10.0F, 100.0F});
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomXToFixedMin(1.0F, 100.0F);
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 0 1 L 0 1 L 50 10"}));
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomYToFixedMin(1.0, 100.0);
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 0 0 L 0 0 L 50 50"}));
}

TEST_F(TOLVCurveGraphDrawingTest, SeriesThatMakeNoCurveAreLeftOut)
{
    class ForeignSamples final : public TOLVAxisData {
    public:
        std::size_t length() const override { return 0; }
        const float* components() const override { return nullptr; }
        bool getMinimum(float*, std::size_t*) const override { return false; }
        bool getMaximum(float*, std::size_t*) const override { return false; }
    };
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    add({0.0F, 1.0F, 2.0F}, {0.0F});
    graph->addGraphData(TOLVGraphData::graphDataWithX(std::make_shared<ForeignSamples>(), std::make_shared<ForeignSamples>(), Color()));
    add({0.0F, 50.0F, 100.0F}, {0.0F, 40.0F, 0.0F}, Color(0.0, 0.0, 1.0));
    const Lines lines = drawn();
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 0 0 L 0 0 L 50 40"}));
    EXPECT_EQ(lines.back(), "restore");
}

TEST_F(TOLVCurveGraphDrawingTest, ASeriesWithoutAKnownMinimumIsLeftOut)
{
    graph->zoomYToFixedMin(static_cast<double>(std::numeric_limits<float>::max()), 1.0);
    add({0.0F, 50.0F}, {kNaN, kNaN});
    add({}, {});
    EXPECT_EQ(drawn(), (Lines{"save", "clip M 1 1 L 99 1 L 99 99 L 1 99 Z", "restore"}));
}

TEST_F(TOLVCurveGraphDrawingTest, TheStyleMayBeChangedOrMissing)
{
    add({0.0F, 50.0F, 100.0F}, {0.0F, 20.0F, 0.0F});
    graph->graphData()[0]->setLineStyle(TOLVLineStyle::dashedLineStyle());
    EXPECT_EQ(linesWith(drawn(), "lineDash"), (Lines{"lineDash 0 [5, 2]"}));
    graph->graphData()[0]->setLineStyle(nullptr);
    EXPECT_EQ(drawn(), (Lines{"save", "clip M 1 1 L 99 1 L 99 99 L 1 99 Z", "save", "stroke M 0 0 L 0 0 L 50 20", "restore", "restore"}));
}

TEST_F(TOLVCurveGraphDrawingTest, WithoutExtentsNothingIsDrawn)
{
    add({0.0F, 50.0F, 100.0F}, {0.0F, 20.0F, 0.0F});
    graph->extents()->setX(nullptr);
    EXPECT_TRUE(linesWith(drawn(), "stroke").empty());
    graph->setExtents(nullptr);
    EXPECT_TRUE(linesWith(drawn(), "stroke").empty());
}

} // namespace
} // namespace TOLVGraphing
