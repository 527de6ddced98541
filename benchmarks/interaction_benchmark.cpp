// A step of zoom, pan or fit with its drawing, and the choice of logarithmic ticks, each beside its limit. "of_limit" is what counts: below 1 is within.

#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>
#include <tests/support/InteractionWalk.h>

#include "Timing.h"

#include <benchmark/benchmark.h>

#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr double kStepLimit = 1e-3;
constexpr double kTickLimit = 5e-3;

void reportMedian(benchmark::State& state, const std::vector<double>& seconds, double limit)
{
    const double median = medianOf(seconds);
    state.counters["median_us"] = median * 1e6;
    state.counters["limit_us"] = limit * 1e6;
    state.counters["of_limit"] = median / limit;
}

void interactionStep(benchmark::State& state)
{
    const WalkSetting setting = walkSettings()[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(setting.name);
    NullContext context;
    const CurrentContextScope scope(context);
    InteractionWalk walk(setting);
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        walk.step();
        seconds.push_back(secondsSince(start));
    }
    reportMedian(state, seconds, kStepLimit);
}
BENCHMARK(interactionStep)->DenseRange(0, static_cast<std::int64_t>(walkSettings().size()) - 1)->Iterations(20000)->Unit(benchmark::kMicrosecond);

/// The preparation of an axis over six hundred decades: the choice of its depth and of its ticks.
void logarithmicTicks(benchmark::State& state)
{
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(1e-300, 1e300));
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        graph->horizontalAxis()->prepareForDrawingInRect({0.0, 0.0, 400.0, 20.0});
        seconds.push_back(secondsSince(start));
    }
    state.counters["ticks"] = static_cast<double>(graph->horizontalAxis()->majorValues().size() + graph->horizontalAxis()->minorValues().size());
    reportMedian(state, seconds, kTickLimit);
}
BENCHMARK(logarithmicTicks)->Iterations(300)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
