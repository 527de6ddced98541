#include "Pixels.h"

#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/DarkContext.h>
#include <TOLVGraphing/platform/graphics/PixelAlignedContext.h>
#include <TOLVGraphing/views/LabelMargins.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::Pixels;
using testing_support::pixelsOfPNG;

constexpr Size kSize{301.0, 203.0};
constexpr double kRatios[] = {1.0, 1.25, 1.5, 2.0, 3.0};
constexpr const char* kMajorColor = "#ff0000";
constexpr const char* kMinorColor = "#0000ff";
constexpr const char* kSeriesColor = "#008000";
const Color kSeries(0.0, 128.0 / 255.0, 0.0);

TOLVGraphData::Samples samples(std::vector<float> values)
{
    return TOLVRealVector::vectorWithComponents(std::move(values));
}

/// Lines and areas in pure colours, so that a mixture gives itself away.
std::shared_ptr<TOLVGraph> graphWith(std::vector<float> x, std::vector<float> y)
{
    auto graph = TOLVGraph::graph();
    graph->setMajorLineStyle(TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 1.0));
    graph->setMinorLineStyle(TOLVLineStyle::solidLineWithColor(Color(0.0, 0.0, 1.0), 1.0));
    graph->addGraphData(TOLVGraphData::graphDataWithX(samples(std::move(x)), samples(std::move(y)), kSeries));
    graph->setExtents(graph->extentsFittingGraphData());
    return graph;
}

std::shared_ptr<TOLVGraph> gridGraph()
{
    auto graph = graphWith({0.3F, 7.7F}, {-1.13F, 2.2F});
    graph->setDrawingStrategy(nullptr);
    return graph;
}

std::shared_ptr<TOLVGraph> impulseGraph()
{
    auto graph = graphWith({0.0F, 1.1F, 2.3F, 3.9F, 4.2F, 6.1F}, {0.7F, 1.3F, 2.9F, 0.4F, 3.3F, 1.9F});
    graph->setDrawingStrategy(std::make_shared<TOLVVerticalLineGraphDrawing>());
    graph->zoomXToFixedMin(-0.37F, 6.6F);
    graph->zoomYToFixedMin(0.0, 3.5);
    return graph;
}

std::shared_ptr<TOLVGraph> barGraph()
{
    auto graph = graphWith({1.0F, 2.0F, 3.0F, 4.0F, 5.0F}, {0.7F, 1.3F, 2.9F, 0.4F, 3.3F});
    graph->setDrawingStrategy(std::make_shared<BarGraphDrawing>());
    graph->zoomXToFixedMin(1.0F, 5.0F);
    graph->zoomYToFixedMin(0.0, 3.5);
    return graph;
}

Pixels picture(TOLVGraph& graph, double ratio, bool isAligned)
{
    fitMarginsToLabels(graph, {{}, kSize});
    OutputSettings settings;
    settings.size = kSize;
    settings.scale = ratio;
    return pixelsOfPNG(renderToBytes(OutputKind::PNG, settings, [&](DrawingContext& context, const Rect& bounds) {
        PixelAlignedContext aligned(context, ratio);
        const CurrentContextScope scope(isAligned ? static_cast<DrawingContext&>(aligned) : context);
        graph.drawInRect(bounds);
    }));
}

/// The whole pixels inside the data area and its frame, columns from the left and rows from the top.
struct PixelArea {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
};

PixelArea dataAreaOf(const TOLVGraph& graph, const Pixels& pixels, double ratio)
{
    const Rect rect = graph.dataRectInRect({{}, kSize});
    return {static_cast<int>(std::floor(rect.x() * ratio)), static_cast<int>(std::ceil(rect.maxX() * ratio)), pixels.height - static_cast<int>(std::ceil(rect.maxY() * ratio)),
        pixels.height - static_cast<int>(std::floor(rect.y() * ratio))};
}

std::set<std::string> colorsIn(const Pixels& pixels, const PixelArea& area)
{
    std::set<std::string> colors;
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x)
            colors.insert(pixels.colorAt(x, y));
    }
    return colors;
}

/// The lengths of the runs of one colour along a row.
std::vector<int> runsInRow(const Pixels& pixels, const PixelArea& area, int row, const std::string& color)
{
    std::vector<int> runs;
    bool goesOn = false;
    for (int x = area.left; x < area.right; ++x) {
        const bool isColor = pixels.colorAt(x, row) == color;
        if (isColor && !goesOn)
            runs.push_back(0);
        if (isColor)
            ++runs.back();
        goesOn = isColor;
    }
    return runs;
}

class CrispLines : public testing::Test {
protected:
    TextSystemScope fonts{text::PangoTextSystem::shared()};
};

TEST_F(CrispLines, FrameAndGridHaveTheirFullColorsAndNoOthersAtAnyRatio)
{
    const std::map<double, int> widths{{1.0, 1}, {1.25, 1}, {1.5, 2}, {2.0, 2}, {3.0, 3}};
    for (const double ratio : kRatios) {
        const auto graph = gridGraph();
        const Pixels pixels = picture(*graph, ratio, true);
        const PixelArea area = dataAreaOf(*graph, pixels, ratio);
        EXPECT_EQ(colorsIn(pixels, area), (std::set<std::string>{"#ffffff", kMajorColor, kMinorColor})) << ratio;
        // Along a row between the lying lines: both sides of the frame and the upright major lines, all of one width.
        int row = (area.top + area.bottom) / 2;
        while (runsInRow(pixels, area, row, "#ffffff").size() < 2)
            ++row;
        std::size_t inside = 0;
        const Rect rect = graph->dataRectInRect({{}, kSize});
        for (const double value : graph->horizontalAxis()->majorValues()) {
            const auto x = static_cast<double>(graph->XForValue(static_cast<float>(value), {{}, kSize}));
            inside += x > rect.x() + 2.0 && x < rect.maxX() - 2.0 ? 1U : 0U;
        }
        EXPECT_GE(inside, 3U);
        EXPECT_EQ(runsInRow(pixels, area, row, kMajorColor), std::vector<int>(inside + 2, widths.at(ratio))) << ratio;
    }
}

TEST_F(CrispLines, ImpulsesAndBarsEndOnPixelsAtAnyRatio)
{
    for (const double ratio : kRatios) {
        for (const auto& graph : {impulseGraph(), barGraph()}) {
            const Pixels pixels = picture(*graph, ratio, true);
            EXPECT_EQ(colorsIn(pixels, dataAreaOf(*graph, pixels, ratio)), (std::set<std::string>{"#ffffff", kMajorColor, kMinorColor, kSeriesColor})) << ratio;
        }
    }
}

TEST_F(CrispLines, ThereAreMixturesWithoutAlignment)
{
    const auto graph = gridGraph();
    const Pixels pixels = picture(*graph, 1.25, false);
    EXPECT_GT(colorsIn(pixels, dataAreaOf(*graph, pixels, 1.25)).size(), 4U);
}

TEST_F(CrispLines, ADarkWindowHasTheCounterpartsOfTheColors)
{
    const auto graph = impulseGraph();
    fitMarginsToLabels(*graph, {{}, kSize});
    OutputSettings settings;
    settings.size = kSize;
    settings.scale = 1.25;
    settings.background = darkBackgroundColor();
    const Pixels pixels = pixelsOfPNG(renderToBytes(OutputKind::PNG, settings, [&](DrawingContext& context, const Rect& bounds) {
        DarkContext dark(context);
        PixelAlignedContext aligned(dark, 1.25);
        const CurrentContextScope scope(aligned);
        graph->drawInRect(bounds);
    }));
    // As the image's background, which rounds colours to bytes in the same way.
    const auto counterpart = [](const Color& color) {
        OutputSettings plain;
        plain.size = {1.0, 1.0};
        plain.background = colorOnDarkGround(color, darkBackgroundColor());
        return pixelsOfPNG(renderToBytes(OutputKind::PNG, plain, [](DrawingContext&, const Rect&) {})).colorAt(0, 0);
    };
    EXPECT_EQ(colorsIn(pixels, dataAreaOf(*graph, pixels, 1.25)),
        (std::set<std::string>{"#1e1e1e", counterpart(Color(1.0, 0.0, 0.0)), counterpart(Color(0.0, 0.0, 1.0)), counterpart(kSeries)}));
    EXPECT_EQ(pixels.colorAt(0, 0), "#1e1e1e");
}

} // namespace
} // namespace TOLVGraphing
