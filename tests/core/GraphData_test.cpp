#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <csignal>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// A series of the abscissae with ordinates that no operation under test looks at.
std::shared_ptr<TOLVGraphData> seriesWithX(const Json& x)
{
    auto y = TOLVRealVector::vectorWithComponents(std::vector<float>(x.size(), 1.0F));
    return TOLVGraphData::graphDataWithX(vectorOf(x), std::move(y), Color::blackColor());
}

PropertyValue propertyValueOf(const Json& json)
{
    if (json.isNull())
        return std::monostate();
    if (json.isObject())
        return json["text"].text();
    return json.number();
}

void expectPropertyValue(const PropertyValue& got, const Json& expected)
{
    if (expected.isNull()) {
        EXPECT_TRUE(std::holds_alternative<std::monostate>(got));
    } else if (expected.isObject()) {
        ASSERT_TRUE(std::holds_alternative<std::string>(got));
        EXPECT_EQ(std::get<std::string>(got), expected["text"].text());
    } else {
        const auto number = numberValue(got);
        ASSERT_TRUE(number.has_value());
        EXPECT_TRUE(same(*number, expected.number()));
    }
}

void expectExtents(const TOLVAxisExtents& got, const Json& expected)
{
    EXPECT_TRUE(same(got.min(), expected[0].number())) << "min";
    EXPECT_TRUE(same(got.max(), expected[1].number())) << "max";
}

} // namespace

EXPECTED_VALUES_TEST(graph_data, dataExtremes)
{
    const Json& expected = testCase.expected;
    const auto graph = TOLVGraph::graph();
    for (const Json& series : testCase.input["series"].elements())
        graph->addGraphData(seriesOf(series));
    EXPECT_TRUE(same(graph->minXValue(), expected["minXValue"].singleNumber())) << "minXValue";
    EXPECT_TRUE(same(graph->maxXValue(), expected["maxXValue"].singleNumber())) << "maxXValue";
    EXPECT_TRUE(same(graph->minYValue(), expected["minYValue"].singleNumber())) << "minYValue";
    EXPECT_TRUE(same(graph->maxYValue(), expected["maxYValue"].singleNumber())) << "maxYValue";
    const auto fitted = graph->extentsFittingGraphData();
    expectExtents(*fitted->x(), expected["fittedX"]);
    expectExtents(*fitted->y(), expected["fittedY"]);
    graph->zoomToFitXInRect({});
    graph->zoomToFitYInRect({});
    expectExtents(*graph->extents()->x(), expected["fittedX"]);
    expectExtents(*graph->extents()->y(), expected["fittedY"]);
    EXPECT_EQ(graph->canDraw(), expected["canDrawAfterFit"].boolean());
}

EXPECTED_VALUES_TEST(graph_data, xExtremes)
{
    const auto graph = TOLVGraph::graph();
    for (const Json& x : testCase.input["x"].elements())
        graph->addGraphData(seriesWithX(x));
    EXPECT_TRUE(same(graph->minXValue(), testCase.expected["minXValue"].singleNumber()));
    EXPECT_TRUE(same(graph->maxXValue(), testCase.expected["maxXValue"].singleNumber()));
}

EXPECTED_VALUES_TEST(graph_data, visibleRanges)
{
    const Json& expected = testCase.expected;
    const auto graph = TOLVGraph::graph();
    graph->extents()->setX(extentsOf(testCase.input["extents"]));
    for (const Json& x : testCase.input["x"].elements())
        graph->addGraphData(seriesWithX(x));
    const auto ranges = graph->xExtentsConstrainedGraphDataRanges();
    ASSERT_EQ(ranges.has_value(), !expected["ranges"].isNull());
    EXPECT_EQ(!ranges.has_value(), expected["stopsWhenRequired"].boolean());
    if (!ranges) {
        // Each of these starts a process that has to end by itself.
        EXPECT_EXIT(static_cast<void>(graph->graphDataRangesConstrainedByXExtents()), testing::KilledBySignal(SIGABRT), "");
        EXPECT_EXIT(static_cast<void>(graph->graphDataConstrainedByXExtents()), testing::KilledBySignal(SIGABRT), "");
        return;
    }
    std::vector<IndexRange> expectedRanges;
    for (const Json& range : expected["ranges"].elements())
        expectedRanges.push_back({range[0].unsignedInteger(), range[1].unsignedInteger()});
    ASSERT_EQ(ranges->size(), expectedRanges.size());
    for (std::size_t i = 0; i < expectedRanges.size(); ++i) {
        EXPECT_EQ((*ranges)[i].location, expectedRanges[i].location) << "series " << i;
        EXPECT_EQ((*ranges)[i].length, expectedRanges[i].length) << "series " << i;
    }
    EXPECT_EQ(graph->graphDataRangesConstrainedByXExtents(), *ranges);
}

EXPECTED_VALUES_TEST(graph_data, visibleData)
{
    const auto graph = TOLVGraph::graph();
    graph->extents()->setX(extentsOf(testCase.input["extents"]));
    for (const Json& series : testCase.input["series"].elements())
        graph->addGraphData(seriesOf(series));
    const auto visible = graph->graphDataConstrainedByXExtents();
    const Json& expected = testCase.expected["series"];
    ASSERT_EQ(visible.size(), expected.size());
    for (std::size_t i = 0; i < visible.size(); ++i) {
        EXPECT_TRUE(same(samplesOf(visible[i]->X()), floatsOf(expected[i]["x"]))) << "x of series " << i;
        EXPECT_TRUE(same(samplesOf(visible[i]->Y()), floatsOf(expected[i]["y"]))) << "y of series " << i;
    }
}

EXPECTED_VALUES_TEST(graph_data, validate)
{
    const auto graph = graphOf(testCase.input);
    const std::string& keyPath = testCase.input["keyPath"].text();
    PropertyValue value = propertyValueOf(testCase.input["value"]);
    std::string error;
    EXPECT_EQ(graph->validateExtentsValue(value, keyPath, &error), testCase.expected["accepted"].boolean());
    expectPropertyValue(value, testCase.expected["value"]);
    EXPECT_TRUE(error.empty());

    // The extents ask their graph the same question.
    PropertyValue sameValue = propertyValueOf(testCase.input["value"]);
    EXPECT_EQ(graph->extents()->validateValue(sameValue, keyPath, &error), testCase.expected["accepted"].boolean());
    expectPropertyValue(sameValue, testCase.expected["value"]);
    EXPECT_TRUE(error.empty());
}

EXPECTED_VALUES_TEST(graph_data, isLog)
{
    const auto graph = graphOf(testCase.input);
    EXPECT_EQ(graph->XIsLog(), testCase.expected["XIsLog"].boolean());
    EXPECT_EQ(graph->YIsLog(), testCase.expected["YIsLog"].boolean());
}

EXPECTED_VALUES_TEST(graph_data, canDraw)
{
    const auto graph = graphOf(testCase.input);
    for (std::uint64_t i = 0; i < testCase.input["seriesCount"].unsignedInteger(); ++i)
        graph->addGraphData(std::make_shared<TOLVGraphData>());
    EXPECT_EQ(graph->canDraw(), testCase.expected["canDraw"].boolean());
}
