#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/GraphCallout.h>
#include <TOLVGraphing/drawing/MarkerCallouts.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// A callout whose text is as large as the label.
GraphCallout calloutAt(const Rect& labelRect, double x, const std::shared_ptr<TOLVLineStyle>& style)
{
    const StubTextScope text(labelRect.size);
    return {TOLVLabel::labelWithAttributedString(AttributedString("value"), labelRect), style, x};
}

/// A pill and behind it a square of this half side with rounded corners, put in its place by the transform.
Path pillWithPointer(const Rect& box, double pillRadius, double halfSide, double pointerRadius, const AffineTransform& transform)
{
    Path path = Path::pathWithRoundedRect(box, pillRadius, pillRadius);
    const Rect square(-halfSide, -halfSide, 2.0 * halfSide, 2.0 * halfSide);
    path.addPath(Path::pathWithRoundedRect(square, pointerRadius, pointerRadius), &transform);
    return path;
}

/// The pill's points are exact; those of the pointer follow from six numbers that each may be off by the tolerance.
void expectShape(const Path& got, const Path& expected, double transformTolerance)
{
    ASSERT_TRUE(std::equal(got.verbs().begin(), got.verbs().end(), expected.verbs().begin(), expected.verbs().end()));
    const std::size_t pillPoints = Path::pathWithRoundedRect({0.0, 0.0, 20.0, 14.0}, 7.0, 7.0).points().size();
    constexpr double kLargestCoordinate = 4.0;
    for (std::size_t i = 0; i < expected.points().size(); ++i) {
        const double tolerance = i < pillPoints ? 0.0 : transformTolerance * (2.0 * kLargestCoordinate + 1.0);
        EXPECT_TRUE(within(got.points()[i], expected.points()[i], tolerance)) << "point " << i;
    }
}

void expectCallout(const GraphCallout& callout, const Json& expected)
{
    EXPECT_TRUE(same(callout.label->rect(), rectOf(expected["labelRect"]))) << "labelRect";
    const AffineTransform transform = transformOf(expected["pointerTransform"]);
    const double tolerance = expected["transformTolAbs"].number();
    expectShape(callout.outerPath, pillWithPointer(rectOf(expected["box"]), 7.0, 4.0, 2.0, transform), tolerance);
    expectShape(callout.innerPath, pillWithPointer(rectOf(expected["innerBox"]), 6.0, 3.0, 1.0, transform), tolerance);
    EXPECT_TRUE(within(callout.bounds(), rectOf(expected["bounds"]), expected["boundsTolAbs"].number())) << "bounds";
}

std::shared_ptr<TOLVGraph> markerGraphOf(const Json& input)
{
    auto graph = graphOf(input);
    for (const Json& series : input["series"].elements())
        graph->addGraphData(seriesOf(series));
    for (const Json& value : input["markers"].elements())
        static_cast<void>(graph->placeHorizontalAxisMarkerWithValue(value.number()));
    // The value that a callout shows is read back from its text.
    graph->verticalAxis()->setTickLabelFormatter(std::make_shared<ExactNumberFormatter>());
    return graph;
}

/// The origins of the texts that have to be drawn for the kept callouts of all markers, in order.
std::vector<Point> keptTextOrigins(const Json& markers)
{
    std::vector<Point> origins;
    for (const Json& marker : markers.elements()) {
        for (const Json& callout : marker["callouts"].elements()) {
            if (callout["kept"].boolean())
                origins.push_back(rectOf(callout["labelRect"]).origin);
        }
    }
    return origins;
}

void expectMarkerCallout(const GraphCallout& callout, const Json& expected, const TOLVGraph& graph, const Rect& rect)
{
    const auto& series = *graph.graphData().at(static_cast<std::size_t>(expected["series"].unsignedInteger()));
    EXPECT_EQ(callout.lineStyle, series.lineStyle()) << "series";
    const double shown = ExactNumberFormatter::numberFromString(callout.label->label().string());
    EXPECT_TRUE(same(shown, static_cast<double>(expected["value"].singleNumber()))) << "value";
    EXPECT_TRUE(same(static_cast<double>(graph.YForValue(static_cast<float>(shown), rect)), expected["point"][1].number())) << "point";

    // The label's place before is what the callout was made from: made from it again, the callout is the same.
    const GraphCallout remade(TOLVLabel::labelWithAttributedString(callout.label->label(), rectOf(expected["placedRect"])), nullptr, expected["point"][0].number());
    EXPECT_TRUE(same(callout.label->rect(), remade.label->rect())) << "placedRect";
    EXPECT_TRUE(samePath(callout.outerPath, remade.outerPath)) << "placedRect";
    expectCallout(callout, expected);
}

} // namespace

EXPECTED_VALUES_TEST(callouts, callout)
{
    const auto style = TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 1.0);
    const GraphCallout callout = calloutAt(rectOf(testCase.input["labelRect"]), testCase.input["x"].number(), style);
    expectCallout(callout, testCase.expected);
    EXPECT_EQ(callout.label->label().attributes().foregroundColor, style->color());
}

EXPECTED_VALUES_TEST(callouts, keepCallouts)
{
    const auto labelRects = rectsOf(testCase.input["labelRects"]);
    const Json& bounds = testCase.expected["bounds"];
    ASSERT_EQ(bounds.size(), labelRects.size());
    std::vector<MarkerCallout> callouts;
    for (std::size_t i = 0; i < labelRects.size(); ++i) {
        callouts.push_back({calloutAt(labelRects[i], testCase.input["x"].number(), nullptr), i});
        EXPECT_TRUE(within(callouts.back().callout.bounds(), rectOf(bounds[i]), testCase.expected["boundsTolAbs"].number())) << "bounds of " << i;
    }
    std::vector<std::size_t> kept;
    const auto overlapped = overlappedCallouts(callouts);
    for (std::size_t i = 0; i < callouts.size(); ++i) {
        if (!overlapped[i])
            kept.push_back(i);
        else
            EXPECT_TRUE(std::find(kept.begin(), kept.end(), *overlapped[i]) != kept.end()) << "a callout gives way to one that is kept";
    }
    EXPECT_EQ(kept, indexesOf(testCase.expected["kept"]));
}

EXPECTED_VALUES_TEST(callouts, markerCallouts)
{
    const StubTextScope text(sizeOf(testCase.input["textSize"]));
    const auto graph = markerGraphOf(testCase.input);
    const Rect rect = rectOf(testCase.input["rect"]);
    const Json& markers = testCase.expected["markers"];
    ASSERT_EQ(markers.size(), graph->markers().size());
    for (std::size_t i = 0; i < markers.size(); ++i) {
        SCOPED_TRACE("marker " + std::to_string(i));
        const TOLVMarker& marker = *graph->markers()[i];
        EXPECT_TRUE(same(graph->XForValue(static_cast<float>(marker.value()), rect), markers[i]["x"].singleNumber())) << "x";
        const auto callouts = calloutsForMarker(marker, *graph, rect);
        const Json& expected = markers[i]["callouts"];
        ASSERT_EQ(callouts.size(), expected.size());
        for (std::size_t j = 0; j < callouts.size(); ++j) {
            SCOPED_TRACE("callout " + std::to_string(j));
            EXPECT_EQ(callouts[j].series, expected[j]["series"].unsignedInteger());
            expectMarkerCallout(callouts[j].callout, expected[j], *graph, rect);
        }
    }

    const auto calls = recorded([&] { graph->drawMarkersInRect(rect); });
    EXPECT_TRUE(samePath(onlyCallOf(calls, "clip").path(), Path::pathWithRect(rectOf(testCase.expected["clip"])))) << "clip";
    std::vector<Point> origins;
    for (const RecordedCall& call : callsOf(calls, "text"))
        origins.push_back(call.textOrigin());
    EXPECT_TRUE(same(origins, keptTextOrigins(markers))) << "kept";
}

TEST(MarkerCallouts, EndAtTheFirstSeriesThatTheMarkerLiesOutsideOf)
{
    struct Row {
        double marker;
        std::size_t callouts;
    };
    // The second series runs from 4 to 6, the others from 0 to 10.
    const Row rows[] = {{5.0, 3}, {4.0, 3}, {6.0, 3}, {3.5, 1}, {6.5, 1}, {0.0, 1}, {10.0, 1}, {-0.5, 0}, {10.5, 0}};
    const StubTextScope text(Size{20.0, 10.0});
    const auto graph = TOLVGraph::graph();
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(-5.0, 15.0));
    graph->extents()->setY(TOLVAxisExtents::extentsWithMin(0.0, 10.0));
    for (const auto& [first, last] : {std::pair{0.0F, 10.0F}, std::pair{4.0F, 6.0F}, std::pair{0.0F, 10.0F}}) {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({first, last}), TOLVRealVector::vectorWithComponents({1.0F, 2.0F}), Color::blackColor()));
    }
    for (const Row& row : rows)
        EXPECT_EQ(calloutsForMarker(TOLVMarker(row.marker), *graph, {0.0, 0.0, 400.0, 300.0}).size(), row.callouts) << row.marker;
}
