#include "../axes/TOLVLineAxis.h"
#include "../axes/TOLVLinearAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../drawing/BarGraphDrawing.h"
#include "../drawing/CurveGraphDrawing.h"
#include "../drawing/LineGraphDrawing.h"
#include "../drawing/TOLVDottedCurveGraphDrawing.h"
#include "../drawing/TOLVVerticalLineGraphDrawing.h"
#include "../drawing/TOLVXGraphDrawing.h"
#include "../platform/graphics/NullContext.h"
#include "TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;
using Lines = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargestFloat = static_cast<double>(std::numeric_limits<float>::max());
/// What one pass may draw at most: two frames, four grids, a few hundred labels and badges, and the data.
constexpr std::size_t kMostLines = 2000;

const Rect kFiniteRects[] = {{0.0, 0.0, 400.0, 300.0}, {0.0, 0.0, 45.0, 30.0}, {0.0, 0.0, 45.5, 30.5}, {0.0, 0.0, 10.0, 10.0}, {0.0, 0.0, 0.0, 0.0}, {5.0, 5.0, -400.0, -300.0},
    {0.0, 0.0, 1e9, 300.0}, {0.0, 0.0, 400.0, 1e9}, {-1e9, -1e9, 2e9, 2e9}, {1e7, 1e7, 400.0, 300.0}, {0.25, 0.75, 399.5, 300.25}};
const Rect kInfiniteRects[] = {{kNaN, 0.0, 400.0, 300.0}, {0.0, 0.0, kNaN, kNaN}, {0.0, 0.0, kInfinity, 300.0}, {-kInfinity, 0.0, kInfinity, kInfinity}, {0.0, 0.0, 1e300, 1e300},
    {0.0, 0.0, 400.0, -kInfinity}};

const double kRanges[][2] = {{0.0, 10.0}, {0.0, 0.0}, {5.0, 5.0}, {10.0, 0.0}, {kNaN, 10.0}, {0.0, kNaN}, {kNaN, kNaN}, {-kInfinity, kInfinity}, {0.0, kInfinity},
    {kInfinity, -kInfinity}, {kLargestFloat, -kLargestFloat}, {-kLargestFloat, kLargestFloat}, {1.0, 1e300}, {-1e300, 1e300}, {1e-310, 1e-300}, {16777216.0, 16777218.0},
    {1e-45, 1e38}, {-5.0, 1000.0}, {0.1, 0.1000001}};

class TOLVGraphRobustnessTest : public testing::Test {
protected:
    TOLVGraphRobustnessTest()
    {
        const auto nan = static_cast<float>(kNaN);
        const auto infinity = static_cast<float>(kInfinity);
        add({0.0F, 2.0F, 4.0F, 6.0F, 8.0F, 10.0F}, {1.0F, nan, infinity, -infinity, 0.0F, 3.0F});
        add({nan, 1.0F, nan, 5.0F, 100.0F, infinity}, {1.0F, 2.0F, 3.0F, nan, 5.0F, 6.0F});
        add({}, {});
        add({5.0F}, {5.0F});
        add({5.0F, 4.0F, 3.0F}, {5.0F});
        graph->addGraphData(std::make_shared<TOLVGraphData>());
        graph->setTitle("title");
        graph->horizontalAxis()->setLabel("time");
        graph->verticalAxis()->setLabel("volt");
        const double values[] = {5.0, 0.0, -1.0, kNaN, kInfinity, -kInfinity, 1e300};
        for (const double value : values) {
            for (const std::int64_t axisIndex : {0, 1, 2})
                graph->placeHorizontalAxisMarkerWithValue(value)->setAxisIndex(axisIndex);
        }
    }

    void add(std::vector<float> x, std::vector<float> y)
    {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color::blackColor()));
    }

    /// Calls the operation for each kind of axes, each strategy and each range: curves have it both ways, dots upwards only.
    template <typename Operation>
    void forEachSetup(Operation operation)
    {
        for (const bool logarithmic : {false, true}) {
            if (logarithmic) {
                graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
                graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
            }
            for (const auto& strategy :
                {std::shared_ptr<TOLVGraphDrawing>(std::make_shared<CurveGraphDrawing>()), std::shared_ptr<TOLVGraphDrawing>(std::make_shared<TOLVDottedCurveGraphDrawing>())}) {
                graph->setDrawingStrategy(strategy);
                const bool dots = std::dynamic_pointer_cast<TOLVDottedCurveGraphDrawing>(strategy) != nullptr;
                for (const auto& y : kRanges) {
                    const auto& x = dots ? kRanges[0] : y;
                    const auto setRanges = [&] {
                        graph->extents()->setX(TOLVAxisExtents::extentsWithMin(x[0], x[1]));
                        graph->extents()->setY(TOLVAxisExtents::extentsWithMin(y[0], y[1]));
                    };
                    setRanges();
                    SCOPED_TRACE(toString(*graph->extents()) + (logarithmic ? " logarithmic" : " linear"));
                    operation(setRanges);
                }
            }
        }
    }

    /// The same for graphs over categories, whose ranges say which samples and values are visible.
    template <typename Operation>
    void forEachCategorySetup(Operation operation)
    {
        const std::shared_ptr<TOLVGraphDrawing> strategies[] = {std::make_shared<BarGraphDrawing>(), std::make_shared<LineGraphDrawing>(), std::make_shared<TOLVXGraphDrawing>(),
            std::make_shared<TOLVVerticalLineGraphDrawing>(), std::make_shared<CurveGraphDrawing>()};
        for (const bool vertical : {false, true}) {
            const auto axis = std::make_shared<TOLVLineAxis>();
            axis->setTickLabels({{"one", "two", "three", "four", "five", "six", "seven"}});
            graph->setHorizontalAxis(axis);
            if (vertical)
                graph->setVerticalAxis(axis);
            for (const auto& strategy : strategies) {
                graph->setDrawingStrategy(strategy);
                for (const auto& x : kRanges) {
                    for (const auto& y : {kRanges[0], kRanges[5]}) {
                        graph->extents()->setX(TOLVAxisExtents::extentsWithMin(x[0], x[1]));
                        graph->extents()->setY(TOLVAxisExtents::extentsWithMin(y[0], y[1]));
                        SCOPED_TRACE(toString(*graph->extents()));
                        operation();
                    }
                }
            }
        }
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

/// Numbers that are not finite read "nan" and "inf" in the lines; texts write them otherwise.
bool isFinite(const std::string& line)
{
    return line.find("nan") == std::string::npos && line.find("inf") == std::string::npos;
}

TEST_F(TOLVGraphRobustnessTest, EveryPassDrawsABoundedNumberOfFiniteThings)
{
    forEachSetup([&](auto) {
        for (const Rect& rect : kFiniteRects) {
            const Lines lines = linesDrawn([&] { graph->drawInRect(rect); });
            ASSERT_LE(lines.size(), kMostLines) << toString(rect);
            for (const std::string& line : lines)
                ASSERT_TRUE(isFinite(line)) << toString(rect) << ": " << line;
        }
    });
}

TEST_F(TOLVGraphRobustnessTest, RectanglesThatAreNotFiniteEndToo)
{
    forEachSetup([&](auto) {
        for (const Rect& rect : kInfiniteRects)
            ASSERT_LE(linesDrawn([&] { graph->drawInRect(rect); }).size(), kMostLines) << toString(rect);
    });
}

TEST_F(TOLVGraphRobustnessTest, GraphsOverCategoriesDrawABoundedNumberOfFiniteThings)
{
    forEachCategorySetup([&] {
        for (const Rect& rect : kFiniteRects) {
            const Lines lines = linesDrawn([&] { graph->drawInRect(rect); });
            ASSERT_LE(lines.size(), kMostLines) << toString(rect);
            for (const std::string& line : lines)
                ASSERT_TRUE(isFinite(line)) << toString(rect) << ": " << line;
        }
        for (const Rect& rect : kInfiniteRects)
            ASSERT_LE(linesDrawn([&] { graph->drawInRect(rect); }).size(), kMostLines) << toString(rect);
    });
}

TEST_F(TOLVGraphRobustnessTest, InteractionsOverCategoriesLeaveRangesFinite)
{
    forEachCategorySetup([&] {
        for (const Rect& rect : {kFiniteRects[0], kFiniteRects[1], kFiniteRects[4], kFiniteRects[5], kFiniteRects[8], kInfiniteRects[1], kInfiniteRects[2]}) {
            const TOLVAxisExtents& x = *graph->extents()->x();
            const bool wasFinite = std::isfinite(x.min()) && std::isfinite(x.max());
            graph->prepareForDrawingInRect(rect);
            graph->zoomInXInRect(rect);
            graph->zoomOutXCenteredAtPoint(30.0F, rect);
            graph->offsetDisplayByX(-40.0F, 3e38F, rect);
            graph->placeHorizontalAxisMarkerAtPoint(30.0, rect);
            graph->removeMarkersAtIndexes({graph->countOfMarkers() - 1});
            ASSERT_TRUE(!wasFinite || (std::isfinite(graph->extents()->x()->min()) && std::isfinite(graph->extents()->x()->max()))) << toString(rect);
        }
    });
}

TEST_F(TOLVGraphRobustnessTest, TheNullContextTakesEveryPass)
{
    NullContext context;
    const CurrentContextScope scope(context);
    forEachSetup([&](auto) {
        for (const Rect& rect : {kFiniteRects[0], kFiniteRects[1], kFiniteRects[8], kInfiniteRects[1]})
            EXPECT_NO_THROW(graph->drawInRect(rect));
    });
}

TEST_F(TOLVGraphRobustnessTest, EveryInteractionLeavesFiniteRangesFinite)
{
    const auto isFiniteRange = [](const TOLVAxisExtents& range) { return std::isfinite(range.min()) && std::isfinite(range.max()); };
    const auto interact = [&](const Rect& rect) {
        graph->zoomInXInRect(rect);
        graph->zoomOutXInRect(rect);
        graph->zoomInYInRect(rect);
        graph->zoomOutYInRect(rect);
        graph->zoomInXCenteredAtPoint(30.0F, rect);
        graph->zoomOutXCenteredAtPoint(1e30F, rect);
        graph->zoomInYCenteredAtPoint(-30.0F, rect);
        graph->zoomOutYCenteredAtPoint(30.0F, rect);
        graph->offsetDisplayByX(10.0F, -10.0F, rect);
        graph->offsetDisplayByX(3e38F, -3e38F, rect);
        (void)graph->horizontalAxisMarkerAtPoint(30.0, 5.0, rect);
        (void)graph->deltaForX(5.0F, rect);
        (void)graph->valueForX(5.0F, rect);
        (void)graph->xExtentsConstrainedGraphDataRanges();
    };
    forEachSetup([&](auto setRanges) {
        const auto check = [&](const Rect& rect) {
            setRanges();
            const bool xWasFinite = isFiniteRange(*graph->extents()->x());
            const bool yWasFinite = isFiniteRange(*graph->extents()->y());
            interact(rect);
            ASSERT_TRUE(!xWasFinite || isFiniteRange(*graph->extents()->x())) << toString(rect);
            ASSERT_TRUE(!yWasFinite || isFiniteRange(*graph->extents()->y())) << toString(rect);
        };
        for (const Rect& rect : kFiniteRects)
            check(rect);
        for (const Rect& rect : kInfiniteRects)
            check(rect);
    });
}

TEST_F(TOLVGraphRobustnessTest, ManySamplesInAWideAreaStayBounded)
{
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 20000; ++i) {
        x.push_back(static_cast<float>(i) * 0.0005F);
        y.push_back(static_cast<float>(i % 7));
    }
    add(x, y);
    graph->zoomXToFixedMin(0.0F, 10.0F);
    graph->zoomYToFixedMin(0.0, 10.0);
    for (const double width : {400.0, 1e9}) {
        const Lines lines = linesDrawn([&] { graph->drawInRect({0.0, 0.0, width, 300.0}); });
        EXPECT_LE(lines.size(), kMostLines);
    }
}

TEST_F(TOLVGraphRobustnessTest, DrawingWhileZoomingInAndOutComesToRest)
{
    const Rect rect(0.0, 0.0, 400.0, 300.0);
    for (const bool logarithmic : {false, true}) {
        if (logarithmic) {
            graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
            graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
        }
        for (const bool zoomsIn : {true, false}) {
            graph->zoomXToFixedMin(1.0F, 1000.0F);
            graph->zoomYToFixedMin(1.0, 1000.0);
            for (int step = 0; step < 200; ++step) {
                if (zoomsIn) {
                    graph->zoomInXInRect(rect);
                    graph->zoomInYInRect(rect);
                } else {
                    graph->zoomOutXInRect(rect);
                    graph->zoomOutYInRect(rect);
                }
                ASSERT_LE(linesDrawn([&] { graph->drawInRect(rect); }).size(), kMostLines) << step;
            }
        }
    }
}

} // namespace
} // namespace TOLVGraphing
