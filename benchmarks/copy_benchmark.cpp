// Copying a graph view of a million samples to a pasteboard, with every kind of document, beside its limit. "of_limit" is what counts: below 1 is within.

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/DesktopDocumentRenderer.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/Generated.h>

#include "Timing.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr double kLimit = 0.1;
constexpr std::size_t kSampleCount = 1'000'000;

/// A slow oscillation with noise on it: every pixel column has its own extremes.
std::shared_ptr<TOLVGraphData> noisySeries()
{
    testing_support::Generated noise(7);
    std::vector<float> x(kSampleCount);
    std::vector<float> y(kSampleCount);
    for (std::size_t i = 0; i < kSampleCount; ++i) {
        x[i] = static_cast<float>(i);
        y[i] = static_cast<float>(std::sin(static_cast<double>(i) * 1e-5) + noise.number(-0.2, 0.2));
    }
    return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(0.0, 0.45, 0.7));
}

std::shared_ptr<TOLVGraphView> viewOfSeries(const std::shared_ptr<TOLVGraphData>& series)
{
    auto view = TOLVGraphView::initWithFrame({0.0, 0.0, 612.0, 396.0});
    view->graph()->addGraphData(series);
    view->graph()->setExtents(view->graph()->extentsFittingGraphData());
    view->graph()->horizontalAxis()->setLabel("Sample");
    view->graph()->placeHorizontalAxisMarkerWithValue(250000.0);
    return view;
}

void reportMedian(benchmark::State& state, const std::vector<double>& seconds)
{
    const double median = medianOf(seconds);
    state.counters["median_ms"] = median * 1e3;
    state.counters["limit_ms"] = kLimit * 1e3;
    state.counters["of_limit"] = median / kLimit;
}

void copyOfView(benchmark::State& state)
{
    installDesktopTextSystem();
    installDesktopDocumentRenderer();
    const auto pasteboard = std::make_shared<MemoryPasteboard>();
    Pasteboard::setGeneralPasteboard(pasteboard);
    const auto view = viewOfSeries(noisySeries());
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        view->copy(nullptr);
        seconds.push_back(secondsSince(start));
    }
    state.counters["pdf_bytes"] = static_cast<double>(pasteboard->dataForType(kPasteboardTypePDF)->size());
    reportMedian(state, seconds);
}
BENCHMARK(copyOfView)->Iterations(15)->Unit(benchmark::kMillisecond);

/// The share of each kind of document. The limit is that of the whole copy.
void document(benchmark::State& state, OutputKind kind)
{
    installDesktopTextSystem();
    installDesktopDocumentRenderer();
    const auto view = viewOfSeries(noisySeries());
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        benchmark::DoNotOptimize(view->dataInsideRect(view->bounds(), kind));
        seconds.push_back(secondsSince(start));
    }
    reportMedian(state, seconds);
}
BENCHMARK_CAPTURE(document, PDF, OutputKind::PDF)->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(document, EPS, OutputKind::EPS)->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(document, SVG, OutputKind::SVG)->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(document, PNG, OutputKind::PNG)->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(document, TIFF, OutputKind::TIFF)->Iterations(15)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
