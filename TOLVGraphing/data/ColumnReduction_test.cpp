#include "ColumnReduction.h"

#include <tests/support/PlainColumnReduction.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::plainlyReduced;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::vector<Point> reduced(const ColumnReduction& settings, const std::vector<float>& xs, const std::vector<float>& ys)
{
    TOLVCurve curve;
    settings.reduce(*TOLVRealVector::vectorWithComponents(xs), *TOLVRealVector::vectorWithComponents(ys), curve);
    const auto points = curve.path().points();
    return {points.begin(), points.end()};
}

void expectPlainPoints(const ColumnReduction& settings, const std::vector<float>& xs, const std::vector<float>& ys)
{
    const std::vector<Point> actual = reduced(settings, xs, ys);
    const std::vector<Point> expected = plainlyReduced(settings, xs, ys);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        ASSERT_EQ(toString(actual[i]), toString(expected[i])) << "vertex " << i;
}

ColumnReduction settingsFor(double width)
{
    ColumnReduction settings;
    settings.xMinimum = 0.0F;
    settings.xMaximum = 1.0F;
    settings.yMinimum = -1.0F;
    settings.yMaximum = 1.0F;
    settings.rect = Rect(12.25, 7.5, width, 93.75);
    return settings;
}

std::vector<float> ramp(std::size_t count, float from, float to)
{
    std::vector<float> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(from + (to - from) * static_cast<float>(i) / static_cast<float>(count));
    return values;
}

std::vector<float> noise(std::size_t count, unsigned long seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> distribution(-1.0F, 1.0F);
    std::vector<float> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(distribution(engine));
    return values;
}

TEST(ColumnReduction, GivesThePlainRulesPointsForEveryDensity)
{
    for (const std::size_t count : {1U, 2U, 3U, 10U, 99U, 100U, 101U, 1000U, 20000U}) {
        for (const double width : {0.0, 0.5, 1.0, 3.0, 100.0, 1000.0, 33.3}) {
            for (const bool closed : {false, true}) {
                SCOPED_TRACE(testing::Message() << count << " samples over " << width << " points, closed " << closed);
                ColumnReduction settings = settingsFor(width);
                settings.closed = closed;
                expectPlainPoints(settings, ramp(count, -0.1F, 1.1F), noise(count, 1));
            }
        }
    }
}

TEST(ColumnReduction, GivesThePlainRulesPointsForDamagedSamples)
{
    std::mt19937 engine(7);
    const float damage[] = {kNaN, kInfinity, -kInfinity, 0.0F, -5.0F, 3e38F, -3e38F, 1e-40F};
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        const std::size_t count = 1 + engine() % 300;
        std::vector<float> xs = ramp(count, -0.1F, 1.1F);
        std::vector<float> ys = noise(count, engine());
        for (std::size_t i = 0; i < 1 + count / 10; ++i) {
            ys[engine() % count] = damage[engine() % std::size(damage)];
            if (round % 2)
                xs[engine() % count] = damage[engine() % std::size(damage)];
        }
        ColumnReduction settings = settingsFor(static_cast<double>(1 + engine() % 60));
        settings.closed = engine() % 2;
        settings.xIsLog = engine() % 3 == 0;
        settings.yIsLog = engine() % 3 == 0;
        expectPlainPoints(settings, xs, ys);
    }
}

TEST(ColumnReduction, GivesThePlainRulesPointsForStrangeRangesAndRectangles)
{
    const std::vector<float> xs = ramp(500, -0.1F, 1.1F);
    const std::vector<float> ys = noise(500, 3);
    const float ends[] = {kNaN, kInfinity, -kInfinity, 0.0F, 1.0F, 0.5F, -1.0F, 3.4028235e38F};
    for (const float min : ends) {
        for (const float max : ends) {
            for (const double width : {-50.0, 0.0, 100.0, 1e9, 1e300}) {
                SCOPED_TRACE(testing::Message() << min << ", " << max << " over " << width);
                ColumnReduction settings = settingsFor(width);
                settings.xMinimum = min;
                settings.xMaximum = max;
                settings.closed = true;
                expectPlainPoints(settings, xs, ys);
                std::swap(settings.xMinimum, settings.yMinimum);
                std::swap(settings.xMaximum, settings.yMaximum);
                expectPlainPoints(settings, xs, ys);
            }
        }
    }
}

TEST(ColumnReduction, StartsBeforeTheFirstSampleInRangeOfUnsortedAbscissaeEvenInAReversedRange)
{
    // The sample without a position is the first that is not below the range; those before it would end the curve.
    const std::vector<float> xs = {5.0F, 6.0F, -8.0F, kNaN, 7.0F};
    const std::vector<float> ys(xs.size(), 0.5F);
    ColumnReduction settings = settingsFor(100.0);
    settings.xMinimum = 10.0F;
    settings.xMaximum = 0.0F;
    settings.closed = true;
    expectPlainPoints(settings, xs, ys);
    // Its position is no number, and neither is the end of the curve's lower edge.
    EXPECT_TRUE(reduced(settings, xs, ys).empty());
}

TEST(ColumnReduction, AColumnShowsItsTrueExtremesWhateverTheNumberOfSamples)
{
    // One spike up and one down in the same column among many samples.
    std::vector<float> xs = ramp(100000, 0.0F, 1.0F);
    std::vector<float> ys(xs.size(), 0.0F);
    ys[50200] = 1.0F;
    ys[50300] = -1.0F;
    ColumnReduction settings = settingsFor(100.0);
    settings.rect = Rect(0.0, 0.0, 100.0, 200.0);
    std::vector<double> heights;
    for (const Point& point : reduced(settings, xs, ys)) {
        if (point.y != 100.0)
            heights.push_back(point.y);
    }
    EXPECT_EQ(heights, (std::vector<double>{200.0, 0.0}));
}

TEST(ColumnReduction, VerticesAreBoundedByTheColumns)
{
    const ColumnReduction settings = settingsFor(250.0);
    const std::vector<Point> points = reduced(settings, ramp(200000, 0.0F, 1.0F), noise(200000, 9));
    EXPECT_LE(points.size(), 2U * 252U);
    EXPECT_GE(points.size(), 2U * 248U);
}

// Beyond 2^23 a single-precision position has no half points: neighbouring columns run together, and the first sample is no vertex of its own.
TEST(ColumnReduction, PositionsWithoutHalfPointsMergeIntoTheFirstColumn)
{
    ColumnReduction settings = settingsFor(4.0);
    settings.rect = Rect(16777216.0, 0.0, 4.0, 10.0);
    const std::vector<float> xs = {0.0F, 0.0F, 1.0F};
    const std::vector<float> ys = {0.0F, 1.0F, 0.0F};
    expectPlainPoints(settings, xs, ys);
    EXPECT_EQ(reduced(settings, xs, ys), (std::vector<Point>{{16777216.0, 5.0}, {16777216.0, 10.0}}));
}

// A mapped file may be written to by others after its numbers were looked through.
TEST(ColumnReduction, EndsWithinItsSamplesWhenTheyAreNotWhatTheyWere)
{
    std::mt19937 engine(5);
    const float changes[] = {kNaN, kInfinity, -kInfinity, 0.0F, 0.5F, 2.0F, -3.0F};
    for (int round = 0; round < 60; ++round) {
        const auto xs = std::make_shared<std::vector<float>>(ramp(TOLVRealVector::kLongStorage, 0.0F, 1.0F));
        const auto ys = std::make_shared<std::vector<float>>(noise(xs->size(), engine()));
        const auto x = TOLVRealVector::vectorWithStorage(xs, xs->data(), xs->size());
        const auto y = TOLVRealVector::vectorWithStorage(ys, ys->data(), ys->size());
        ColumnReduction settings = settingsFor(static_cast<double>(1 + engine() % 900));
        settings.xIsLog = round % 5 == 0;
        settings.yIsLog = round % 3 == 0;
        TOLVCurve before;
        settings.reduce(*x, *y, before);
        if (round % 4 == 0) {
            std::fill(xs->begin() + static_cast<std::ptrdiff_t>(engine() % xs->size()), xs->end(), 0.0F);
        } else {
            for (int i = 0; i < 2000; ++i) {
                (*xs)[engine() % xs->size()] = changes[engine() % std::size(changes)];
                (*ys)[engine() % ys->size()] = changes[engine() % std::size(changes)];
            }
            if (round % 2 == 0)
                xs->back() = changes[engine() % std::size(changes)];
        }
        TOLVCurve after;
        settings.reduce(*x, *y, after);
        EXPECT_LE(after.pointIdx(), 2 * xs->size() + 2);
        (void)y->getMaximum(nullptr, nullptr);
    }
}

} // namespace
} // namespace TOLVGraphing
