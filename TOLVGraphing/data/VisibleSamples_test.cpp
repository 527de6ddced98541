#include "VisibleSamples.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/ChangingSamples.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;
using testing_support::Generated;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::optional<IndexRange> rangeOf(TOLVGraphData::Samples x, double min, double max)
{
    return visibleSampleRange(*TOLVGraphData::graphDataWithX(std::move(x), nullptr, Color::blackColor()), min, max);
}

std::optional<IndexRange> rangeOf(std::vector<float> x, double min, double max)
{
    return rangeOf(TOLVRealVector::vectorWithComponents(std::move(x)), min, max);
}

TEST(VisibleSamples, TheFirstSampleIsTheEndWhenNoLaterOneIsInRange)
{
    EXPECT_EQ(rangeOf({1.0F, 5.0F, 9.0F}, 0.0, 2.0), (IndexRange{0, 1}));
    // It is never compared with the upper end.
    EXPECT_EQ(rangeOf({1.0F, 5.0F, 9.0F}, -5.0, 0.5), (IndexRange{0, 1}));
    EXPECT_EQ(rangeOf({7.0F}, 0.0, 2.0), (IndexRange{0, 1}));
}

TEST(VisibleSamples, ASeriesWhollyToTheLeftKeepsItsFullRange)
{
    EXPECT_EQ(rangeOf({1.0F, 5.0F, 9.0F}, 10.0, 20.0), (IndexRange{0, 3}));
    EXPECT_EQ(rangeOf({1.0F}, 10.0, 20.0), (IndexRange{0, 1}));
}

TEST(VisibleSamples, BetweenTwoSamplesThereIsNoRange)
{
    EXPECT_EQ(rangeOf({1.0F, 5.0F, 9.0F}, 5.25, 5.75), std::nullopt);
    EXPECT_EQ(rangeOf({1.0F, 5.0F, 9.0F}, 1.25, 4.0), std::nullopt);
    EXPECT_EQ(rangeOf({1.0F, 5.0F, 9.0F}, 5.25, 9.0), (IndexRange{2, 1}));
}

TEST(VisibleSamples, WithoutSamplesTheRangeIsEmpty)
{
    EXPECT_EQ(rangeOf(std::vector<float>(), 0.0, 1.0), (IndexRange{0, 0}));
    EXPECT_EQ(rangeOf(TOLVGraphData::Samples(), 0.0, 1.0), (IndexRange{0, 0}));
    EXPECT_EQ(rangeOf(std::make_shared<ChangingSamples>(std::vector<float>()), 0.0, 1.0), (IndexRange{0, 0}));
}

TEST(VisibleSamples, TheSamplesNeedNotBeAVector)
{
    EXPECT_EQ(rangeOf(std::make_shared<ChangingSamples>(std::vector<float>{1.0F, 2.0F, 3.0F, 4.0F}), 1.5, 3.5), (IndexRange{1, 2}));
}

TEST(VisibleSamples, TheOrdinatesPlayNoPart)
{
    const auto series = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({1.0F, 2.0F, 3.0F}), TOLVRealVector::vectorWithComponents({1.0F}), Color::blackColor());
    EXPECT_EQ(visibleSampleRange(*series, 0.0, 9.0), (IndexRange{0, 3}));
}

TEST(VisibleSamples, SamplesThatAreNoNumbersAreInNoRange)
{
    EXPECT_EQ(rangeOf({kNaN, 2.0F, kNaN, 4.0F, kNaN}, 0.0, 9.0), (IndexRange{1, 3}));
    EXPECT_EQ(rangeOf({kNaN, kNaN, kNaN}, 0.0, 9.0), (IndexRange{0, 1}));
    EXPECT_EQ(rangeOf({-kInfinity, 2.0F, kInfinity}, 0.0, 9.0), (IndexRange{1, 1}));
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(rangeOf({-kInfinity, 2.0F, kInfinity}, -infinity, infinity), (IndexRange{0, 3}));
}

TEST(VisibleSamples, OfAscendingAbscissaeThoseInRangeAreFound)
{
    Generated generated(4);
    for (int round = 0; round < 2000; ++round) {
        std::vector<float> x(2 + generated.whole(12));
        for (float& sample : x)
            sample = static_cast<float>(generated.whole(20));
        std::sort(x.begin(), x.end());
        const double min = 0.5 * static_cast<double>(generated.whole(44)) - 1.0;
        const double max = min + 0.5 * static_cast<double>(generated.whole(20));
        std::vector<std::size_t> inside;
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (static_cast<double>(x[i]) >= min && static_cast<double>(x[i]) <= max)
                inside.push_back(i);
        }
        // Where none is inside, the series lies to the left, to the right, or round the range.
        std::optional<IndexRange> expected;
        if (!inside.empty())
            expected = IndexRange{inside.front(), inside.size()};
        else if (static_cast<double>(x.back()) < min)
            expected = IndexRange{0, x.size()};
        else if (static_cast<double>(x.front()) > max)
            expected = IndexRange{0, 1};
        ASSERT_EQ(rangeOf(x, min, max), expected) << "round " << round << ", " << min << " to " << max;
    }
}

} // namespace
} // namespace TOLVGraphing
