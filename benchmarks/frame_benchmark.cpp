// Strokes of long lines beside Cairo's own, and whole frames of a graph of a million samples beside the time that a display has for one. "of_limit" is what counts: below 1 is within.

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/cairo/CairoContext.h>
#include <desktop/cairo/CairoPointers.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/Generated.h>

#include "Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr std::size_t kSampleCount = 1'000'000;
/// Sixty frames a second.
constexpr double kFrameLimit = 1.0 / 60.0;

/// Uniform noise over the whole height.
std::vector<float> noisySamples()
{
    testing_support::Generated noise(7);
    std::vector<float> samples(kSampleCount);
    for (float& sample : samples)
        sample = static_cast<float>(noise.number(-1.0, 1.0));
    return samples;
}

/// The smallest and the largest sample of each pixel column, in their order.
std::vector<Point> noisyLine()
{
    const std::vector<float> samples = noisySamples();
    std::vector<Point> line;
    const auto place = [&](std::size_t index) { return Point{static_cast<double>(index) * kWidth / kSampleCount, kHeight * (0.5 + 0.48 * static_cast<double>(samples[index]))}; };
    for (std::size_t column = 0; column < kWidth; ++column) {
        const auto begin = samples.begin() + static_cast<std::ptrdiff_t>(column * kSampleCount / kWidth);
        const auto end = samples.begin() + static_cast<std::ptrdiff_t>((column + 1) * kSampleCount / kWidth);
        const auto [low, high] = std::minmax_element(begin, end);
        line.push_back(place(static_cast<std::size_t>(std::min(low, high) - samples.begin())));
        line.push_back(place(static_cast<std::size_t>(std::max(low, high) - samples.begin())));
    }
    return line;
}

/// A thousand samples of noise, as a zoomed graph shows them: each a step of one and a half pixels to the right.
std::vector<Point> zoomedLine()
{
    constexpr int kPointCount = 1000;
    testing_support::Generated noise(11);
    std::vector<Point> line;
    for (int i = 0; i < kPointCount; ++i)
        line.push_back({(i + 0.5) * kWidth / kPointCount, kHeight * (0.5 + 0.48 * noise.number(-0.6, 0.6))});
    return line;
}

std::vector<Point> smoothLine()
{
    std::vector<Point> line;
    for (int i = 0; i < 2 * kWidth; ++i)
        line.push_back({i * 0.5, kHeight * (0.5 + 0.45 * std::sin(i * 0.006) * std::cos(i * 0.0017))});
    return line;
}

/// A white image to draw into.
class Image {
public:
    Image() : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)), m_target(cairo_create(m_surface.get()))
    {
        cairo_set_source_rgb(m_target.get(), 1.0, 1.0, 1.0);
        cairo_paint(m_target.get());
        cairo_set_source_rgb(m_target.get(), 0.0, 0.45, 0.7);
    }

    cairo_t* target() { return m_target.get(); }

private:
    cairo::SurfacePointer m_surface;
    cairo::ContextPointer m_target;
};

/// Both in turn, because the machine's speed changes.
void stroke(benchmark::State& state, const std::vector<Point>& line, double width, LineJoin join, const LineDash& dash)
{
    Image image;
    Path path;
    for (const Point& point : line)
        path.addLineToPoint(point);
    std::vector<double> ours;
    std::vector<double> cairos;
    for (auto _ : state) {
        auto start = Clock::now();
        {
            cairo::CairoContext context(image.target());
            context.setStrokeColor(Color(0.0, 0.45, 0.7));
            context.setLineWidth(width);
            context.setLineJoin(join);
            context.setLineDash(dash);
            context.drawStrokedPath(path);
        }
        ours.push_back(secondsSince(start));
        cairo_set_line_width(image.target(), width);
        cairo_set_line_join(image.target(), join == LineJoin::Round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
        cairo_set_dash(image.target(), dash.lengths.data(), static_cast<int>(dash.lengths.size()), dash.phase);
        start = Clock::now();
        for (const Point& point : line)
            cairo_line_to(image.target(), point.x, point.y);
        cairo_stroke(image.target());
        cairos.push_back(secondsSince(start));
    }
    state.counters["median_ms"] = medianOf(ours) * 1e3;
    state.counters["cairo_ms"] = medianOf(cairos) * 1e3;
    state.counters["cairo_to_ours"] = medianOf(cairos) / medianOf(ours);
}

void strokeOfNoise(benchmark::State& state)
{
    stroke(state, noisyLine(), static_cast<double>(state.range(0)) * 0.1, LineJoin::Miter, {});
}
BENCHMARK(strokeOfNoise)->ArgName("tenths_wide")->Arg(5)->Arg(10)->Arg(15)->Arg(20)->Arg(50)->Arg(200)->Iterations(15)->Unit(benchmark::kMillisecond);

void strokeOfZoomedNoise(benchmark::State& state)
{
    stroke(state, zoomedLine(), static_cast<double>(state.range(0)) * 0.1, LineJoin::Miter, {});
}
BENCHMARK(strokeOfZoomedNoise)->ArgName("tenths_wide")->Arg(5)->Arg(10)->Arg(15)->Arg(20)->Arg(50)->Iterations(31)->Unit(benchmark::kMillisecond);

void strokeOfSmoothCurve(benchmark::State& state)
{
    stroke(state, smoothLine(), static_cast<double>(state.range(0)) * 0.1, LineJoin::Miter, {});
}
BENCHMARK(strokeOfSmoothCurve)->ArgName("tenths_wide")->Arg(5)->Arg(10)->Arg(15)->Arg(20)->Arg(50)->Arg(200)->Iterations(25)->Unit(benchmark::kMillisecond);

void strokeWithRoundJoins(benchmark::State& state)
{
    stroke(state, state.range(0) == 0 ? noisyLine() : smoothLine(), 1.0, LineJoin::Round, {});
}
BENCHMARK(strokeWithRoundJoins)->ArgName("smooth")->Arg(0)->Arg(1)->Iterations(15)->Unit(benchmark::kMillisecond);

void strokeWithDashes(benchmark::State& state)
{
    stroke(state, state.range(0) == 0 ? noisyLine() : smoothLine(), 1.0, LineJoin::Miter, {{8.0, 4.0}, 0.0});
}
BENCHMARK(strokeWithDashes)->ArgName("smooth")->Arg(0)->Arg(1)->Iterations(7)->Unit(benchmark::kMillisecond);

/// Where Cairo is as quick: lines of few points across the picture.
void strokeOfFewPoints(benchmark::State& state)
{
    std::vector<Point> line;
    const auto count = static_cast<int>(state.range(0));
    for (int i = 0; i <= count; ++i) {
        const double x = static_cast<double>(i) * kWidth / count;
        line.push_back({x, kHeight * (0.5 + 0.45 * std::sin(x * 0.012))});
    }
    stroke(state, line, 1.0, LineJoin::Miter, {});
}
BENCHMARK(strokeOfFewPoints)->ArgName("points")->Arg(65)->Arg(100)->Arg(200)->Arg(400)->Arg(800)->Iterations(51)->Unit(benchmark::kMicrosecond);

std::shared_ptr<TOLVGraph> graphOfNoise(bool isWave)
{
    std::vector<float> x(kSampleCount);
    std::vector<float> y = noisySamples();
    for (std::size_t i = 0; i < kSampleCount; ++i) {
        x[i] = static_cast<float>(i);
        if (isWave)
            y[i] = static_cast<float>(std::sin(static_cast<double>(i) * 1e-5)) + 0.05F * y[i];
    }
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(0.0, 0.45, 0.7)));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->horizontalAxis()->setLabel("Sample");
    graph->verticalAxis()->setLabel("Level");
    return graph;
}

/// One frame for each step: a new image, the whole graph.
void frame(benchmark::State& state, bool isWave, bool isZoom)
{
    installDesktopTextSystem();
    const auto graph = graphOfNoise(isWave);
    const Rect rect{0.0, 0.0, kWidth, kHeight};
    Image image;
    cairo::setUpwardCoordinates(image.target(), kHeight, 1.0);
    const float end = static_cast<float>(kSampleCount);
    float low = isZoom ? 0.0F : 0.1F * end;
    float high = isZoom ? end : 0.9F * end;
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        const float step = isZoom ? 0.01F * (high - low) : 0.001F * (high - low);
        low += step;
        high += isZoom ? -step : step;
        graph->extents()->setX(TOLVAxisExtents::extentsWithMin(low, high));
        cairo::CairoContext context(image.target());
        const CurrentContextScope scope(context);
        context.setFillColor(Color::whiteColor());
        context.fillRect(rect);
        graph->drawInRect(rect);
        seconds.push_back(secondsSince(start));
    }
    const double median = medianOf(seconds);
    state.counters["median_ms"] = median * 1e3;
    state.counters["limit_ms"] = kFrameLimit * 1e3;
    state.counters["of_limit"] = median / kFrameLimit;
}
BENCHMARK_CAPTURE(frame, pan_over_noise, false, false)->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, zoom_into_noise, false, true)->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, pan_over_noisy_wave, true, false)->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, zoom_into_noisy_wave, true, true)->Iterations(60)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
