#include "TickSpacing.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing {
namespace {

using testing_support::axisWithTicks;
using testing_support::GraphWithAxis;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargestFloat = static_cast<double>(std::numeric_limits<float>::max());
constexpr double kSmallestFloat = static_cast<double>(std::numeric_limits<float>::denorm_min());

TEST(TickSpacing, KnowsNothingWithoutTwoTicks)
{
    EXPECT_FALSE(TickSpacing().resolutionForValue(1.0));
    EXPECT_FALSE(TickSpacing().span());
    const TOLVAxis::Values lists[] = {{}, {1.0}, {1.0, 1.0 + 1e-12}, {-0.0, 0.0}, {1e300, 1e301}, {-kInfinity, 1.0, kInfinity}, {kNaN}, {kNaN, kNaN, kNaN}};
    for (const TOLVAxis::Values& ticks : lists) {
        const auto axis = axisWithTicks(ticks);
        for (const double value : {0.0, 1.0, 2.0, -5.0}) {
            EXPECT_FALSE(TickSpacing(axis).resolutionForValue(value)) << ticks.size() << " ticks at " << value;
            EXPECT_FALSE(TickSpacing(axis).span()) << ticks.size();
        }
    }
}

TEST(TickSpacing, ForgetsAnAxisThatIsGone)
{
    auto axis = axisWithTicks({1.0, 2.0});
    const TickSpacing spacing(axis);
    EXPECT_TRUE(spacing.resolutionForValue(1.0));
    EXPECT_TRUE(spacing.span());
    axis.reset();
    EXPECT_FALSE(spacing.resolutionForValue(1.0));
    EXPECT_FALSE(spacing.span());
}

TEST(TickSpacing, LooksAtTheAxisAnew)
{
    const auto axis = axisWithTicks({1.0, 2.0});
    const TickSpacing spacing(axis);
    EXPECT_EQ(spacing.resolutionForValue(1.0)->distance, 1.0);
    axis->setMajorValues({1.0, 5.0});
    EXPECT_EQ(spacing.resolutionForValue(1.0)->distance, 4.0);
}

struct Case {
    double value;
    double distance;
    bool isTick;
};

void expectResolutions(const std::shared_ptr<TOLVAxis>& axis, const std::vector<Case>& cases)
{
    for (const Case& one : cases) {
        const auto found = TickSpacing(axis).resolutionForValue(one.value);
        ASSERT_TRUE(found) << one.value;
        EXPECT_EQ(found->distance, one.distance) << one.value;
        EXPECT_EQ(found->isTick, one.isTick) << one.value;
    }
}

TEST(TickSpacing, BothListsCountTogether)
{
    expectResolutions(axisWithTicks({0.0, 10.0, 100.0}, {2.0, 5.0, 8.0, 50.0}),
        {
            {0.0, 2.0, true},
            {-0.0, 2.0, true},
            {2.0, 2.0, true},
            {5.0, 3.0, true},
            {10.0, 2.0, true},
            {50.0, 40.0, true},
            {100.0, 50.0, true},
            // Between ticks a hundredth, outside of them the nearest pair's.
            {1.0, 0.02, false},
            {6.0, 0.03, false},
            {49.0, 0.4, false},
            {99.0, 0.5, false},
            {-1.0, 0.02, false},
            {-1e30, 0.02, false},
            {101.0, 0.5, false},
            {kLargestFloat, 0.5, false},
        });
}

TEST(TickSpacing, TicksThatAreOneFloatAreOneTick)
{
    expectResolutions(axisWithTicks({1.0, 1.0 + 1e-12, 1.0 + 2e-12, 4.0}, {1.0 + 3e-12, 3.0}),
        {
            {1.0, 2.0, true},
            {1.0 + 1e-13, 2.0, true},
            {3.0, 1.0, true},
            {4.0, 1.0, true},
            {0.0, 0.02, false},
        });
    EXPECT_EQ(TickSpacing(axisWithTicks({0.1, 0.25})).resolutionForValue(static_cast<double>(0.1F))->isTick, true);
}

TEST(TickSpacing, TicksThatAreNotFiniteDoNotCount)
{
    expectResolutions(axisWithTicks({-kInfinity, -1e300, 1.0, 3.0, 1e39, kInfinity}),
        {
            {1.0, 2.0, true},
            {3.0, 2.0, true},
            {0.0, 0.02, false},
            {4.0, 0.02, false},
        });
}

TEST(TickSpacing, TheEndsOfTheFloatsAreOrdinaryTicks)
{
    const double half = kLargestFloat / 2.0;
    expectResolutions(axisWithTicks({-kLargestFloat, 0.0, kSmallestFloat, half, kLargestFloat}),
        {
            {-kLargestFloat, kLargestFloat, true},
            {0.0, kSmallestFloat, true},
            {kSmallestFloat, kSmallestFloat, true},
            {kLargestFloat, half, true},
            {-1.0, kLargestFloat / 100.0, false},
        });
}

TEST(TickSpacing, NeighbouringFloatsFarFromTheOthersAreOneTick)
{
    const double twin = static_cast<double>(std::nextafter(11.0F, 12.0F));
    for (const bool majorIsBelow : {true, false}) {
        const auto axis = axisWithTicks({10.0, majorIsBelow ? 11.0 : twin, 12.0}, {10.5, majorIsBelow ? twin : 11.0, 11.5});
        expectResolutions(axis, {{11.0, 0.5, true}, {twin, twin - 10.5 < 0.5 ? twin - 10.5 : 11.5 - twin, true}, {11.5, 11.5 - twin, true}});
    }
    // At the end of the ticks too; but two ticks alone, or many that stand as close, are ticks of their own.
    expectResolutions(axisWithTicks({10.0, 11.0, twin}), {{11.0, 1.0, true}, {twin, twin - 10.0, true}});
    expectResolutions(axisWithTicks({11.0, twin}), {{11.0, twin - 11.0, true}, {twin, twin - 11.0, true}});
    const double third = static_cast<double>(std::nextafter(std::nextafter(11.0F, 12.0F), 12.0F));
    expectResolutions(axisWithTicks({11.0, twin, third}), {{11.0, twin - 11.0, true}, {twin, twin - 11.0, true}});
}

TEST(TickSpacing, NothingIsKnownOfValuesThatAreNoFiniteFloats)
{
    const auto axis = axisWithTicks({1.0, 2.0});
    for (const double value : {kNaN, kInfinity, -kInfinity, 1e39, -1e300})
        EXPECT_FALSE(TickSpacing(axis).resolutionForValue(value)) << value;
}

TEST(TickSpacing, ListsThatAreNotAscendingGiveSomeAnswer)
{
    const auto axis = axisWithTicks({5.0, 1.0, kNaN, 3.0, -2.0, kInfinity, 4.0}, {kNaN, 1.0, 0.0});
    for (const double value : {-3.0, 0.0, 1.0, 2.5, 4.0, 6.0}) {
        const auto found = TickSpacing(axis).resolutionForValue(value);
        EXPECT_TRUE(!found || (found->distance > 0.0 && std::isfinite(found->distance))) << value;
    }
}

TEST(TickSpacing, TheSpanTellsTheEndsAndTheirSpacing)
{
    const auto span = TickSpacing(axisWithTicks({-10.0, 0.0, 10.0}, {-5.0, 5.0, 14.0})).span();
    ASSERT_TRUE(span);
    EXPECT_EQ(span->smallest, -10.0);
    EXPECT_EQ(span->largest, 14.0);
    EXPECT_EQ(span->distance, 4.0);
    EXPECT_TRUE(span->isEven);
}

TEST(TickSpacing, LinearAxesAreEvenAndLogarithmicOnesOfSomeDecadesAreNot)
{
    GraphWithAxis<TOLVLinearAxis> linear;
    const double ranges[][2] = {{0.0, 1.0}, {3.0, 47.0}, {-1e-6, 1e-6}, {16777200.0, 16777230.0}, {1e6, 1e6 + 1.0}, {99.4, 151.0}, {-3.4e37, 3.4e37}, {0.0, 1e-44}};
    for (const auto& [min, max] : ranges) {
        linear.prepare(min, max);
        const auto span = TickSpacing(linear.axis()).span();
        ASSERT_TRUE(span) << min << " to " << max;
        EXPECT_TRUE(span->isEven) << min << " to " << max;
    }
    GraphWithAxis<TOLVLogarithmicAxis> logarithmic;
    const double decades[][2] = {{1.0, 1000.0}, {15.0, 4000.0}, {1e-9, 1e9}, {1e-45, 3e38}};
    for (const auto& [min, max] : decades) {
        for (const double width : {50.0, 5000.0}) {
            logarithmic.prepare(min, max, width);
            const auto span = TickSpacing(logarithmic.axis()).span();
            ASSERT_TRUE(span) << min << " to " << max;
            EXPECT_FALSE(span->isEven) << min << " to " << max;
        }
    }
    logarithmic.prepare(1.0, 10.0);
    EXPECT_TRUE(TickSpacing(logarithmic.axis()).span()->isEven);
}

TEST(TickSpacing, TicksOfALogarithmicAxisAreAsFarApartAsTheirDecadeSays)
{
    GraphWithAxis<TOLVLogarithmicAxis> graph;
    graph.prepare(1.0, 1000.0);
    expectResolutions(graph.axis(),
        {
            {1.0, 1.0, true},
            {10.0, 1.0, true},
            {20.0, 10.0, true},
            {100.0, 10.0, true},
            {1000.0, 100.0, true},
            {9.5, 0.01, false},
            {15.0, 0.1, false},
            {950.0, 1.0, false},
        });
}

} // namespace
} // namespace TOLVGraphing
