// One kind of reduction a few times, for counting the instructions of ColumnReduction::reduce; see count-instructions beside this file.
//
//   reduction_instructions first|warm|log|plain SAMPLES

#include <TOLVGraphing/data/ColumnReduction.h>
#include <TOLVMath/TOLVRealVector.h>

#include "Noise.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

using namespace TOLVGraphing;

namespace {

using Vector = std::shared_ptr<const TOLVRealVector>;

/// A noisy sine above zero.
std::vector<float> ordinates(std::size_t count)
{
    std::vector<float> samples(count);
    benchmarking::Noise noise;
    for (std::size_t i = 0; i < count; ++i) {
        const double wave = 30.0 * std::sin(static_cast<double>(i) * 25.0 / static_cast<double>(count));
        samples[i] = static_cast<float>(81.0 + wave + 100.0 * (noise.next() - 0.5));
    }
    return samples;
}

std::vector<float> abscissae(std::size_t count, bool isSorted)
{
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<float>(1.0 + 999.0 * static_cast<double>(i) / static_cast<double>(count));
    // One sample out of order is enough to have each of them mapped.
    if (!isSorted && count > 1)
        std::swap(samples[0], samples[1]);
    return samples;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s first|warm|log|plain SAMPLES\n", argv[0]);
        return 2;
    }
    const std::string_view kind = argv[1];
    const auto count = static_cast<std::size_t>(std::atof(argv[2]));
    ColumnReduction settings;
    settings.xMinimum = 1.0F;
    settings.xMaximum = 1000.0F;
    settings.yMinimum = 1.0F;
    settings.yMaximum = 162.0F;
    settings.rect = {60.0, 20.0, 1520.0, 840.0};
    settings.xIsLog = settings.yIsLog = kind == "log";
    const Vector x = TOLVRealVector::vectorWithComponents(abscissae(count, kind != "plain"));
    const Vector y = TOLVRealVector::vectorWithComponents(ordinates(count));
    if (kind == "warm" || kind == "log") {
        (void)x->isAscending();
        (void)y->pyramidOfStorage(count);
    }
    TOLVCurve curve;
    settings.reduce(*x, *y, curve);
    std::printf("%u vertices\n", curve.pointIdx());
    return 0;
}
