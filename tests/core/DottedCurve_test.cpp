#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>

#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// What was drawn for one series: dots are filled, and the stroke of the line ends the series.
struct DrawnSeries {
    std::vector<Path> dots;
    Path line;
};

std::vector<DrawnSeries> drawnSeriesOf(const RecordedCalls& calls)
{
    std::vector<DrawnSeries> all;
    DrawnSeries current;
    for (const RecordedCall& call : calls) {
        if (call.operation() == "fill") {
            current.dots.push_back(call.path());
        } else if (call.operation() == "stroke") {
            current.line = call.path();
            all.push_back(std::exchange(current, {}));
        }
    }
    EXPECT_TRUE(current.dots.empty());
    return all;
}

Path polyline(const std::vector<Point>& points)
{
    Path path;
    for (const Point& point : points)
        path.addLineToPoint(point);
    return path;
}

} // namespace

EXPECTED_VALUES_TEST(bars_marks, dotted)
{
    const auto graph = graphOf(testCase.input);
    for (const Json& values : testCase.input["series"].elements())
        graph->addGraphData(TOLVGraphData::graphDataWithX(nullptr, vectorOf(values), Color::blackColor()));
    const Rect rect = rectOf(testCase.input["rect"]);
    const auto calls = recorded([&] { TOLVDottedCurveGraphDrawing().drawGraph(graph, rect); });
    EXPECT_TRUE(samePath(onlyCallOf(calls, "clip").path(), Path::pathWithRect(rectOf(testCase.expected["clip"])))) << "clip";

    const auto drawn = drawnSeriesOf(calls);
    const Json& expected = testCase.expected["series"];
    ASSERT_EQ(drawn.size(), expected.size());
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        SCOPED_TRACE("series " + std::to_string(i));
        EXPECT_TRUE(samePath(drawn[i].line, polyline(pointsOf(expected[i]["points"])))) << "line";
        const auto dots = rectsOf(expected[i]["dots"]);
        ASSERT_EQ(drawn[i].dots.size(), dots.size());
        for (std::size_t j = 0; j < dots.size(); ++j)
            EXPECT_TRUE(samePath(drawn[i].dots[j], Path::pathWithRect(dots[j]))) << "dot " << j;
    }
}
