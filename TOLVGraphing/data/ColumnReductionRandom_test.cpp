#include "ColumnReduction.h"

#include <tests/support/PlainColumnReduction.h>
#include <tests/support/ReductionCase.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>
#include <sstream>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ReductionCase;
using testing_support::ReductionSummaries;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kSmallestNormal = std::numeric_limits<float>::min();

/// Quick, and the same on every machine.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15U + 0x632BE59BD9B4E019U) { (void)next(); }

    std::uint64_t next()
    {
        m_state ^= m_state << 13U;
        m_state ^= m_state >> 7U;
        m_state ^= m_state << 17U;
        return m_state;
    }
    std::size_t below(std::size_t end) { return static_cast<std::size_t>((next() >> 20U) % end); }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    /// From 0 to below 1.
    double fraction() { return static_cast<double>(next() >> 11U) * 0x1p-53; }
    float between(double low, double high) { return static_cast<float>(low + (high - low) * fraction()); }
    /// Of any magnitude and either sign.
    float anyFinite()
    {
        while (true) {
            const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(next() >> 16U));
            if (std::isfinite(value))
                return value;
        }
    }
    /// A few representable numbers away.
    float nudged(float value, std::size_t most)
    {
        const float towards = oneIn(2) ? kInfinity : -kInfinity;
        for (std::size_t i = below(most + 1); i > 0; --i)
            value = std::nextafter(value, towards);
        return value;
    }

private:
    std::uint64_t m_state;
};

Rect randomRect(Dice& dice, std::size_t count)
{
    const double origins[] = {0.0, 12.25, 60.0, -33.5, 0.3, -0.0, 4194000.0, 4194304.0, 16777216.0, -4194304.5, 1e10, 3.4e38, 1e-42};
    const double origin = dice.oneIn(8) ? origins[dice.below(std::size(origins))] : static_cast<double>(dice.between(-50.0, 900.0));
    const double widths[] = {0.0, 0.5, 1.0, 2.0, 1e-42, 1e9, 3.4e38, 1e300};
    // Mostly so that a column has from a few samples to many.
    double width = static_cast<double>(count) / (4.0 + 80.0 * dice.fraction() * dice.fraction());
    if (dice.oneIn(12))
        width = widths[dice.below(std::size(widths))];
    if (dice.oneIn(8))
        width = std::floor(width);
    const double heights[] = {0.0, -250.0, 1e-42, 3.4e38, 1e7};
    double height = dice.oneIn(10) ? heights[dice.below(std::size(heights))] : static_cast<double>(dice.between(1.0, 900.0));
    double bottom = dice.oneIn(8) ? origins[dice.below(std::size(origins))] : static_cast<double>(dice.between(-50.0, 900.0));
    if (dice.oneIn(12)) {
        // Positions of a few representable numbers only, zeros of either sign among them.
        const double tinyHeights[] = {1e-42, -1e-42, 3e-44, -3e-44, 1e-40, -1e-40};
        height = tinyHeights[dice.below(std::size(tinyHeights))];
        bottom = dice.oneIn(3) ? 1e-43 : dice.oneIn(2) ? 0.0 : -0.0;
    }
    return {origin, bottom, dice.oneIn(8) ? -width : width, height};
}

std::vector<float> randomAbscissae(Dice& dice, std::size_t count, bool isLogarithmic)
{
    std::vector<float> xs(count);
    const double scales[] = {1.0, 1000.0, 1e-3, 1e7, 1e30, 1e-39, 6.28, 44100.0};
    const double scale = scales[dice.below(std::size(scales))];
    const double offset = isLogarithmic ? scale * 1e-3 : dice.oneIn(2) ? 0.0 : scale * static_cast<double>(dice.between(-3.0, 3.0));
    const auto kind = dice.below(8);
    const float base = static_cast<float>(offset + 0.5 * scale);
    for (std::size_t i = 0; i < count; ++i) {
        const double place = static_cast<double>(i) / static_cast<double>(count);
        switch (kind) {
        case 0: xs[i] = static_cast<float>(offset + scale * dice.fraction()); break;
        case 1: xs[i] = static_cast<float>(static_cast<double>(i / (1 + count / 40))); break; // long ties
        case 2: xs[i] = dice.nudged(base, 40); break;                                         // neighbours in single precision
        case 3: xs[i] = static_cast<float>(offset + scale * place * place * place); break;
        case 4: xs[i] = static_cast<float>(scale * std::pow(10.0, 5.0 * place)); break;
        case 5: xs[i] = static_cast<float>(offset + scale * (dice.oneIn(30) ? dice.fraction() : place < 0.5 ? 0.2 : 0.7)); break; // clusters
        default: xs[i] = static_cast<float>(offset + scale * place); break;
        }
    }
    if (dice.oneIn(30)) {
        for (float& x : xs)
            x = dice.anyFinite();
    }
    if (dice.oneIn(40))
        xs[dice.below(count)] = dice.oneIn(2) ? kInfinity : -kInfinity;
    std::sort(xs.begin(), xs.end());
    if (dice.oneIn(25)) {
        // Nearly ascending, or with a gap in it.
        const float values[] = {xs[dice.below(count)], kNaN, base};
        xs[dice.below(count)] = values[dice.below(std::size(values))];
    }
    return xs;
}

std::vector<float> randomOrdinates(Dice& dice, std::size_t count, bool isLogarithmic)
{
    std::vector<float> ys(count);
    const float special[] = {kNaN, kInfinity, -kInfinity, 0.0F, -0.0F, -kSmallestNormal, kSmallestNormal, kLargest, -kLargest, 1e-40F, -1e-40F, -1.2e-38F, -1.17e-38F};
    const float base = dice.oneIn(4) ? dice.anyFinite() : dice.between(-2.0, 2.0);
    const auto kind = dice.below(7);
    for (std::size_t i = 0; i < count; ++i) {
        switch (kind) {
        case 0: ys[i] = base; break;
        case 1: ys[i] = dice.nudged(base, 3); break; // maps to few positions
        case 2: ys[i] = dice.oneIn(2) ? base : -base; break;
        case 3: ys[i] = dice.oneIn(2) ? dice.nudged(base, 2) : dice.nudged(-base, 2); break;
        case 4: ys[i] = static_cast<float>(std::sin(static_cast<double>(i) * 0.05)) + dice.between(0.0, 0.01); break;
        case 5: ys[i] = dice.between(0.0, 1.0) * (dice.oneIn(20) ? 1e3F : 1.0F); break;
        default: ys[i] = dice.between(-1.0, 1.0); break;
        }
    }
    if (isLogarithmic && !dice.oneIn(3)) {
        for (float& y : ys)
            y = std::abs(y);
    }
    if (dice.oneIn(4)) {
        const std::size_t damaged = dice.oneIn(3) ? count / 2 : 1 + count / 30;
        for (std::size_t i = 0; i < damaged; ++i)
            ys[dice.below(count)] = special[dice.below(std::size(special))];
    }
    return ys;
}

/// Ranges around the samples, and some that have nothing to do with them.
void setRandomRange(Dice& dice, std::span<const float> samples, float& minimum, float& maximum, bool isAbscissa)
{
    Extremes extremes = extremesOf(samples);
    if (extremes.areOfNothing())
        extremes = {0.0F, 1.0F};
    minimum = extremes.minimum;
    maximum = extremes.maximum;
    const float special[] = {0.0F, 1.0F, -1.0F, kInfinity, -kInfinity, kLargest, -kLargest, 1e-42F, kNaN};
    switch (dice.below(isAbscissa ? 25 : 16)) {
    case 0:
        minimum = samples[dice.below(samples.size())];
        maximum = samples[dice.below(samples.size())];
        break;
    case 1: minimum = special[dice.below(std::size(special))]; break;
    case 2: maximum = special[dice.below(std::size(special))]; break;
    case 3:
        // Many samples' worth of room on a scale that maps neighbours to one position.
        minimum -= 3000.0F * (maximum - minimum) + 1.0F;
        maximum += 3.0F;
        break;
    case 4: std::swap(minimum, maximum); break;
    default: break;
    }
}

ReductionCase randomCase(Dice& dice)
{
    ReductionCase result;
    result.count = dice.oneIn(40) ? 200 + dice.below(3000) : 1 + dice.below(dice.oneIn(4) ? 300 : 60);
    ColumnReduction& settings = result.settings;
    settings.closed = dice.oneIn(3);
    settings.xIsLog = dice.oneIn(5);
    settings.yIsLog = dice.oneIn(3);
    settings.rect = randomRect(dice, result.count);
    const std::size_t before = dice.oneIn(2) ? 0 : dice.below(70);
    const std::size_t after = dice.oneIn(2) ? 0 : dice.below(70);
    result.xLocation = before;
    result.xStorage = randomAbscissae(dice, before + result.count + after, settings.xIsLog);
    result.yLocation = dice.oneIn(2) ? 0 : dice.below(70);
    result.yStorage = randomOrdinates(dice, result.yLocation + result.count + after, settings.yIsLog);
    setRandomRange(dice, result.xs(), settings.xMinimum, settings.xMaximum, true);
    setRandomRange(dice, result.ys(), settings.yMinimum, settings.yMaximum, false);
    result.hasTable = dice.oneIn(2);
    if (!dice.oneIn(3))
        result.blockShift = 4 + static_cast<unsigned>(dice.below(3));
    return result;
}

std::string description(const ReductionCase& one)
{
    const ColumnReduction& settings = one.settings;
    std::ostringstream text;
    text.precision(9);
    text << "rect " << toString(settings.rect) << ", x " << settings.xMinimum << " ... " << settings.xMaximum << (settings.xIsLog ? " log" : "") << ", y " << settings.yMinimum
         << " ... " << settings.yMaximum << (settings.yIsLog ? " log" : "") << (settings.closed ? ", closed" : "") << (one.hasTable ? ", table" : "") << ", blocks "
         << (one.blockShift ? static_cast<int>(*one.blockShift) : -1) << ", samples";
    for (std::size_t i = 0; i < std::min<std::size_t>(one.count, 100); ++i)
        text << " (" << one.xs()[i] << ", " << one.ys()[i] << ")";
    return text.str();
}

/// The number of cases, which the environment may raise for a long run.
std::size_t caseCount()
{
    constexpr std::size_t kUsual = 1'000'000;
    const char* wanted = std::getenv("TOLVGRAPHING_REDUCTION_CASES");
    return wanted ? static_cast<std::size_t>(std::atof(wanted)) : kUsual;
}

std::uint64_t firstSeed()
{
    const char* wanted = std::getenv("TOLVGRAPHING_REDUCTION_SEED");
    return wanted ? std::strtoull(wanted, nullptr, 10) : 1;
}

/// Every fourth of the cases, so that programs that run tests side by side share them.
class ColumnReductionRandom : public testing::TestWithParam<std::size_t> {};

TEST_P(ColumnReductionRandom, GivesThePlainRulesPointsToTheLastBit)
{
    const std::size_t cases = caseCount() / 4;
    std::size_t byColumns = 0;
    Dice dice(firstSeed() * 4 + GetParam());
    TOLVCurve curve;
    for (std::size_t i = 0; i < cases; ++i) {
        const ReductionCase one = randomCase(dice);
        const ReductionSummaries summaries(one);
        curve.reset();
        one.settings.reduce(summaries.series(), curve);
        byColumns += one.settings.goesByColumns(summaries.series()) ? 1U : 0U;
        const auto points = curve.path().points();
        const std::vector<Point> expected = testing_support::plainlyReduced(one.settings, one.xs(), one.ys());
        const bool isSame = points.size() == expected.size() && (expected.empty() || std::memcmp(points.data(), expected.data(), expected.size() * sizeof(Point)) == 0);
        ASSERT_TRUE(isSame) << "case " << i << ": " << points.size() << " points, expected " << expected.size() << "; " << description(one);
    }
    // The comparison is worth something only where the quick way is taken.
    EXPECT_GT(byColumns, cases * 2 / 5);
}

INSTANTIATE_TEST_SUITE_P(Quarter, ColumnReductionRandom, testing::Values(0, 1, 2, 3));

/// Larger values never have smaller logarithms on this machine, which the search for columns on logarithmic axes rests on. Neighbours are compared, in the ordinary run those around every 65,536th value and all around powers of ten and two.
TEST(ColumnReductionLogarithm, NeverDescends)
{
    const bool isLongRun = std::getenv("TOLVGRAPHING_REDUCTION_CASES") != nullptr;
    const std::uint32_t stride = isLongRun ? 1 : 65'536;
    constexpr std::uint32_t kNeighbours = 16;
    const auto logarithm = [](std::uint32_t bits) { return std::log10(std::bit_cast<float>(bits)); };
    const auto firstDescent = [&](std::uint32_t from, std::uint32_t end) {
        while (from < end && logarithm(from) <= logarithm(from + 1))
            ++from;
        return from;
    };
    constexpr std::uint32_t kInfinite = 0x7F800000;
    for (std::uint64_t bits = 0; bits < kInfinite; bits += stride) {
        const auto from = static_cast<std::uint32_t>(bits);
        const std::uint32_t end = std::min(from + (isLongRun ? 1 : kNeighbours), kInfinite);
        ASSERT_EQ(firstDescent(from, end), end) << std::bit_cast<float>(from);
    }
    for (int exponent = -37; exponent <= 38; ++exponent) {
        const auto place = std::bit_cast<std::uint32_t>(std::pow(10.0F, static_cast<float>(exponent)));
        ASSERT_EQ(firstDescent(place - 1000, place + 1000), place + 1000) << exponent;
    }
    for (int exponent = -125; exponent <= 126; ++exponent) {
        const auto place = std::bit_cast<std::uint32_t>(std::ldexp(1.0F, exponent));
        ASSERT_EQ(firstDescent(place - 1000, place + 1000), place + 1000) << exponent;
    }
}

} // namespace
} // namespace TOLVGraphing
