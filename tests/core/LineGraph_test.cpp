#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/drawing/CalloutLabel.h>
#include <TOLVGraphing/drawing/DataDots.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>

#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

Path polyline(const std::vector<Point>& points)
{
    Path path;
    for (const Point& point : points)
        path.addLineToPoint(point);
    return path;
}

Path polygon(const std::vector<Point>& points)
{
    Path path = polyline(points);
    path.closeSubpath();
    return path;
}

Path ovals(const std::vector<Rect>& rects)
{
    Path path;
    for (const Rect& rect : rects)
        path.addPath(Path::pathWithOvalInRect(rect));
    return path;
}

std::shared_ptr<TOLVGraph> lineGraphOf(const Json& input)
{
    auto graph = graphOf(input);
    graph->setHorizontalAxis(std::make_shared<TOLVLineAxis>());
    for (const Json& series : input["series"].elements())
        graph->addGraphData(seriesOf(series));
    return graph;
}

/// Each series is an area, a line and its dots, clipped to the plot rectangle of its own; behind the series come the texts, clipped likewise.
void expectDrawing(const RecordedCalls& calls, const Json& expected)
{
    const double tolerance = expected["tolAbs"].number();
    const Json& series = expected["series"];
    const auto clips = callsOf(calls, "clip");
    ASSERT_EQ(clips.size(), series.size() + 1);
    for (const RecordedCall& clip : clips)
        EXPECT_TRUE(samePath(clip.path(), Path::pathWithRect(rectOf(expected["plotRect"])), tolerance));
    const auto fills = callsOf(calls, "fill");
    const auto strokes = callsOf(calls, "stroke");
    ASSERT_EQ(fills.size(), 2 * series.size());
    ASSERT_EQ(strokes.size(), 2 * series.size());
    for (std::size_t i = 0; i < series.size(); ++i) {
        SCOPED_TRACE("series " + std::to_string(i));
        const Path dots = ovals(rectsOf(series[i]["dots"]));
        EXPECT_TRUE(samePath(fills[2 * i].path(), polygon(pointsOf(series[i]["area"])), tolerance)) << "area";
        EXPECT_TRUE(samePath(strokes[2 * i].path(), polyline(pointsOf(series[i]["points"])), tolerance)) << "line";
        EXPECT_TRUE(samePath(fills[2 * i + 1].path(), dots, tolerance)) << "dots";
        EXPECT_TRUE(samePath(strokes[2 * i + 1].path(), dots, tolerance)) << "rings";
    }
}

} // namespace

EXPECTED_VALUES_TEST(callouts, pointShapes)
{
    const StubTextScope text(sizeOf(testCase.input["textSize"]));
    const Point point = pointOf(testCase.input["point"]);
    EXPECT_TRUE(same(rectForCalloutLabel(AttributedString("value"), point), rectOf(testCase.expected["textRect"]))) << "textRect";
    EXPECT_TRUE(same(dataDotRectForPoint(point), rectOf(testCase.expected["dotRect"]))) << "dotRect";
    EXPECT_TRUE(same(dataDotRects(std::vector<Point>{point}), {rectOf(testCase.expected["dotRect"])})) << "dotRect";
}

EXPECTED_VALUES_TEST(callouts, overlapsRect)
{
    const CalloutLabel label{AttributedString("value"), rectOf(testCase.input["rect"])};
    EXPECT_EQ(label.overlapsRect(rectOf(testCase.input["other"]), testCase.input["padding"].number()), testCase.expected["overlaps"].boolean());
}

EXPECTED_VALUES_TEST(callouts, keepLabels)
{
    std::vector<std::vector<CalloutLabel>> categories;
    std::size_t count = 0;
    for (const Json& group : testCase.input["groups"].elements()) {
        categories.emplace_back();
        for (const Rect& rect : rectsOf(group))
            categories.back().push_back({AttributedString(std::to_string(count++)), rect});
    }
    const auto placements = placeCalloutLabels(categories, rectsOf(testCase.input["dots"]));
    EXPECT_EQ(placements.size(), count);
    std::vector<CalloutLabelPlacement> kept;
    for (const CalloutLabelPlacement& placement : placements) {
        EXPECT_EQ(placement.label, categories.at(placement.category).at(placement.position));
        if (placement.fate == CalloutFate::Kept)
            kept.push_back(placement);
    }
    const Json& expected = testCase.expected["kept"];
    ASSERT_EQ(kept.size(), expected.size());
    for (std::size_t i = 0; i < kept.size(); ++i) {
        EXPECT_EQ(kept[i].category, expected[i]["group"].unsignedInteger()) << "kept " << i;
        EXPECT_TRUE(same(kept[i].label.rect, rectOf(expected[i]["rect"]))) << "kept " << i;
    }
}

EXPECTED_VALUES_TEST(callouts, lineGraph)
{
    const Json& expected = testCase.expected;
    const StubTextScope text(sizeOf(testCase.input["textSize"]));
    const auto graph = lineGraphOf(testCase.input);
    const Rect rect = rectOf(testCase.input["rect"]);
    graph->prepareForDrawingInRect(rect);
    EXPECT_EQ(maximumGraphDataLength(*graph), expected["maximumGraphDataLength"].unsignedInteger());

    LineGraphDrawing drawing;
    const auto calls = recorded([&] { drawing.drawGraph(graph, rect); });
    expectDrawing(calls, expected);

    const double tolerance = expected["tolAbs"].number();
    std::vector<std::size_t> groupSizes(expected["groupSizes"].size());
    std::vector<CalloutPlacement> kept;
    for (const CalloutPlacement& placement : drawing.calloutPlacements(*graph, rect)) {
        ++groupSizes.at(placement.position);
        if (placement.fate == CalloutFate::Kept)
            kept.push_back(placement);
    }
    EXPECT_EQ(groupSizes, indexesOf(expected["groupSizes"]));
    const auto texts = callsOf(calls, "text");
    ASSERT_EQ(kept.size(), expected["kept"].size());
    ASSERT_EQ(texts.size(), kept.size());
    for (std::size_t i = 0; i < kept.size(); ++i) {
        SCOPED_TRACE("kept " + std::to_string(i));
        const Rect textRect = rectOf(expected["kept"][i]["rect"]);
        EXPECT_EQ(kept[i].position, expected["kept"][i]["group"].unsignedInteger());
        EXPECT_TRUE(within(kept[i].textRect, textRect, tolerance));
        EXPECT_TRUE(within(texts[i].textOrigin(), textRect.origin, tolerance));
        EXPECT_EQ(texts[i].drawnText(), kept[i].text);
    }
}
