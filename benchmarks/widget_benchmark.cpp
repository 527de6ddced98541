// Pan and wheel steps in a window with a series of a million noisy samples: from the event to the finished repaint, beside the time that a display has for a frame. "of_limit" is what counts: below 1 is within.
// Runs without a display unless QT_QPA_PLATFORM says otherwise.

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <hosts/qt6/GraphWidget.h>
#include <tests/support/Generated.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include "Timing.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr QSize kSize(1600, 900);
constexpr std::size_t kSampleCount = 1'000'000;
/// Sixty frames a second.
constexpr double kFrameLimit = 1.0 / 60.0;

/// Uniform noise: every pixel column reaches over nearly the whole height, the most work that a stroke can be.
std::unique_ptr<GraphWidget> shownWidget()
{
    testing_support::Generated noise(7);
    std::vector<float> x(kSampleCount);
    std::vector<float> y(kSampleCount);
    for (std::size_t i = 0; i < kSampleCount; ++i) {
        x[i] = static_cast<float>(i);
        y[i] = static_cast<float>(noise.number(-1.0, 1.0));
    }
    auto widget = std::make_unique<GraphWidget>();
    widget->resize(kSize);
    widget->addSeries(std::move(x), std::move(y), "Noise");
    widget->show();
    QCoreApplication::processEvents();
    return widget;
}

void sendMouse(GraphWidget& widget, QEvent::Type type, QPointF place, Qt::MouseButton button)
{
    QMouseEvent event(type, place, widget.mapToGlobal(place), button, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void sendWheel(GraphWidget& widget, int notches)
{
    const QPointF place(700.0, 400.0);
    QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

/// Each step is an event and its repaint.
void measureFrames(benchmark::State& state, GraphWidget& widget, const std::function<void(int)>& sendStep)
{
    const std::uint64_t before = widget.drawCount();
    std::vector<double> seconds;
    int step = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        sendStep(step++);
        widget.repaint();
        seconds.push_back(secondsSince(start));
    }
    const double median = medianOf(seconds);
    state.counters["median_ms"] = median * 1e3;
    state.counters["limit_ms"] = kFrameLimit * 1e3;
    state.counters["of_limit"] = median / kFrameLimit;
    // Every step has to have drawn the graph.
    state.counters["frames_per_step"] = static_cast<double>(widget.drawCount() - before) / static_cast<double>(seconds.size());
}

void panning(benchmark::State& state)
{
    const auto widget = shownWidget();
    for (int i = 0; i < 12; ++i)
        sendWheel(*widget, 1);
    sendMouse(*widget, QEvent::MouseButtonPress, {800.0, 400.0}, Qt::LeftButton);
    measureFrames(state, *widget, [&](int step) { sendMouse(*widget, QEvent::MouseMove, {800.0 + 3.0 * (step % 100) + 0.37, 400.0}, Qt::NoButton); });
    sendMouse(*widget, QEvent::MouseButtonRelease, {800.0, 400.0}, Qt::LeftButton);
}
BENCHMARK(panning)->Iterations(300)->Unit(benchmark::kMillisecond);

void panningTheWhole(benchmark::State& state)
{
    const auto widget = shownWidget();
    sendMouse(*widget, QEvent::MouseButtonPress, {800.0, 400.0}, Qt::LeftButton);
    measureFrames(state, *widget, [&](int step) { sendMouse(*widget, QEvent::MouseMove, {800.0 + 3.0 * (step % 100) + 0.37, 400.0}, Qt::NoButton); });
    sendMouse(*widget, QEvent::MouseButtonRelease, {800.0, 400.0}, Qt::LeftButton);
}
BENCHMARK(panningTheWhole)->Iterations(300)->Unit(benchmark::kMillisecond);

void turningTheWheel(benchmark::State& state)
{
    const auto widget = shownWidget();
    // In and out again between the whole and a hundredth of it.
    measureFrames(state, *widget, [&](int step) { sendWheel(*widget, step / 40 % 2 == 0 ? 1 : -1); });
}
BENCHMARK(turningTheWheel)->Iterations(300)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argumentCount, char** arguments)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
