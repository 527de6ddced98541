#include "GoldenScenes.h"

#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/text/DayDateFormatter.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVMath/TOLVRealVector.h>

#include <TestPaths.h>

#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace TOLVGraphing::testing_support {

namespace {

const Color kBlue{0.0, 0.375, 0.75};
const Color kRed{0.75, 0.25, 0.0};
const Color kGreen{0.0, 0.5, 0.25};

using Numbers = std::vector<float>;

/// A value of each whole number from 0 on.
Numbers numbers(int count, const std::function<double(int)>& value)
{
    Numbers result;
    for (int i = 0; i < count; ++i)
        result.push_back(static_cast<float>(value(i)));
    return result;
}

/// A wave of parabolas between -1 and 1 that repeats after `period`, a multiple of 4.
double wave(int i, int period)
{
    const int half = period / 2;
    const int place = i % half;
    const double bow = 4.0 * place * (half - place) / (static_cast<double>(half) * half);
    return i / half % 2 == 0 ? bow : -bow;
}

/// Numbers without pattern between 0 and 1.
double scatter(int i)
{
    return static_cast<double>(static_cast<unsigned>(i) * 2654435761U >> 16U & 1023U) / 1023.0;
}

std::shared_ptr<TOLVGraphData> series(Numbers x, Numbers y, std::shared_ptr<TOLVLineStyle> style)
{
    return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), std::move(style));
}

void drawMarkers(const Rect& rect)
{
    const auto graph = TOLVGraph::graph();
    const Numbers x = numbers(241, [](int i) { return i * 1.25; });
    graph->addGraphData(series(x, numbers(241, [](int i) { return 40.0 * wave(i, 96) + 8.0 * scatter(i); }), TOLVLineStyle::solidLineWithColor(kBlue, 1.0)));
    graph->addGraphData(series(x, numbers(241, [](int i) { return 60.0 - i / 4.0; }), TOLVLineStyle::solidLineWithColor(kRed, 1.5)));
    graph->setTitle("Two curves with values");
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->verticalAxis()->setLabel("Level");
    graph->zoomXToFixedMin(0.0F, 300.0F);
    graph->zoomYToFixedMin(-50.0, 80.0);
    for (const double value : {31.5, 150.0, 240.25})
        graph->placeHorizontalAxisMarkerWithValue(value);
    graph->setDrawingStrategy(std::make_shared<CurveGraphDrawing>());
    GraphSheet(graph).drawInRect(rect);
}

void drawDots(const Rect& rect)
{
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(series(numbers(24, [](int i) { return i; }), numbers(24, [](int i) { return 1000.0 * scatter(i + 5); }), TOLVLineStyle::solidLineWithColor(kGreen, 1.0)));
    graph->horizontalAxis()->setLabel("Hour");
    graph->zoomXToFixedMin(-0.5F, 23.5F);
    graph->zoomYToFixedMin(0.0, 1100.0);
    graph->setDrawingStrategy(std::make_shared<TOLVDottedCurveGraphDrawing>());
    GraphSheet(graph).drawInRect(rect);
}

void drawStyles(const Rect& rect)
{
    const auto graph = TOLVGraph::graph();
    const std::pair<const char*, std::shared_ptr<TOLVLineStyle>> styles[] = {
        {"solid", TOLVLineStyle::solidLineWithColor(kBlue, 1.0)},
        {"dashed", TOLVLineStyle::dashedLineStyle()->styleWithColor(kRed)},
        {"dash-dot", TOLVLineStyle::dashDotLineStyle()->styleWithColor(kGreen)},
        {"dotted", TOLVLineStyle::dottedLineStyle()->styleWithColor(Color{0.5, 0.0, 0.5})},
        {"thick and translucent", TOLVLineStyle::solidLineWithColor(Color{1.0, 0.5, 0.0, 0.5}, 6.0)},
    };
    std::vector<LegendEntry> legend;
    int place = 0;
    for (const auto& [name, style] : styles) {
        graph->addGraphData(series(numbers(60, [](int i) { return i; }), numbers(60, [&](int i) { return place * 2.0 + wave(i + 6 * place, 48); }), style));
        legend.push_back({name, style});
        ++place;
    }
    graph->zoomXToFixedMin(0.0F, 59.0F);
    graph->zoomYToFixedMin(-2.0, 10.0);
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    GraphSheet sheet(graph);
    sheet.setLegendEntries(legend);
    sheet.drawInRect(rect);
}

void drawLogarithmic(const Rect& rect)
{
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>(graph));
    // Each abscissa is a twentieth more than the one before.
    Numbers x{20.0F};
    while (x.back() < 20000.0F)
        x.push_back(x.back() + x.back() / 20.0F);
    const int count = static_cast<int>(x.size());
    graph->addGraphData(series(x, numbers(count, [](int i) { return 12.0 * wave(i, 64) - i / 20.0; }), TOLVLineStyle::solidLineWithColor(kBlue, 1.5)));
    graph->horizontalAxis()->setLabel("Frequency (Hz)");
    graph->verticalAxis()->setLabel("Level (dB)");
    graph->zoomXToFixedMin(20.0F, 20000.0F);
    graph->zoomYToFixedMin(-25.0, 15.0);
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    GraphSheet(graph).drawInRect(rect);
}

void drawDates(const Rect& rect)
{
    constexpr double kFirstDay = 15340.0;
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(series(numbers(366, [](int i) { return kFirstDay + i; }), numbers(366, [](int i) { return 8.0 * scatter(i) - 10.0 * wave(i, 364); }),
        TOLVLineStyle::solidLineWithColor(kRed, 1.0)));
    graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<DayDateFormatter>());
    graph->setTitle("A year of days");
    graph->verticalAxis()->setLabel("Temperature (\xC2\xB0"
                                    "C)");
    graph->zoomXToFixedMin(static_cast<float>(kFirstDay), static_cast<float>(kFirstDay + 366.0));
    graph->zoomYToFixedMin(-15.0, 20.0);
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    GraphSheet(graph).drawInRect(rect);
}

void drawTiny(const Rect& rect)
{
    const auto graph = TOLVGraph::graph();
    const auto style = TOLVLineStyle::solidLineWithColor(kBlue, 1.0);
    graph->addGraphData(series(numbers(20, [](int i) { return i; }), numbers(20, [](int i) { return 1000000.0 * wave(i, 16); }), style));
    graph->setTitle("Title");
    graph->horizontalAxis()->setLabel("x");
    graph->zoomXToFixedMin(0.0F, 19.0F);
    graph->zoomYToFixedMin(-1000000.0, 1000000.0);
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    GraphSheet sheet(graph);
    sheet.setLegendEntries({{"name", style}});
    sheet.drawInRect(rect);
}

} // namespace

const std::vector<GoldenScene>& goldenScenes()
{
    static const std::vector<GoldenScene> scenes{
        {"markers", {320.0, 200.0}, drawMarkers},
        {"dots", {320.0, 180.0}, drawDots},
        {"styles", {320.0, 220.0}, drawStyles},
        {"logarithmic", {360.0, 200.0}, drawLogarithmic},
        {"dates", {320.0, 160.0}, drawDates},
        {"tiny", {140.0, 100.0}, drawTiny},
    };
    return scenes;
}

const GoldenScene& goldenScene(const std::string& name)
{
    for (const GoldenScene& scene : goldenScenes()) {
        if (scene.name == name)
            return scene;
    }
    throw std::runtime_error("no golden scene " + name);
}

std::string goldenPath(const std::string& fileName)
{
    return std::string(TOLV_SOURCE_DIR) + "/tests/golden/" + fileName;
}

bool regeneratesGolden()
{
    const char* value = std::getenv("TOLV_REGENERATE_GOLDEN");
    return value && std::string_view(value) == "1";
}

} // namespace TOLVGraphing::testing_support
