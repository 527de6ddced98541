#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/RecordedCalls.h"
#include "../support/StubTextSystem.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/axes/TOLVLineAxis.h>

#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// A bar axis whose tick label strip is the whole rectangle.
class StripAxis final : public TOLVBarAxis {
public:
    using TOLVBarAxis::TOLVBarAxis;
    [[nodiscard]] Rect tickLabelRectInRect(const Rect& rect) const override { return rect; }
};

void addSeries(TOLVGraph& graph, std::vector<float> x)
{
    std::vector<float> y(x.size(), 1.0F);
    graph.addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color::blackColor()));
}

/// A graph with this many categories, all of them visible: the abscissae are 0, 1, 2, ...
std::shared_ptr<TOLVGraph> graphWithCategories(std::size_t count)
{
    auto graph = TOLVGraph::graph();
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(-0.5, static_cast<double>(count)));
    std::vector<float> x;
    for (std::size_t i = 0; i < count; ++i)
        x.push_back(static_cast<float>(i));
    if (count > 0)
        addSeries(*graph, std::move(x));
    return graph;
}

std::string textOfCategory(std::size_t category)
{
    return "category " + std::to_string(category);
}

void expectCenters(const TOLVBarAxis& axis, const Rect& rect, const Json& expected)
{
    const auto centers = doublesOf(expected["centers"]);
    ASSERT_EQ(axis.dataPointCount(), centers.size());
    for (std::size_t i = 0; i < centers.size(); ++i)
        EXPECT_TRUE(within(axis.pointForDataAtIndex(i, rect), centers[i], expected["tolAbs"].number())) << "centre " << i;
}

void expectRanges(const std::optional<std::vector<IndexRange>>& ranges, const Json& expected)
{
    ASSERT_EQ(ranges.has_value(), !expected.isNull());
    if (!ranges)
        return;
    ASSERT_EQ(ranges->size(), expected.size());
    for (std::size_t i = 0; i < ranges->size(); ++i)
        EXPECT_EQ((*ranges)[i], (IndexRange{expected[i][0].unsignedInteger(), expected[i][1].unsignedInteger()})) << "range " << i;
}

void expectRepresentative(const TOLVBarAxis& axis, const Json& expected)
{
    EXPECT_EQ(axis.indexOfRepresentativeXData(), expected["indexOfRepresentativeXData"].integer());
    const Json& range = expected["representativeRange"];
    EXPECT_EQ(axis.representativeXDataRange().location, range["location"].unsignedInteger());
    EXPECT_EQ(axis.representativeXDataRange().length, range.find("length") ? range["length"].unsignedInteger() : 0U);
    const auto x = axis.representativeXData();
    ASSERT_EQ(x == nullptr, expected["representativeX"].isNull());
    EXPECT_TRUE(same(samplesOf(x), x ? floatsOf(expected["representativeX"]) : std::vector<float>())) << "representativeX";
}

} // namespace

EXPECTED_VALUES_TEST(category_axis, slots)
{
    TOLVBarAxis axis;
    axis.setDataPointCount(testCase.input["dataPointCount"].unsignedInteger());
    const Rect rect = rectOf(testCase.input["rect"]);
    expectCenters(axis, rect, testCase.expected);

    // The first slot begins 20 points from the left end, so its centre tells its width.
    const double slotWidth = 2.0 * (axis.pointForDataAtIndex(0, rect) - (rect.x() + 20.0));
    EXPECT_TRUE(within(slotWidth, testCase.expected["slotWidth"].number(), testCase.expected["tolAbs"].number())) << "slotWidth";
}

EXPECTED_VALUES_TEST(category_axis, axis)
{
    const Json& expected = testCase.expected;
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVBarAxis>());
    graph->extents()->setX(extentsOf(testCase.input["extents"]));
    for (const Json& x : testCase.input["x"].elements())
        addSeries(*graph, floatsOf(x));
    auto& axis = dynamic_cast<TOLVBarAxis&>(*graph->horizontalAxis());
    const Rect rect = rectOf(testCase.input["rect"]);
    axis.prepareForDrawingInRect(rect);

    expectRanges(axis.extentsConstrainedGraphDataRanges(), expected["ranges"]);
    EXPECT_EQ(axis.dataPointCount(), expected["dataPointCount"].unsignedInteger());
    expectRepresentative(axis, expected);
    expectCenters(axis, rect, expected);

    std::vector<float> points;
    for (const float value : floatsOf(testCase.input["values"]))
        points.push_back(axis.pointForValue(value, rect));
    EXPECT_TRUE(same(points, floatsOf(expected["pointForValue"]))) << "pointForValue";
    std::vector<float> values;
    for (const double point : doublesOf(testCase.input["points"]))
        values.push_back(axis.valueForPoint(point, rect));
    EXPECT_TRUE(same(values, floatsOf(expected["valueForPoint"]))) << "valueForPoint";
}

EXPECTED_VALUES_TEST(category_axis, labels)
{
    const StubTextScope text;
    const Json& sizes = testCase.input["sizes"];
    for (std::size_t i = 0; i < sizes.size(); ++i)
        text->setSize(textOfCategory(i), sizeOf(sizes[i]));
    const auto graph = graphWithCategories(static_cast<std::size_t>(testCase.input["dataPointCount"].unsignedInteger()));
    graph->setLabelFontHeight(testCase.input["labelFontHeight"].number());
    StripAxis axis(graph);
    TOLVBarAxis::TickLabels tickLabels;
    while (tickLabels.size() < testCase.input["tickLabelCount"].unsignedInteger())
        tickLabels.push_back(textOfCategory(tickLabels.size()));
    axis.setTickLabels(tickLabels);
    const Rect strip = rectOf(testCase.input["tickLabelRect"]);
    axis.prepareForDrawingInRect(strip);
    ASSERT_EQ(axis.dataPointCount(), testCase.input["dataPointCount"].unsignedInteger());

    const Json& kept = testCase.expected["kept"];
    const double tolerance = testCase.expected["tolAbs"].number();
    const auto labels = keptLabels(axis.tickLabelPlacements(strip));
    const auto texts = callsOf(recorded([&] { axis.drawTickLabelsInRect(strip); }), "text");
    ASSERT_EQ(labels.size(), kept.size());
    ASSERT_EQ(texts.size(), kept.size());
    for (std::size_t i = 0; i < kept.size(); ++i) {
        SCOPED_TRACE("kept " + std::to_string(i));
        const Rect rect = rectOf(kept[i]["rect"]);
        EXPECT_TRUE(within(labels[i]->rect(), rect, tolerance));
        EXPECT_TRUE(within(texts[i].textOrigin(), rect.origin, tolerance));
        EXPECT_EQ(texts[i].drawnText(), textOfCategory(static_cast<std::size_t>(kept[i]["category"].unsignedInteger())));
    }
}

EXPECTED_VALUES_TEST(category_axis, lineGrid)
{
    const auto graph = graphWithCategories(static_cast<std::size_t>(testCase.input["dataPointCount"].unsignedInteger()));
    // Without margin and padding the data area is the whole rectangle.
    TOLVLineAxis axis(graph);
    const Rect dataRect = rectOf(testCase.input["dataRect"]);
    axis.prepareForDrawingInRect(dataRect);
    const auto strokes = callsOf(recorded([&] { axis.drawMajorLinesInRect(dataRect); }), "stroke");
    ASSERT_FALSE(strokes.empty());
    EXPECT_TRUE(samePath(strokes[0].path(), Path::pathWithRect(insetRect(integralRect(dataRect), 0.5, 0.5)))) << "frame";

    Path lines;
    for (const Json& line : testCase.expected["lines"].elements()) {
        lines.moveToPoint(pointOf(line[0]));
        lines.addLineToPoint(pointOf(line[1]));
    }
    if (lines.isEmpty()) {
        EXPECT_EQ(strokes.size(), 1U);
        return;
    }
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_TRUE(samePath(strokes[1].path(), lines, testCase.expected["tolAbs"].number())) << "lines";
}
