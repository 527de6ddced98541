#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>

#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// Colours that tell series apart.
Color colorOfSeries(std::size_t series)
{
    return {static_cast<double>(series) / 64.0, 0.25, 0.5};
}

/// The graph of a case; a series that `hasColor` denies has a style without one.
std::shared_ptr<TOLVGraph> coloredGraphOf(const Json& input)
{
    auto graph = graphOf(input);
    for (const Json& json : input["series"].elements()) {
        auto series = seriesOf(json);
        const Json* hasColor = json.find("hasColor");
        series->setColor(!hasColor || hasColor->boolean() ? std::optional<Color>(colorOfSeries(graph->graphData().size())) : std::nullopt);
        graph->addGraphData(std::move(series));
    }
    return graph;
}

/// What is filled, and with which colour.
struct FilledRect {
    std::string color;
    Path path;
};

std::vector<FilledRect> filledIn(const RecordedCalls& calls)
{
    std::vector<FilledRect> filled;
    std::string color;
    for (const RecordedCall& call : calls) {
        if (call.operation() == "fillColor")
            color = call.arguments();
        else if (call.operation() == "fill")
            filled.push_back({color, call.path()});
    }
    return filled;
}

/// A segment from each point of even position to the next.
Path segments(const std::vector<Point>& points)
{
    Path path;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i % 2 == 0)
            path.moveToPoint(points[i]);
        else
            path.addLineToPoint(points[i]);
    }
    return path;
}

void expectClip(const RecordedCalls& calls, const VectorCase& testCase)
{
    EXPECT_TRUE(samePath(onlyCallOf(calls, "clip").path(), Path::pathWithRect(rectOf(testCase.expected["clip"])))) << "clip";
}

/// Draws each expected bar alone, in its place of its group, with the widths that the case gives: it has to come to stand where the whole drawing has it.
void expectBarsOfGroups(const std::shared_ptr<TOLVGraph>& graph, const VectorCase& testCase)
{
    const Json& expected = testCase.expected;
    const Rect rect = rectOf(testCase.input["rect"]);
    const double pad = 0.01 * rect.width();
    const Rect clip = rectOf(expected["clip"]);
    for (const Json& bar : expected["bars"].elements()) {
        SCOPED_TRACE("group " + bar["group"].numberText() + " bar " + bar["bar"].numberText());
        EXPECT_LT(bar["bar"].unsignedInteger(), expected["maxBars"].unsignedInteger());
        EXPECT_LT(bar["group"].unsignedInteger(), expected["groupCount"].unsignedInteger());
        const double slotWidth = expected["slotWidth"].number();
        const Rect slot(clip.x() + pad + static_cast<double>(bar["group"].unsignedInteger()) * slotWidth + pad, clip.y(), slotWidth - 2.0 * pad, clip.height());
        // The bars before it have no style and only take up their places.
        BarGroup group{std::vector<Bar>(static_cast<std::size_t>(bar["bar"].unsignedInteger())), graph, rect};
        const Rect barRect = rectOf(bar["rect"]);
        const float value = graph->valueForY(static_cast<float>(barRect.maxY()), rect);
        group.bars.push_back({value, bar["series"].integer(), TOLVLineStyle::solidLineWithColor(Color::blackColor(), 1.0)});
        RecordingContext context;
        group.drawInRect(slot, expected["barWidth"].number(), context);
        ASSERT_EQ(context.calls().size(), 2U);
        const Path drawn = RecordedCall(context.calls()[1]).path();
        const auto corners = drawn.points();
        EXPECT_TRUE(within(corners[0], barRect.origin, expected["tolAbs"].number())) << "lower left corner";
        EXPECT_TRUE(within(corners[1].x - corners[0].x, barRect.width(), expected["tolAbs"].number())) << "width";
    }
}

} // namespace

EXPECTED_VALUES_TEST(bars_marks, bars)
{
    const auto graph = coloredGraphOf(testCase.input);
    const Json& expected = testCase.expected;
    const auto calls = recorded([&] { BarGraphDrawing().drawGraph(graph, rectOf(testCase.input["rect"])); });
    expectClip(calls, testCase);
    const auto filled = filledIn(calls);
    ASSERT_EQ(filled.size(), expected["bars"].size());
    for (std::size_t i = 0; i < filled.size(); ++i) {
        SCOPED_TRACE("bar " + std::to_string(i));
        const Json& bar = expected["bars"][i];
        EXPECT_TRUE(samePath(filled[i].path, Path::pathWithRect(rectOf(bar["rect"])), expected["tolAbs"].number()));
        EXPECT_EQ(filled[i].color, toString(colorOfSeries(static_cast<std::size_t>(bar["series"].unsignedInteger()))));
    }
    expectBarsOfGroups(graph, testCase);
}

EXPECTED_VALUES_TEST(bars_marks, xMarks)
{
    const auto graph = coloredGraphOf(testCase.input);
    const auto calls = recorded([&] { TOLVXGraphDrawing().drawGraph(graph, rectOf(testCase.input["rect"])); });
    expectClip(calls, testCase);
    const auto strokes = callsOf(calls, "stroke");
    const double tolerance = testCase.expected["tolAbs"].number();
    std::size_t next = 0;
    for (const Json& marks : testCase.expected["marks"].elements()) {
        for (const Json& mark : marks.elements()) {
            SCOPED_TRACE("mark " + std::to_string(next));
            ASSERT_LT(next, strokes.size());
            EXPECT_TRUE(samePath(strokes[next++].path(), segments(pointsOf(mark)), tolerance));
        }
    }
    EXPECT_EQ(next, strokes.size());
}

EXPECTED_VALUES_TEST(bars_marks, verticalLines)
{
    const auto graph = coloredGraphOf(testCase.input);
    const auto calls = recorded([&] { TOLVVerticalLineGraphDrawing().drawGraph(graph, rectOf(testCase.input["rect"])); });
    expectClip(calls, testCase);
    const auto filled = filledIn(calls);
    std::size_t next = 0;
    const Json& marks = testCase.expected["marks"];
    for (std::size_t series = 0; series < marks.size(); ++series) {
        for (const Json& mark : marks[series].elements()) {
            if (mark.isNull())
                continue;
            SCOPED_TRACE("line " + std::to_string(next));
            ASSERT_LT(next, filled.size());
            EXPECT_TRUE(samePath(filled[next].path, Path::pathWithRect(rectOf(mark)), testCase.expected["tolAbs"].number()));
            EXPECT_EQ(filled[next].color, toString(colorOfSeries(series)));
            ++next;
        }
    }
    EXPECT_EQ(next, filled.size());
}
