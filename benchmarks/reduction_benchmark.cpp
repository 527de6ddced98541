// The reduction of long series to pixel columns beside the time that it takes to read the samples at all: a sum over them, as quick as this machine adds. "of_sum" is what counts.

#include <TOLVGraphing/data/ColumnReduction.h>
#include <TOLVGraphing/data/ReducibleSeries.h>
#include <TOLVMath/ExtremePyramid.h>
#include <TOLVMath/FloatLanes.h>
#include <TOLVMath/Prefetch.h>
#include <TOLVMath/SortedSamples.h>

#include "Noise.h"
#include "Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

using Vector = std::shared_ptr<const TOLVRealVector>;

constexpr double kWidth = 1600.0;
constexpr double kHeight = 900.0;

struct Samples {
    std::vector<float> x;
    std::vector<float> y;
};

/// A noisy sine over 0 to 1000, one length at a time.
const Samples& noisySamples(std::size_t count)
{
    static Samples samples;
    if (samples.x.size() == count)
        return samples;
    samples = {std::vector<float>(count), std::vector<float>(count)};
    Noise noise;
    for (std::size_t i = 0; i < count; ++i) {
        const double place = static_cast<double>(i) / static_cast<double>(count);
        samples.x[i] = static_cast<float>(place * 1000.0);
        samples.y[i] = static_cast<float>(30.0 * std::sin(place * 25.0) + 100.0 * (noise.next() - 0.5));
    }
    return samples;
}

/// A vector that knows nothing yet of the samples, which stay where they are.
Vector freshVector(const std::vector<float>& samples)
{
    return TOLVRealVector::vectorWithStorage(nullptr, samples.data(), samples.size());
}

/// As quick as memory is read: eight sums that need not wait for one another.
float sum(std::span<const float> samples)
{
    constexpr std::size_t kLanes = FloatLanes::kCount;
    constexpr std::size_t kStep = 8 * kLanes;
    FloatLanes a(0.0F), b(0.0F), c(0.0F), d(0.0F), e(0.0F), f(0.0F), g(0.0F), h(0.0F);
    for (std::size_t i = 0; i + kStep <= samples.size(); i += kStep) {
        const float* at = samples.data() + i;
        prefetch(at + kPrefetchDistance);
        prefetch(at + kPrefetchDistance + kStep / 2);
        a = a + FloatLanes::load(at);
        b = b + FloatLanes::load(at + kLanes);
        c = c + FloatLanes::load(at + 2 * kLanes);
        d = d + FloatLanes::load(at + 3 * kLanes);
        e = e + FloatLanes::load(at + 4 * kLanes);
        f = f + FloatLanes::load(at + 5 * kLanes);
        g = g + FloatLanes::load(at + 6 * kLanes);
        h = h + FloatLanes::load(at + 7 * kLanes);
    }
    std::array<float, kLanes> lanes;
    (((a + b) + (c + d)) + ((e + f) + (g + h))).store(lanes.data());
    return lanes[0] + lanes[1] + lanes[2] + lanes[3];
}

ColumnReduction wholeView(bool isLog)
{
    ColumnReduction settings;
    settings.xMinimum = isLog ? 0.5F : 0.0F;
    settings.xMaximum = 1000.0F;
    settings.yMinimum = isLog ? 0.01F : -85.0F;
    settings.yMaximum = 85.0F;
    settings.rect = Rect(60.0, 20.0, kWidth - 80.0, kHeight - 60.0);
    settings.xIsLog = settings.yIsLog = isLog;
    return settings;
}

/// Times the steps in turn and reports the first beside the second.
template <typename Step, typename Limit>
void sideBySide(benchmark::State& state, const Step& step, const Limit& limit)
{
    std::vector<double> steps;
    std::vector<double> limits;
    for (auto _ : state) {
        auto start = Clock::now();
        step();
        steps.push_back(secondsSince(start));
        start = Clock::now();
        limit();
        limits.push_back(secondsSince(start));
    }
    state.counters["median_ms"] = medianOf(steps) * 1e3;
    state.counters["sum_ms"] = medianOf(limits) * 1e3;
    state.counters["least_of_least"] = *std::min_element(steps.begin(), steps.end()) / *std::min_element(limits.begin(), limits.end());
    state.counters["of_sum"] = medianOf(steps) / medianOf(limits);
}

void firstLook(benchmark::State& state)
{
    const Samples& samples = noisySamples(static_cast<std::size_t>(state.range(0)));
    TOLVCurve curve;
    const ColumnReduction settings = wholeView(false);
    sideBySide(
        state,
        [&] {
            curve.reset();
            settings.reduce(*freshVector(samples.x), *freshVector(samples.y), curve);
        },
        [&] { benchmark::DoNotOptimize(sum(samples.x) + sum(samples.y)); });
}

/// Without summaries, of abscissae that are known to ascend.
void singlePass(benchmark::State& state)
{
    const Samples& samples = noisySamples(static_cast<std::size_t>(state.range(0)));
    TOLVCurve curve;
    const ColumnReduction settings = wholeView(false);
    ReducibleSeries series;
    series.xs = samples.x;
    series.ys = samples.y;
    series.isAscending = true;
    sideBySide(
        state,
        [&] {
            curve.reset();
            settings.reduce(series, curve);
        },
        [&] { benchmark::DoNotOptimize(sum(samples.y)); });
}

void pyramidBuild(benchmark::State& state)
{
    const Samples& samples = noisySamples(static_cast<std::size_t>(state.range(0)));
    sideBySide(
        state, [&] { benchmark::DoNotOptimize(ExtremePyramid(samples.y).extremes()); }, [&] { benchmark::DoNotOptimize(sum(samples.y)); });
}

void orderCheck(benchmark::State& state)
{
    const Samples& samples = noisySamples(static_cast<std::size_t>(state.range(0)));
    sideBySide(
        state, [&] { benchmark::DoNotOptimize(SortedSamples::of(samples.x)->memory()); }, [&] { benchmark::DoNotOptimize(sum(samples.x)); });
}

enum class View { Same, Panned, Unseen, Zoomed };

/// With summaries that are there already.
void redraw(benchmark::State& state, bool isLog, View view)
{
    const Samples& samples = noisySamples(static_cast<std::size_t>(state.range(0)));
    Samples positive;
    if (isLog) {
        positive = samples;
        for (float& y : positive.y)
            y = std::abs(y) + 0.01F;
    }
    const Vector x = freshVector(isLog ? positive.x : samples.x);
    const Vector y = freshVector(isLog ? positive.y : samples.y);
    TOLVCurve curve;
    ColumnReduction settings = wholeView(isLog);
    settings.reduce(*x, *y, curve);
    std::vector<double> seconds;
    // Larger than the processor's caches, to push out what a former step has read.
    std::vector<char> other(view == View::Unseen ? std::size_t{64} << 20U : 0);
    float shift = 0.0F;
    for (auto _ : state) {
        if (view == View::Panned || view == View::Unseen) {
            shift += 0.0371F;
            settings.xMinimum += 0.0371F;
            settings.xMaximum += 0.0371F;
        } else if (view == View::Zoomed) {
            shift += 0.01F;
            settings.xMinimum = 495.0F + shift;
            settings.xMaximum = 505.0F + shift;
        }
        for (std::size_t i = 0; i < other.size(); i += 64)
            ++other[i];
        curve.reset();
        const auto start = Clock::now();
        settings.reduce(*x, *y, curve);
        seconds.push_back(secondsSince(start));
    }
    state.counters["median_ms"] = medianOf(seconds) * 1e3;
    state.counters["least_ms"] = *std::min_element(seconds.begin(), seconds.end()) * 1e3;
    state.counters["vertices"] = static_cast<double>(curve.pointIdx());
}

void lengths(benchmark::internal::Benchmark* benchmark)
{
    for (const std::int64_t count : {100'000, 1'000'000, 10'000'000, 100'000'000})
        benchmark->Arg(count);
    benchmark->ArgName("samples")->Iterations(31)->Unit(benchmark::kMillisecond);
}

BENCHMARK(firstLook)->Apply(lengths);
BENCHMARK(singlePass)->Apply(lengths);
BENCHMARK(pyramidBuild)->Apply(lengths);
BENCHMARK(orderCheck)->Apply(lengths);
BENCHMARK_CAPTURE(redraw, same, false, View::Same)->Apply(lengths);
BENCHMARK_CAPTURE(redraw, panned, false, View::Panned)->Apply(lengths);
BENCHMARK_CAPTURE(redraw, unseen, false, View::Unseen)->Apply(lengths);
BENCHMARK_CAPTURE(redraw, zoomed, false, View::Zoomed)->Apply(lengths);
BENCHMARK_CAPTURE(redraw, same_log, true, View::Same)->Apply(lengths);
BENCHMARK_CAPTURE(redraw, unseen_log, true, View::Unseen)->Apply(lengths);

} // namespace

BENCHMARK_MAIN();
