#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/axes/TOLVLinearAxis.h>

#include <array>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

EXPECTED_VALUES_TEST(layout, graphRects)
{
    const Json& expected = testCase.expected;
    const StubTextScope text(sizeOf(testCase.input["titleSize"]));
    const auto graph = graphOf(testCase.input);
    graph->setTitle("Title");
    const Rect rect = rectOf(testCase.input["rect"]);
    EXPECT_TRUE(same(graph->dataRectInRect(rect), rectOf(expected["dataRect"]))) << "dataRect";
    EXPECT_TRUE(same(graph->horizontalAxisRectInRect(rect), rectOf(expected["horizontalAxisRect"]))) << "horizontalAxisRect";
    EXPECT_TRUE(same(graph->verticalAxisRectInRect(rect), rectOf(expected["verticalAxisRect"]))) << "verticalAxisRect";
    EXPECT_TRUE(same(graph->titleBandInRect(rect), rectOf(expected["titleBand"]))) << "titleBand";

    const auto calls = recorded([&] { graph->drawTitleInRect(rect); });
    EXPECT_TRUE(same(onlyCallOf(calls, "text").textOrigin(), pointOf(expected["titlePoint"]))) << "titlePoint";

    graph->prepareForDrawingInRect(rect);
    EXPECT_TRUE(same(graph->horizontalAxis()->margin(), expected["horizontalAxisMargin"].number()));
    EXPECT_TRUE(same(graph->horizontalAxis()->padding(), expected["horizontalAxisPadding"].number()));
    EXPECT_TRUE(same(graph->verticalAxis()->margin(), expected["verticalAxisMargin"].number()));
    EXPECT_TRUE(same(graph->verticalAxis()->padding(), expected["verticalAxisPadding"].number()));
}

EXPECTED_VALUES_TEST(layout, axisRects)
{
    const Json& input = testCase.input;
    const Json& expected = testCase.expected;
    auto [graph, axis] = axisSetup("linear", input["vertical"].boolean(), TOLVAxisExtents::extentsWithMin(0.0, 1.0));
    graph->setLabelFontHeight(input["labelFontHeight"].number());
    graph->setTickLabelFontHeight(input["tickLabelFontHeight"].number());
    if (!input["attached"].boolean())
        axis = std::make_shared<TOLVLinearAxis>();
    axis->setPadding(input["padding"].number());
    axis->setMargin(input["margin"].number());
    axis->setTickLabelPadding(input["tickLabelPadding"].number());

    const Rect rect = rectOf(input["rect"]);
    EXPECT_EQ(axis->isVertical(), expected["isVertical"].boolean());
    EXPECT_TRUE(same(axis->dataRectInRect(rect), rectOf(expected["dataRect"]))) << "dataRect";
    EXPECT_TRUE(same(axis->tickLabelRectInRect(rect), rectOf(expected["tickLabelRect"]))) << "tickLabelRect";
    EXPECT_TRUE(same(axis->labelRectInRect(rect), rectOf(expected["labelRect"]))) << "labelRect";

    // Without tick values the frame is all that is stroked.
    const auto strokes = callsOf(recorded([&, axis = axis] { axis->drawMajorLinesInRect(rect); }), "stroke");
    if (const Json* frame = expected.find("frame")) {
        ASSERT_EQ(strokes.size(), 1U);
        EXPECT_TRUE(samePath(strokes[0].path(), Path::pathWithRect(rectOf(*frame)))) << "frame";
    } else {
        EXPECT_TRUE(strokes.empty());
    }
}

EXPECTED_VALUES_TEST(layout, gridLines)
{
    const Json& input = testCase.input;
    const Json& expected = testCase.expected;
    const bool vertical = input["vertical"].boolean();
    const auto [graph, axis] = axisSetup(input["axis"].text(), vertical, extentsOf(input["extents"]));
    const Rect rect = rectOf(input["rect"]);
    const auto values = doublesOf(input["values"]);
    const auto style = TOLVLineStyle::solidLineWithColor(Color::blackColor(), 1.0);

    std::vector<Point> points;
    axis->getPoints(points, values, rect);
    const double alongTolerance = expected.find("pointTolAbs") ? expected["pointTolAbs"].number() : 0.0;
    EXPECT_TRUE(within(points, pointsOf(expected["points"]), vertical ? 0.0 : alongTolerance, vertical ? alongTolerance : 0.0)) << "points";

    const auto calls = recorded([&, axis = axis] { axis->drawLinesForValues(values, rect, style.get()); });
    if (values.empty()) {
        EXPECT_TRUE(callsOf(calls, "stroke").empty());
        return;
    }
    Path lines;
    for (const Json& line : expected["lines"].elements()) {
        lines.moveToPoint(pointOf(line[0]));
        lines.addLineToPoint(pointOf(line[1]));
    }
    EXPECT_TRUE(samePath(onlyCallOf(calls, "stroke").path(), lines)) << "lines";
    EXPECT_TRUE(samePath(onlyCallOf(calls, "clip").path(), Path::pathWithRect(rectOf(expected["clip"])))) << "clip";
}

EXPECTED_VALUES_TEST(layout, axisTitle)
{
    const Json& input = testCase.input;
    const bool vertical = input["vertical"].boolean();
    const Rect strip = rectOf(input["labelRect"]);
    const Size size = sizeOf(input["size"]);
    const StubTextScope text(size);
    const auto [graph, axis] = axisSetup("linear", vertical, TOLVAxisExtents::extentsWithMin(0.0, 1.0));
    axis->setLabel("Title");
    // Without padding the strip is the axis rectangle with the font height across the axis.
    graph->setLabelFontHeight(vertical ? strip.width() : strip.height());
    ASSERT_TRUE(same(axis->labelRectInRect(strip), strip));

    const auto calls = recorded([&, axis = axis] { axis->drawLabelInRect(strip); });
    const Rect drawRect = rectOf(testCase.expected["drawRect"]);
    EXPECT_TRUE(same(onlyCallOf(calls, "text").textOrigin(), Point{drawRect.x(), drawRect.maxY() - size.height}));

    AffineTransform transform;
    for (const RecordedCall& call : callsOf(calls, "transform"))
        transform.concatenate(call.transform());
    EXPECT_EQ(callsOf(calls, "transform").empty(), !vertical);
    const std::array<Point, 4> corners{{{drawRect.x(), drawRect.y()}, {drawRect.maxX(), drawRect.y()}, {drawRect.maxX(), drawRect.maxY()}, {drawRect.x(), drawRect.maxY()}}};
    std::vector<Point> turned;
    for (const Point& corner : corners)
        turned.push_back(transform.apply(corner));
    const double tolerance = testCase.expected["tolAbs"].number();
    EXPECT_TRUE(within(turned, pointsOf(testCase.expected["corners"]), tolerance, tolerance)) << "corners";
}

TEST(GraphRects, AddTheInsetsInTheDocumentedOrder)
{
    // Left, right, bottom and top of padding and margin; other orders of the sums end in other digits.
    const auto graph = TOLVGraph::graph();
    graph->setPadding({0.3, 0.1, 0.1, 0.7});
    graph->setMargin({0.6, 0.3, 0.2, 0.6});
    const Rect rect(0.0, 0.0, 0.0, 0.0);
    EXPECT_TRUE(same(graph->dataRectInRect(rect).size, Size{-1.7000000000000002, -1.2000000000000002}));
    EXPECT_TRUE(same(graph->horizontalAxisRectInRect(rect).size, Size{-1.7, -0.8999999999999999}));
    EXPECT_TRUE(same(graph->verticalAxisRectInRect(rect).size, Size{-1.2999999999999998, -1.2000000000000002}));
}
