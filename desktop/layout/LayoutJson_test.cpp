#include "LayoutJson.h"

#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/text/TextSystem.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/Json.h>
#include <tests/support/JsonValues.h>

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

using testing_support::Json;
using testing_support::rectOf;

class LayoutJsonTest : public testing::Test {
protected:
    LayoutJsonTest()
    {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({0.0F, 10.0F}), TOLVRealVector::vectorWithComponents({1.0F, 2.0F}), Color(1.0, 0.0, 0.0)));
        graph->setExtents(graph->extentsFittingGraphData());
    }

    Json read() { return Json::parse(layoutJson(graph->layoutInRect({0.0, 0.0, 400.0, 300.0}))); }

    TextSystemScope fixed{std::make_shared<FixedTextSystem>()};
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(LayoutJsonTest, SaysWhatTheLayoutHolds)
{
    graph->setTitle("A \"title\" \\ with\nodd signs ° µ");
    graph->placeHorizontalAxisMarkerWithValue(2.5);
    const GraphLayout layout = graph->layoutInRect({0.0, 0.0, 400.0, 300.0});
    const Json json = Json::parse(layoutJson(layout));
    EXPECT_EQ(rectOf(json["dataRect"]), layout.dataRect);
    EXPECT_EQ(json["title"]["text"].text(), *graph->title());
    EXPECT_EQ(json["margin"]["left"].number(), 30.0);
    const Json& axis = json["horizontalAxis"];
    EXPECT_EQ(axis["kind"].text(), "TOLVLinearAxis");
    EXPECT_EQ(axis["range"][1].number(), 10.0);
    ASSERT_EQ(axis["majorTicks"].size(), layout.horizontalAxis->majorTicks.size());
    EXPECT_EQ(axis["majorTicks"][1]["position"].number(), layout.horizontalAxis->majorTicks[1].position);
    ASSERT_EQ(axis["labels"].size(), layout.horizontalAxis->labels.size());
    EXPECT_EQ(axis["labels"][0]["fate"].text(), "kept");
    EXPECT_EQ(axis["labels"][0].find("collidesWith"), nullptr);
    EXPECT_EQ(rectOf(axis["markerLabels"][0]["badge"]), layout.horizontalAxis->markerLabels[0].badge);
    EXPECT_TRUE(axis["title"].isNull());
    ASSERT_EQ(json["callouts"].size(), 1U);
    EXPECT_EQ(rectOf(json["callouts"][0]["bounds"]), layout.callouts[0].bounds);
}

TEST_F(LayoutJsonTest, CollisionsNameTheirPositionInTheList)
{
    graph->zoomXToFixedMin(0.0F, 500.0F);
    graph->horizontalAxis()->setDrawsMinorLabels(true);
    const Json labels = read()["horizontalAxis"]["labels"];
    std::size_t collisions = 0;
    for (const Json& label : labels.elements()) {
        if (label["fate"].text() != "collides")
            continue;
        ++collisions;
        EXPECT_EQ(labels[label["collidesWith"].unsignedInteger()]["fate"].text(), "kept");
    }
    EXPECT_GT(collisions, 0U);
}

TEST_F(LayoutJsonTest, WhatIsNotFiniteIsNull)
{
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomXToFixedMin(1.0F, 100.0F);
    graph->placeHorizontalAxisMarkerWithValue(-1.0);
    const Json badge = read()["horizontalAxis"]["markerLabels"][0];
    EXPECT_EQ(badge["fate"].text(), "not finite");
    EXPECT_TRUE(badge["rect"][0].isNull());
    graph->zoomXToFixedMin(1.0F, std::numeric_limits<float>::infinity());
    EXPECT_TRUE(read()["horizontalAxis"]["range"][1].isNull());
}

TEST_F(LayoutJsonTest, BytesThatAreNoTextAreReplaced)
{
    graph->setTitle("\xff\xfe bytes");
    EXPECT_EQ(read()["title"]["text"].text(), "\uFFFD\uFFFD bytes");
}

TEST_F(LayoutJsonTest, AGraphWithoutAxesIsALayoutToo)
{
    graph->setVerticalAxis(nullptr);
    const Json json = read();
    EXPECT_TRUE(json["horizontalAxis"].isNull());
    EXPECT_TRUE(json["callouts"].elements().empty());
}

TEST_F(LayoutJsonTest, ASheetSaysWhereItsLegendIs)
{
    GraphSheet sheet(graph);
    EXPECT_TRUE(Json::parse(layoutJson(sheet, {400.0, 300.0}))["legendRect"].isNull());
    sheet.setLegendEntries({{"name", nullptr}});
    const Json json = Json::parse(layoutJson(sheet, {400.0, 300.0}));
    EXPECT_EQ(json["size"][0].number(), 400.0);
    EXPECT_EQ(rectOf(json["legendRect"]), sheet.legendRect());
    EXPECT_EQ(rectOf(json["graph"]["rect"]), sheet.graphRect());
}

TEST_F(LayoutJsonTest, HasALineForEachTickAndLabelAndEndsInANewline)
{
    const std::string text = layoutJson(graph->layoutInRect({0.0, 0.0, 400.0, 300.0}));
    EXPECT_TRUE(text.ends_with("}\n"));
    EXPECT_NE(text.find("\n    \"majorTicks\": [\n      {\"value\":0.0,\"position\":30.0},\n"), std::string::npos);
    EXPECT_NE(text.find("\n  \"callouts\": []\n"), std::string::npos);
}

} // namespace
} // namespace TOLVGraphing
