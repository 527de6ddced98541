#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/data/TOLVGraphCurve.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Exception.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

void expectInsets(const EdgeInsets& got, const Json& expected)
{
    EXPECT_TRUE(same(std::vector<double>{got.top, got.left, got.bottom, got.right}, doublesOf(expected)));
}

void expectExtents(const TOLVAxisExtents& got, const Json& expected)
{
    EXPECT_TRUE(same(std::vector<double>{got.min(), got.max()}, doublesOf(expected)));
}

std::vector<std::string> textsOf(const Json& json)
{
    std::vector<std::string> texts;
    for (const Json& element : json.elements())
        texts.push_back(element.text());
    return texts;
}

std::optional<std::string> optionalTextOf(const Json& json)
{
    return json.isNull() ? std::nullopt : std::optional<std::string>(json.text());
}

void setAxisFields(TOLVAxis& axis, const Json& fields)
{
    axis.setDrawsMajorLines(fields["drawsMajorLines"].boolean());
    axis.setDrawsMinorLines(fields["drawsMinorLines"].boolean());
    axis.setDrawsMinorLabels(fields["drawsMinorLabels"].boolean());
    axis.setDrawsMajorLabels(fields["drawsMajorLabels"].boolean());
    axis.setDrawsLabelAtEnd(fields["drawsLabelAtEnd"].boolean());
    axis.setTickLabelPadding(fields["tickLabelPadding"].number());
    axis.setMargin(fields["margin"].number());
    axis.setPadding(fields["padding"].number());
    axis.setLabel(optionalTextOf(fields["label"]));
}

void expectAxisFields(const TOLVAxis& axis, const Json& fields)
{
    EXPECT_EQ(axis.drawsMajorLines(), fields["drawsMajorLines"].boolean());
    EXPECT_EQ(axis.drawsMinorLines(), fields["drawsMinorLines"].boolean());
    EXPECT_EQ(axis.drawsMinorLabels(), fields["drawsMinorLabels"].boolean());
    EXPECT_EQ(axis.drawsMajorLabels(), fields["drawsMajorLabels"].boolean());
    EXPECT_EQ(axis.drawsLabelAtEnd(), fields["drawsLabelAtEnd"].boolean());
    EXPECT_TRUE(same(axis.tickLabelPadding(), fields["tickLabelPadding"].number()));
    EXPECT_TRUE(same(axis.margin(), fields["margin"].number()));
    EXPECT_TRUE(same(axis.padding(), fields["padding"].number()));
    EXPECT_EQ(axis.label(), optionalTextOf(fields["label"]));
}

void expectStyle(const TOLVLineStyle& style, const Json& expected)
{
    EXPECT_EQ(style, *lineStyleOf(expected));
}

/// Every class of axis has the base's fields and copies and archives them in the same way.
std::vector<std::shared_ptr<TOLVAxis>> axesOfAllClasses()
{
    return {std::make_shared<TOLVAxis>(), std::make_shared<TOLVLinearAxis>(), std::make_shared<TOLVLogarithmicAxis>()};
}

/// An archived object of the class that holds these numbers and nothing else.
std::shared_ptr<ArchiveObject> archivedObjectOf(const std::string& className, const Json& keys)
{
    auto object = std::make_shared<ArchiveObject>();
    object->className = className;
    for (const auto& [key, value] : keys.members()) {
        if (key == "axisIndex")
            object->values.emplace_back(key, value.integer());
        else
            object->values.emplace_back(key, value.number());
    }
    return object;
}

template <typename Type>
std::shared_ptr<Type> archivedAndRead(const Type& object)
{
    return std::dynamic_pointer_cast<Type>(KeyedUnarchiver::unarchivedObject(KeyedArchiver::archivedObject(object)));
}

std::shared_ptr<TOLVGraphExtents> graphExtentsOf(const Json& input)
{
    auto extents = std::make_shared<TOLVGraphExtents>();
    extents->setX(extentsOf(input["x"]));
    extents->setY(extentsOf(input["y"]));
    extents->setZ(extentsOf(input["z"]));
    return extents;
}

std::vector<double> valuesOf(const TOLVGraph::Markers& markers)
{
    std::vector<double> values;
    for (const auto& marker : markers)
        values.push_back(marker->value());
    return values;
}

TOLVGraph::Markers markersWithValues(const Json& values)
{
    TOLVGraph::Markers markers;
    for (const Json& value : values.elements())
        markers.push_back(TOLVMarker::markerWithValue(value.number()));
    return markers;
}

void applyMarkerEdit(TOLVGraph& graph, const Json& step)
{
    const std::string& operation = step[0].text();
    const auto position = [&] { return static_cast<std::size_t>(step[1].unsignedInteger()); };
    if (operation == "place") {
        static_cast<void>(graph.placeHorizontalAxisMarkerWithValue(step[1].number()));
    } else if (operation == "insert") {
        graph.insertMarkers(markersWithValues(step[2]), IndexSet::indexSetWithRange(position(), step[2].size()));
    } else if (operation == "remove") {
        graph.removeMarkersAtIndexes(IndexSet::indexSetWithRange(position(), static_cast<std::size_t>(step[2].unsignedInteger())));
    } else if (operation == "replace") {
        graph.replaceMarkersAtIndexes(IndexSet::indexSetWithRange(position(), step[2].size()), markersWithValues(step[2]));
    } else if (operation == "undo") {
        graph.undoManager()->undo();
    } else if (operation == "redo") {
        graph.undoManager()->redo();
    } else {
        throw JsonError("there is no edit \"" + operation + "\"");
    }
}

/// An axis that notes which markers it is given to draw.
class MarkerNotingAxis final : public TOLVAxis {
public:
    explicit MarkerNotingAxis(std::shared_ptr<Markers> noted) : m_noted(std::move(noted)) {}

    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override { return std::make_shared<MarkerNotingAxis>(m_noted); }
    void drawMarkers(const Markers& markers, const Rect&) const override { *m_noted = markers; }
    void drawMinorLinesInRect(const Rect&) const override {}
    void drawMajorLinesInRect(const Rect&) const override {}
    void drawTickLabelsInRect(const Rect&) const override {}

private:
    std::shared_ptr<Markers> m_noted;
};

/// A strategy that notes which markers it is given to draw.
class MarkerNotingStrategy final : public TOLVGraphDrawing, public TOLVGraphMarkerDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>&, const Rect&) override {}
    void drawMarkers(const TOLVGraph::Markers& markers, const std::shared_ptr<TOLVGraph>&, const Rect&) override { m_noted = markers; }
    [[nodiscard]] const TOLVGraph::Markers& noted() const { return m_noted; }

private:
    TOLVGraph::Markers m_noted;
};

/// The positions of the markers, by identity, in the graph's list.
std::vector<std::size_t> positionsOf(const TOLVGraph::Markers& markers, const TOLVGraph::Markers& all)
{
    std::vector<std::size_t> positions;
    for (const auto& marker : markers)
        positions.push_back(static_cast<std::size_t>(std::find(all.begin(), all.end(), marker) - all.begin()));
    return positions;
}

} // namespace

EXPECTED_VALUES_TEST(objects, newGraph)
{
    const Json& expected = testCase.expected;
    const auto graph = TOLVGraph::graph();
    expectInsets(graph->margin(), expected["margin"]);
    expectInsets(graph->padding(), expected["padding"]);
    EXPECT_EQ(graph->canZoomX(), expected["canZoomX"].boolean());
    EXPECT_EQ(graph->canZoomY(), expected["canZoomY"].boolean());
    EXPECT_EQ(graph->needsReloadData(), expected["needsReloadData"].boolean());
    EXPECT_EQ(graph->graphData().size(), expected["seriesCount"].unsignedInteger());
    EXPECT_EQ(graph->countOfMarkers(), expected["markerCount"].unsignedInteger());
    expectExtents(*graph->extents()->x(), expected["x"]);
    expectExtents(*graph->extents()->y(), expected["y"]);
    EXPECT_EQ(graph->canDraw(), expected["canDraw"].boolean());
    EXPECT_EQ(graph->XIsLog(), expected["XIsLog"].boolean());
    EXPECT_EQ(graph->YIsLog(), expected["YIsLog"].boolean());
    EXPECT_TRUE(same(graph->majorLineStyle()->thickness(), expected["majorThickness"].number()));
    EXPECT_TRUE(same(graph->minorLineStyle()->thickness(), expected["minorThickness"].number()));
    EXPECT_EQ(TOLVGraph::keyPathsOfPropertiesAffectingDisplay(), textsOf(expected["keyPathsOfPropertiesAffectingDisplay"]));
    EXPECT_EQ(TOLVGraph::keyPathsOfPropertiesAffectingReloadData(), textsOf(expected["keyPathsOfPropertiesAffectingReloadData"]));
}

EXPECTED_VALUES_TEST(objects, newAxis)
{
    for (const auto& axis : axesOfAllClasses()) {
        SCOPED_TRACE(axis->archiveClassName());
        expectAxisFields(*axis, testCase.expected);
        EXPECT_EQ(axis->isVertical(), testCase.expected["isVertical"].boolean());
    }
}

EXPECTED_VALUES_TEST(objects, copyAxis)
{
    for (const auto& axis : axesOfAllClasses()) {
        SCOPED_TRACE(axis->archiveClassName());
        setAxisFields(*axis, testCase.input["set"]);
        const auto copy = axis->copy();
        expectAxisFields(*copy, testCase.expected);
        EXPECT_EQ(copy->archiveClassName(), axis->archiveClassName());
    }
}

EXPECTED_VALUES_TEST(objects, archiveAxis)
{
    for (const auto& axis : axesOfAllClasses()) {
        SCOPED_TRACE(axis->archiveClassName());
        setAxisFields(*axis, testCase.input["set"]);
        const auto archived = KeyedArchiver::archivedObject(*axis);
        std::vector<std::string> keys;
        for (const auto& [key, value] : archived->values)
            keys.push_back(key);
        EXPECT_EQ(keys, textsOf(testCase.expected["keys"]));
        const auto read = std::dynamic_pointer_cast<TOLVAxis>(KeyedUnarchiver::unarchivedObject(archived));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->archiveClassName(), axis->archiveClassName());
        expectAxisFields(*read, testCase.expected);
    }
}

EXPECTED_VALUES_TEST(objects, copyExtents)
{
    const Json& expected = testCase.expected;
    const auto graph = TOLVGraph::graph();
    const auto extents = graphExtentsOf(testCase.input);
    extents->setGraph(graph);
    const auto copy = extents->copy();
    copy->x()->setMin(testCase.input["setCopyXMin"].number());
    expectExtents(*extents->x(), expected["x"]);
    expectExtents(*extents->y(), expected["y"]);
    expectExtents(*extents->z(), expected["z"]);
    expectExtents(*copy->x(), expected["copyX"]);
    expectExtents(*copy->y(), expected["copyY"]);
    expectExtents(*copy->z(), expected["copyZ"]);
    EXPECT_EQ(copy->graph() != nullptr, expected["copyHasGraph"].boolean());
    EXPECT_EQ(extents->graph(), graph);
}

EXPECTED_VALUES_TEST(objects, archiveExtents)
{
    const Json& expected = testCase.expected;
    const auto graph = TOLVGraph::graph();
    const auto extents = graphExtentsOf(testCase.input);
    extents->setGraph(graph);
    const auto read = archivedAndRead(*extents);
    ASSERT_TRUE(read);
    expectExtents(*read->x(), expected["x"]);
    expectExtents(*read->y(), expected["y"]);
    expectExtents(*read->z(), expected["z"]);
    EXPECT_EQ(read->graph() != nullptr, expected["hasGraph"].boolean());
}

EXPECTED_VALUES_TEST(objects, archiveAxisExtents)
{
    const auto archived = archivedObjectOf("TOLVAxisExtents", testCase.input["keys"]);
    const auto read = std::dynamic_pointer_cast<TOLVAxisExtents>(KeyedUnarchiver::unarchivedObject(archived));
    ASSERT_TRUE(read);
    EXPECT_TRUE(same(read->min(), testCase.expected["min"].number()));
    EXPECT_TRUE(same(read->max(), testCase.expected["max"].number()));
}

EXPECTED_VALUES_TEST(objects, validateWithoutGraph)
{
    const TOLVGraphExtents extents;
    PropertyValue value = testCase.input["value"].number();
    std::string error;
    EXPECT_EQ(extents.validateValue(value, testCase.input["keyPath"].text(), &error), testCase.expected["accepted"].boolean());
    EXPECT_EQ(value, PropertyValue(testCase.input["value"].number()));
    EXPECT_TRUE(error.empty());
}

EXPECTED_VALUES_TEST(objects, copyMarker)
{
    TOLVMarker marker(testCase.input["value"].number());
    marker.setAxisIndex(testCase.input["axisIndex"].integer());
    const auto copy = marker.copy();
    EXPECT_NE(copy.get(), &marker);
    EXPECT_TRUE(same(copy->value(), testCase.expected["value"].number()));
    EXPECT_EQ(copy->axisIndex(), testCase.expected["axisIndex"].integer());
}

EXPECTED_VALUES_TEST(objects, archiveMarker)
{
    const auto archived = archivedObjectOf("TOLVMarker", testCase.input["keys"]);
    const auto read = std::dynamic_pointer_cast<TOLVMarker>(KeyedUnarchiver::unarchivedObject(archived));
    ASSERT_EQ(read != nullptr, testCase.expected["made"].boolean());
    if (!read)
        return;
    EXPECT_TRUE(same(read->value(), testCase.expected["value"].number()));
    EXPECT_EQ(read->axisIndex(), testCase.expected["axisIndex"].integer());
    const auto again = archivedAndRead(*read);
    ASSERT_TRUE(again);
    EXPECT_TRUE(same(again->value(), read->value()));
    EXPECT_EQ(again->axisIndex(), read->axisIndex());
}

EXPECTED_VALUES_TEST(objects, newGraphData)
{
    const TOLVGraphData series;
    expectStyle(*series.lineStyle(), testCase.expected);
    EXPECT_EQ(series.name(), optionalTextOf(testCase.expected["name"]));
    EXPECT_EQ(series.infoDictionary() == nullptr, testCase.expected["infoDictionary"].isNull());
}

EXPECTED_VALUES_TEST(objects, graphDataWithColor)
{
    const auto series = TOLVGraphData::graphDataWithX(nullptr, nullptr, colorOf(testCase.input["color"]));
    expectStyle(*series->lineStyle(), testCase.expected);
    EXPECT_TRUE(same(series->color(), colorOf(testCase.expected["color"])));
}

EXPECTED_VALUES_TEST(objects, graphDataWithColorAndStyle)
{
    const auto style = lineStyleOf(testCase.input["style"]);
    const auto series = TOLVGraphData::graphDataWithX(nullptr, nullptr, colorOf(testCase.input["color"]), style);
    EXPECT_EQ(series->lineStyle(), style);
    expectStyle(*series->lineStyle(), testCase.expected);
    EXPECT_TRUE(same(series->color(), colorOf(testCase.expected["seriesColor"])));
}

EXPECTED_VALUES_TEST(objects, initCurve)
{
    const auto vectorOfLength = [](const Json& length) { return TOLVRealVector::vectorWithComponents(std::vector<float>(static_cast<std::size_t>(length.unsignedInteger()))); };
    const auto make = [&] { return TOLVGraphCurve::curveWithX(vectorOfLength(testCase.input["xLength"]), vectorOfLength(testCase.input["yLength"]), nullptr); };
    if (const Json* pointCount = testCase.expected.find("pointCount")) {
        EXPECT_EQ(make()->pointCount(), pointCount->unsignedInteger());
        return;
    }
    try {
        static_cast<void>(make());
        ADD_FAILURE() << "no exception";
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.name(), testCase.expected["exception"].text());
        EXPECT_EQ(exception.reason(), testCase.expected["reason"].text());
    }
}

EXPECTED_VALUES_TEST(objects, markers)
{
    const auto graph = TOLVGraph::graph();
    graph->attachUndoManager(std::make_shared<UndoManager>());
    const Json& steps = testCase.input["steps"];
    const Json& expected = testCase.expected["valuesAfterEach"];
    ASSERT_EQ(expected.size(), steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        applyMarkerEdit(*graph, steps[i]);
        EXPECT_TRUE(same(valuesOf(graph->markers()), doublesOf(expected[i]))) << "after step " << i;
    }
}

EXPECTED_VALUES_TEST(objects, markersOfAxes)
{
    const auto horizontal = std::make_shared<TOLVGraph::Markers>();
    const auto vertical = std::make_shared<TOLVGraph::Markers>();
    const auto strategy = std::make_shared<MarkerNotingStrategy>();
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<MarkerNotingAxis>(horizontal));
    graph->setVerticalAxis(std::make_shared<MarkerNotingAxis>(vertical));
    graph->setDrawingStrategy(strategy);
    TOLVGraph::Markers markers;
    for (const Json& axisIndex : testCase.input["axisIndexes"].elements()) {
        markers.push_back(TOLVMarker::markerWithValue(1.0));
        markers.back()->setAxisIndex(axisIndex.integer());
    }
    graph->setMarkers(markers);
    const Rect rect(0.0, 0.0, 400.0, 300.0);
    graph->drawAxesInRect(rect);
    graph->drawMarkersInRect(rect);
    EXPECT_EQ(positionsOf(*horizontal, markers), indexesOf(testCase.expected["horizontal"]));
    EXPECT_EQ(positionsOf(*vertical, markers), indexesOf(testCase.expected["vertical"]));
    EXPECT_EQ(positionsOf(strategy->noted(), markers), indexesOf(testCase.expected["overlay"]));
}

EXPECTED_VALUES_TEST(objects, markerWithValue)
{
    const auto graph = TOLVGraph::graph();
    graph->setMarkers(markersWithValues(testCase.input["markers"]));
    const auto found = graph->horizontalAxisMarkerWithValue(testCase.input["value"].number(), testCase.input["tolerance"].number());
    EXPECT_EQ(found != nullptr, testCase.expected["found"].boolean());
}
