#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <string>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

void applyZoom(TOLVGraph& graph, const std::string& operation, const Rect& rect)
{
    if (operation == "zoomInX")
        graph.zoomInXInRect(rect);
    else if (operation == "zoomOutX")
        graph.zoomOutXInRect(rect);
    else if (operation == "zoomInY")
        graph.zoomInYInRect(rect);
    else if (operation == "zoomOutY")
        graph.zoomOutYInRect(rect);
    else
        throw JsonError("there is no step \"" + operation + "\"");
}

void applyZoomAtPoint(TOLVGraph& graph, const std::string& operation, float point, const Rect& rect)
{
    if (operation == "zoomInX")
        graph.zoomInXCenteredAtPoint(point, rect);
    else if (operation == "zoomOutX")
        graph.zoomOutXCenteredAtPoint(point, rect);
    else if (operation == "zoomInY")
        graph.zoomInYCenteredAtPoint(point, rect);
    else if (operation == "zoomOutY")
        graph.zoomOutYCenteredAtPoint(point, rect);
    else
        throw JsonError("there is no step \"" + operation + "\"");
}

void applyStep(TOLVGraph& graph, const Json& step, const Rect& rect)
{
    const std::string& operation = step[0].text();
    if (operation == "offset")
        graph.offsetDisplayByX(step[1].singleNumber(), step[2].singleNumber(), rect);
    else if (operation == "fixedX")
        graph.zoomXToFixedMin(step[1].singleNumber(), step[2].singleNumber());
    else if (operation == "fixedY")
        graph.zoomYToFixedMin(step[1].number(), step[2].number());
    else if (step.size() > 1)
        applyZoomAtPoint(graph, operation, step[1].singleNumber(), rect);
    else
        applyZoom(graph, operation, rect);
}

void expectExtents(const TOLVAxisExtents& got, const Json& expected, const Json* tolerances)
{
    EXPECT_TRUE(within(got.min(), expected[0].number(), tolerances ? (*tolerances)[0].number() : 0.0)) << "min";
    EXPECT_TRUE(within(got.max(), expected[1].number(), tolerances ? (*tolerances)[1].number() : 0.0)) << "max";
}

/// Converts every input number and compares with the list of results; a list of tolerances beside it allows for them.
template <typename Convert>
void expectConversions(const Json& input, const Json& expected, const std::string& key, Convert convert)
{
    SCOPED_TRACE(key);
    const Json& results = expected[key];
    const Json* tolerances = expected.find(key + "TolAbs");
    ASSERT_EQ(results.size(), input.size());
    for (std::size_t i = 0; i < input.size(); ++i) {
        const double tolerance = tolerances ? (*tolerances)[i].number() : 0.0;
        EXPECT_TRUE(within(convert(input[i].singleNumber()), results[i].singleNumber(), tolerance)) << "result " << i;
    }
}

} // namespace

EXPECTED_VALUES_TEST(zoom, steps)
{
    const auto graph = graphOf(testCase.input);
    const Rect rect = rectOf(testCase.input["rect"]);
    const Json& steps = testCase.input["steps"];
    const Json& expected = testCase.expected["extents"];
    const Json* tolerances = testCase.expected.find("tolAbs");
    ASSERT_EQ(expected.size(), steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE("step " + std::to_string(i));
        applyStep(*graph, steps[i], rect);
        expectExtents(*graph->extents()->x(), expected[i]["x"], tolerances ? &(*tolerances)[i]["x"] : nullptr);
        expectExtents(*graph->extents()->y(), expected[i]["y"], tolerances ? &(*tolerances)[i]["y"] : nullptr);
    }
}

EXPECTED_VALUES_TEST(zoom, convert)
{
    const Json& input = testCase.input;
    const Json& expected = testCase.expected;
    const auto graph = graphOf(input);
    const Rect rect = rectOf(input["rect"]);
    expectConversions(input["points"], expected, "valueForX", [&](float x) { return graph->valueForX(x, rect); });
    expectConversions(input["points"], expected, "valueForY", [&](float y) { return graph->valueForY(y, rect); });
    expectConversions(input["values"], expected, "XForValue", [&](float value) { return graph->XForValue(value, rect); });
    expectConversions(input["values"], expected, "YForValue", [&](float value) { return graph->YForValue(value, rect); });
    expectConversions(input["deltas"], expected, "deltaForX", [&](float delta) { return graph->deltaForX(delta, rect); });
    expectConversions(input["deltas"], expected, "deltaForY", [&](float delta) { return graph->deltaForY(delta, rect); });
}

EXPECTED_VALUES_TEST(zoom, hitTest)
{
    const auto graph = graphOf(testCase.input);
    TOLVGraph::Markers markers;
    for (const Json& entry : testCase.input["markers"].elements()) {
        markers.push_back(TOLVMarker::markerWithValue(entry["value"].number()));
        markers.back()->setAxisIndex(entry["axisIndex"].integer());
    }
    graph->setMarkers(markers);
    const Rect rect = rectOf(testCase.input["rect"]);
    const double at = testCase.input["at"].number();
    const double radius = testCase.input["radius"].number();
    const std::int64_t index = testCase.expected["index"].integer();
    EXPECT_EQ(graph->indexOfHorizontalAxisMarkerAtPoint(at, radius, rect), index);
    const auto found = graph->horizontalAxisMarkerAtPoint(at, radius, rect);
    EXPECT_EQ(found != nullptr, testCase.expected["found"].boolean());
    if (index != kNotFoundIndex) {
        EXPECT_EQ(found, markers.at(static_cast<std::size_t>(index)));
    }
}

TEST(Panning, AddsTheDistanceToTheNarrowedEdge)
{
    // 16777217 narrows to 16777216, and adding 1 to that in single precision changes nothing; at double precision the range would move.
    const auto graph = TOLVGraph::graph();
    graph->setMargin({});
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.0, 100.0));
    graph->offsetDisplayByX(1.0F, 0.0F, {16777217.0, 0.0, 100.0, 100.0});
    EXPECT_TRUE(same(graph->extents()->x()->min(), 0.0));
    EXPECT_TRUE(same(graph->extents()->x()->max(), 100.0));
}
