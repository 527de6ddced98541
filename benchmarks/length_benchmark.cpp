// Whole frames at 1600 x 900 pixels of series from 1e5 to 1e8 samples, of 1 to 100 series, on logarithmic axes and on axes full of labels, and a picture of each kind of file. What counts is that the times of one row do not grow with the samples:
// "of_shortest" is the median beside that of the same picture of 1e5 samples, taken in turn.

#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/data/SeriesColors.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/cairo/CairoContext.h>
#include <desktop/cairo/CairoPointers.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>

#include "Noise.h"
#include "Timing.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr std::size_t kShortest = 100'000;

using Vector = std::shared_ptr<const TOLVRealVector>;

Vector abscissae(std::size_t count)
{
    std::vector<float> x(count);
    for (std::size_t i = 0; i < count; ++i)
        x[i] = static_cast<float>(0.1 + 999.9 * static_cast<double>(i) / static_cast<double>(count));
    return TOLVRealVector::vectorWithComponents(std::move(x));
}

/// A sine with noise higher than itself, or the powers of ten of it.
Vector ordinates(std::size_t count, std::uint64_t seed, bool isPositive)
{
    std::vector<float> y(count);
    Noise noise(seed);
    for (std::size_t i = 0; i < count; ++i) {
        const double level = 30.0 * std::sin(25.0 * static_cast<double>(i) / static_cast<double>(count)) + 100.0 * (noise.next() - 0.5);
        y[i] = isPositive ? std::pow(10.0F, static_cast<float>(level / 40.0)) : static_cast<float>(level);
    }
    return TOLVRealVector::vectorWithComponents(std::move(y));
}

/// A graph and the image that it is drawn into.
class Picture {
public:
    Picture(std::size_t samples, std::size_t series, bool isLog)
        : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight))
        , m_target(cairo_create(m_surface.get()))
        , m_graph(TOLVGraph::graph())
    {
        cairo::setUpwardCoordinates(m_target.get(), kHeight, 1.0);
        const Vector x = abscissae(samples);
        for (std::size_t i = 0; i < series; ++i)
            m_graph->addGraphData(TOLVGraphData::graphDataWithX(x, ordinates(samples, i, isLog), seriesColor(i)));
        if (isLog) {
            m_graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
            m_graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
        }
        m_graph->extents()->setX(TOLVAxisExtents::extentsWithMin(isLog ? 0.1F : 0.0F, 1000.0F));
        m_graph->extents()->setY(isLog ? TOLVAxisExtents::extentsWithMin(0.005F, 150.0F) : TOLVAxisExtents::extentsWithMin(-85.0F, 85.0F));
    }

    [[nodiscard]] const std::shared_ptr<TOLVGraph>& graph() const { return m_graph; }

    /// Seconds.
    double drawn()
    {
        const auto start = Clock::now();
        cairo::CairoContext context(m_target.get());
        const CurrentContextScope scope(context);
        const Rect rect{0.0, 0.0, kWidth, kHeight};
        context.setFillColor(Color::whiteColor());
        context.fillRect(rect);
        m_graph->drawInRect(rect);
        return secondsSince(start);
    }

private:
    cairo::SurfacePointer m_surface;
    cairo::ContextPointer m_target;
    std::shared_ptr<TOLVGraph> m_graph;
};

void pan(TOLVGraph& graph, double step)
{
    const auto x = graph.extents()->x();
    graph.extents()->setX(TOLVAxisExtents::extentsWithMin(x->min() + step, x->max() + step));
}

enum class View { Same, Panned, Zoomed };

void frame(benchmark::State& state, std::size_t series, bool isLog, View view)
{
    installDesktopTextSystem();
    Picture picture(static_cast<std::size_t>(state.range(0)), series, isLog);
    Picture shortest(kShortest, series, isLog);
    for (Picture* one : {&picture, &shortest}) {
        one->drawn();
        if (view == View::Zoomed)
            one->graph()->extents()->setX(TOLVAxisExtents::extentsWithMin(400.0F, 600.0F));
    }
    std::vector<double> seconds;
    std::vector<double> shortestSeconds;
    for (auto _ : state) {
        if (view != View::Same) {
            pan(*picture.graph(), 0.1);
            pan(*shortest.graph(), 0.1);
        }
        seconds.push_back(picture.drawn());
        shortestSeconds.push_back(shortest.drawn());
    }
    state.counters["median_ms"] = medianOf(seconds) * 1e3;
    state.counters["shortest_ms"] = medianOf(shortestSeconds) * 1e3;
    state.counters["of_shortest"] = medianOf(seconds) / medianOf(shortestSeconds);
}
BENCHMARK_CAPTURE(frame, same, 1, false, View::Same)->ArgName("samples")->Arg(1'000'000)->Arg(10'000'000)->Arg(100'000'000)->Iterations(51)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, panned, 1, false, View::Panned)->ArgName("samples")->Arg(1'000'000)->Arg(10'000'000)->Arg(100'000'000)->Iterations(51)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, zoomed_and_panned, 1, false, View::Zoomed)
    ->ArgName("samples")
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Arg(100'000'000)
    ->Iterations(51)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, logarithmic_panned, 1, true, View::Panned)
    ->ArgName("samples")
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Arg(100'000'000)
    ->Iterations(51)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, of_10_series, 10, false, View::Panned)->ArgName("samples")->Arg(1'000'000)->Arg(5'000'000)->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, of_100_series, 100, false, View::Panned)->ArgName("samples")->Arg(500'000)->Iterations(7)->Unit(benchmark::kMillisecond);

/// Axes with a label every few points, formatted and placed anew in each frame because the range moves.
void labels(benchmark::State& state)
{
    installDesktopTextSystem();
    Picture picture(kShortest, 1, false);
    for (const auto& axis : {picture.graph()->horizontalAxis(), picture.graph()->verticalAxis()}) {
        axis->setDrawsMinorLabels(true);
        axis->setDrawsMinorLines(true);
    }
    std::vector<double> seconds;
    for (auto _ : state) {
        pan(*picture.graph(), 0.1);
        seconds.push_back(picture.drawn());
    }
    state.counters["median_ms"] = medianOf(seconds) * 1e3;
}
BENCHMARK(labels)->Iterations(51)->Unit(benchmark::kMillisecond);

/// A file's bytes, made in memory, of a series of so many samples.
void file(benchmark::State& state, OutputKind kind)
{
    installDesktopTextSystem();
    Picture picture(static_cast<std::size_t>(state.range(0)), 1, false);
    picture.drawn();
    const Rect rect{0.0, 0.0, kWidth, kHeight};
    std::vector<double> seconds;
    std::size_t bytes = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        OutputSettings settings;
        settings.size = rect.size;
        settings.scale = 1.0;
        bytes = renderToBytes(kind, settings, [&](DrawingContext&, const Rect& bounds) { picture.graph()->drawInRect(bounds); }).size();
        seconds.push_back(secondsSince(start));
    }
    state.counters["median_ms"] = medianOf(seconds) * 1e3;
    state.counters["kilobytes"] = static_cast<double>(bytes) / 1e3;
}

BENCHMARK_CAPTURE(file, PDF, OutputKind::PDF)->ArgName("samples")->Arg(10'000'000)->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(file, PostScript, OutputKind::PostScript)->ArgName("samples")->Arg(10'000'000)->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(file, EPS, OutputKind::EPS)->ArgName("samples")->Arg(10'000'000)->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(file, SVG, OutputKind::SVG)->ArgName("samples")->Arg(10'000'000)->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(file, PNG, OutputKind::PNG)->ArgName("samples")->Arg(10'000'000)->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(file, TIFF, OutputKind::TIFF)->ArgName("samples")->Arg(10'000'000)->Iterations(21)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
