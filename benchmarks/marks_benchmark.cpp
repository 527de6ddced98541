// Drawings with a mark for each of a million samples, beside the same marks drawn one after the other.

#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/PixelAlignedContext.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/PixelDrawing.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/Generated.h>
#include <tests/support/PlainMarks.h>

#include "Timing.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr int kSteps = 5;
const Rect kRect{0.0, 0.0, kWidth, kHeight};

std::shared_ptr<TOLVGraph> graphOf(bool isWave, std::size_t count)
{
    testing_support::Generated noise(7);
    std::vector<float> x(count);
    std::vector<float> y(count);
    for (std::size_t i = 0; i < count; ++i) {
        x[i] = static_cast<float>(i);
        y[i] = static_cast<float>(noise.number(-1.0, 1.0));
        if (isWave)
            y[i] = static_cast<float>(std::sin(static_cast<double>(i) * 10.0 / static_cast<double>(count))) + 0.02F * y[i];
    }
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(0.0, 0.45, 0.7)));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->setMargin({20.0, 60.0, 40.0, 20.0});
    return graph;
}

/// Draws into a white picture as a window does.
double secondsOf(const std::function<void()>& drawing)
{
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kWidth) * kHeight, 0xFFFFFFFFU);
    const PixelMemory memory{reinterpret_cast<unsigned char*>(pixels.data()), kWidth, kHeight, kWidth * 4};
    double seconds = 0.0;
    drawOnPixels(memory, 1.0, [&](DrawingContext& context) {
        PixelAlignedContext aligned(context, 1.0);
        const CurrentContextScope scope(aligned);
        const auto start = Clock::now();
        drawing();
        seconds = secondsSince(start);
    });
    return seconds;
}

using Plain = void (*)(const TOLVGraph&, const Rect&);

/// The plain one takes seconds and is drawn once.
void marks(benchmark::State& state, TOLVGraphDrawing& drawing, Plain drawPlain)
{
    const auto graph = graphOf(state.range(0) != 0, static_cast<std::size_t>(state.range(1)));
    std::vector<double> ours;
    std::vector<double> plain;
    for (auto _ : state) {
        if (plain.empty())
            plain.push_back(secondsOf([&] { drawPlain(*graph, kRect); }));
        ours.push_back(secondsOf([&] { drawing.drawGraph(graph, kRect); }));
    }
    state.counters["median_ms"] = medianOf(ours) * 1e3;
    state.counters["plain_ms"] = medianOf(plain) * 1e3;
    state.counters["plain_to_ours"] = medianOf(plain) / medianOf(ours);
}

void impulses(benchmark::State& state)
{
    TOLVVerticalLineGraphDrawing drawing;
    marks(state, drawing, testing_support::drawPlainImpulses);
}
BENCHMARK(impulses)->ArgNames({"wave", "samples"})->Args({0, 1'000'000})->Args({1, 1'000'000})->Iterations(kSteps)->Unit(benchmark::kMillisecond);

void xMarks(benchmark::State& state)
{
    TOLVXGraphDrawing drawing;
    marks(state, drawing, testing_support::drawPlainXMarks);
}
BENCHMARK(xMarks)->ArgNames({"wave", "samples"})->Args({0, 1'000'000})->Args({1, 1'000'000})->Iterations(kSteps)->Unit(benchmark::kMillisecond);

void dottedCurve(benchmark::State& state)
{
    TOLVDottedCurveGraphDrawing drawing;
    marks(state, drawing, testing_support::drawPlainDottedCurve);
}
BENCHMARK(dottedCurve)->ArgNames({"wave", "samples"})->Args({0, 1'000'000})->Args({1, 1'000'000})->Iterations(kSteps)->Unit(benchmark::kMillisecond);

void bars(benchmark::State& state)
{
    BarGraphDrawing drawing;
    marks(state, drawing, testing_support::drawPlainBars);
}
BENCHMARK(bars)->ArgNames({"wave", "samples"})->Args({0, 1'000'000})->Args({1, 1'000'000})->Iterations(kSteps)->Unit(benchmark::kMillisecond);

/// A line through categories of noise, with dots and callouts: one picture.
void lineOfCategories(benchmark::State& state)
{
    installDesktopTextSystem();
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto graph = graphOf(false, count);
    // The graph has its own copy of the axis.
    graph->setHorizontalAxis(std::make_shared<TOLVLineAxis>());
    dynamic_cast<TOLVLineAxis&>(*graph->horizontalAxis()).setDataPointCount(count);
    LineGraphDrawing drawing;
    std::vector<double> seconds;
    for (auto _ : state)
        seconds.push_back(secondsOf([&] { drawing.drawGraph(graph, kRect); }));
    state.counters["median_ms"] = medianOf(seconds) * 1e3;
}
BENCHMARK(lineOfCategories)->ArgName("categories")->Arg(1000)->Arg(10'000)->Arg(100'000)->Iterations(kSteps)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
