#include "LabelMargins.h"

#include "../data/TOLVGraphData.h"
#include "../graph/TOLVGraph.h"
#include "../platform/text/DayDateFormatter.h"

#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

struct Case {
    const char* name;
    double xMin, xMax, yMin, yMax;
    Rect rect;
    bool hasTitles;
    bool xIsDate;
};

std::shared_ptr<TOLVGraph> makeGraph(const Case& one)
{
    auto graph = TOLVGraph::graph();
    graph->zoomXToFixedMin(static_cast<float>(one.xMin), static_cast<float>(one.xMax));
    graph->zoomYToFixedMin(one.yMin, one.yMax);
    graph->setPadding({5.0, 6.0, 7.0, 8.0});
    if (one.hasTitles) {
        graph->setTitle("Title");
        graph->horizontalAxis()->setLabel("Time");
        graph->verticalAxis()->setLabel("Level");
    }
    if (one.xIsDate)
        graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<DayDateFormatter>());
    graph->placeHorizontalAxisMarkerWithValue(one.xMin);
    graph->placeHorizontalAxisMarkerWithValue(one.xMax);
    return graph;
}

/// The line boxes of an axis's labels and of its marker texts.
std::vector<Rect> labelBoxes(const TOLVGraph& graph, const TOLVAxis& axis, const Rect& axisRect)
{
    TOLVAxis::Labels major;
    TOLVAxis::Labels minor;
    TOLVAxis::Labels markers;
    const Rect strip = axis.tickLabelRectInRect(axisRect);
    axis.getMajorLabels(major, axis.majorValues(), minor, axis.minorValues(), strip);
    TOLVAxis::Values values;
    for (const auto& marker : graph.markers())
        values.push_back(marker->value());
    if (!axis.isVertical())
        axis.getLabels(&markers, values, strip);
    std::vector<Rect> boxes;
    for (const auto* labels : {&major, &minor})
        for (const auto& label : *labels)
            boxes.push_back({label->rect().origin, label->label().size()});
    for (const auto& label : markers)
        boxes.push_back(insetRect({label->rect().origin, label->label().size()}, -4.0, 0.0));
    return boxes;
}

TEST(LabelMargins, EveryLabelIsWholeInsideTheRectangle)
{
    const Case cases[] = {
        {"plain", 0, 10, 0, 1, {0, 0, 400, 300}, false, false},
        {"titles", 0, 10, 0, 1, {0, 0, 400, 300}, true, false},
        {"wide numbers", 0, 1'000'000, -20'000'000, 20'000'000, {0, 0, 640, 400}, true, false},
        {"small numbers", 0, 0.004, -0.002, 0.003, {0, 0, 640, 400}, false, false},
        {"dates", 14000, 21000, 0, 30, {0, 0, 500, 200}, true, true},
        {"away from the origin", -3, 7, -1, 1, {100.25, 50.5, 300, 200}, true, false},
        {"small sheet", 0, 10, 0, 10, {0, 0, 160, 120}, true, false},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const auto graph = makeGraph(one);
        fitMarginsToLabels(*graph, one.rect);
        graph->prepareForDrawingInRect(one.rect);
        std::vector<Rect> boxes = labelBoxes(*graph, *graph->horizontalAxis(), graph->horizontalAxisRectInRect(one.rect));
        const auto vertical = labelBoxes(*graph, *graph->verticalAxis(), graph->verticalAxisRectInRect(one.rect));
        EXPECT_GE(boxes.size(), 2U);
        EXPECT_GE(vertical.size(), 1U);
        boxes.insert(boxes.end(), vertical.begin(), vertical.end());
        for (const Rect& box : boxes) {
            EXPECT_GE(box.x(), one.rect.x()) << toString(box);
            EXPECT_GE(box.y(), one.rect.y()) << toString(box);
            EXPECT_LE(box.maxX(), one.rect.maxX()) << toString(box);
            EXPECT_LE(box.maxY(), one.rect.maxY()) << toString(box);
        }
    }
}

TEST(LabelMargins, LabelsStayClearOfTheDataAreaAndOfTheTitles)
{
    const auto graph = makeGraph({"", 0, 10, 0, 1000, {}, true, false});
    const Rect rect(0, 0, 400, 300);
    fitMarginsToLabels(*graph, rect);
    graph->prepareForDrawingInRect(rect);
    const Rect dataRect = graph->dataRectInRect(rect);
    const Rect horizontalRect = graph->horizontalAxisRectInRect(rect);
    const Rect verticalRect = graph->verticalAxisRectInRect(rect);
    const double ascender = graph->tickLabelAttributes()->fontOrDefault().ascender();
    for (const Rect& box : labelBoxes(*graph, *graph->horizontalAxis(), horizontalRect)) {
        EXPECT_LT(box.y() + ascender, dataRect.y());
        EXPECT_GE(box.y(), graph->horizontalAxis()->labelRectInRect(horizontalRect).maxY());
    }
    for (const Rect& box : labelBoxes(*graph, *graph->verticalAxis(), verticalRect)) {
        EXPECT_LT(box.maxX(), dataRect.x());
        EXPECT_GE(box.x(), graph->verticalAxis()->labelRectInRect(verticalRect).maxX());
    }
    EXPECT_GE(graph->titleBandInRect(rect).height() - graph->padding().top, AttributedString("Title", graph->titleAttributes()).size().height);
}

TEST(LabelMargins, TitlesTakeRoomOnlyWhereThereAreAny)
{
    const Rect rect(0, 0, 400, 300);
    const auto bare = makeGraph({"", 0, 10, 0, 1, {}, false, false});
    const auto titled = makeGraph({"", 0, 10, 0, 1, {}, true, false});
    fitMarginsToLabels(*bare, rect);
    fitMarginsToLabels(*titled, rect);
    EXPECT_LT(bare->margin().top, titled->margin().top);
    EXPECT_LT(bare->margin().left, titled->margin().left);
    EXPECT_LT(bare->margin().bottom, titled->margin().bottom);
}

TEST(LabelMargins, TheResultDoesNotDependOnFormerMargins)
{
    const Rect rect(0, 0, 400, 300);
    const auto graph = makeGraph({"", 0, 10, 0, 1, {}, true, false});
    fitMarginsToLabels(*graph, rect);
    const EdgeInsets first = graph->margin();
    graph->setMargin({90, 90, 90, 90});
    fitMarginsToLabels(*graph, rect);
    EXPECT_EQ(graph->margin(), first);
}

TEST(LabelMargins, MayOnlyGrow)
{
    const Case one{"numbers", 0.0, 10.0, 0.0, 1.0, {0.0, 0.0, 400.0, 300.0}, false, false};
    const auto graph = makeGraph(one);
    fitMarginsToLabels(*graph, one.rect);
    const EdgeInsets exact = graph->margin();
    graph->setMargin({exact.top + 7.0, 0.0, exact.bottom + 5.0, 0.0});
    fitMarginsToLabels(*graph, one.rect, MarginFit::OnlyGrow);
    EXPECT_EQ(graph->margin(), (EdgeInsets{exact.top + 7.0, exact.left, exact.bottom + 5.0, exact.right}));
    fitMarginsToLabels(*graph, one.rect);
    EXPECT_EQ(graph->margin(), exact);
}

TEST(LabelMargins, GraphWithoutAxesOrRoomIsLeftInPeace)
{
    const auto graph = TOLVGraph::graph();
    fitMarginsToLabels(*graph, {0, 0, 3, 2});
    fitMarginsToLabels(*graph, {});
    graph->setVerticalAxis(nullptr);
    const EdgeInsets margin = graph->margin();
    fitMarginsToLabels(*graph, {0, 0, 400, 300});
    EXPECT_EQ(graph->margin(), margin);
}

} // namespace
} // namespace TOLVGraphing
