// Long random walks of zooming, panning, fitting and drawing on every kind of axis: nothing hangs, ranges stay numbers, and the number of ticks follows the length of the axis.

#include "../support/InteractionWalk.h"

#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kSteps = 100'000;

/// The most ticks that an axis may have over its data area's length.
double mostTicks(const TOLVAxis& axis, double length)
{
    const double lines = std::max(length, 0.0) / 4.0;
    const auto* logarithmic = dynamic_cast<const TOLVLogarithmicAxis*>(&axis);
    if (!logarithmic) {
        // One to ten steps between major values, whose halves are listed however short the axis is. Where floats are as coarse as the steps, rounding shortens a step by up to a third.
        return std::max(1.5 * lines + 13.0, 36.0);
    }
    if (logarithmic->minorValuesDepth() == 2)
        return lines + 2.0;
    // Nine to a decade of the range.
    return axis.majorValues().empty() ? 9.0 : 9.0 * (std::log10(axis.extents()->max() / axis.extents()->min()) + 2.0);
}

void expectSoundTicks(const TOLVAxis& axis, double length)
{
    ASSERT_TRUE(std::isfinite(axis.extents()->min()) && std::isfinite(axis.extents()->max()));
    ASSERT_LE(static_cast<double>(axis.majorValues().size() + axis.minorValues().size()), mostTicks(axis, length))
        << axis.archiveClassName() << " " << toString(*axis.extents()) << " over " << length;
    for (const auto* values : {&axis.majorValues(), &axis.minorValues()}) {
        for (std::size_t i = 0; i < values->size(); ++i) {
            ASSERT_TRUE(std::isfinite((*values)[i])) << axis.archiveClassName() << " " << toString(*axis.extents()) << " over " << length << " value " << (*values)[i];
            ASSERT_TRUE(i == 0 || (*values)[i - 1] <= (*values)[i]) << "ticks do not descend";
        }
    }
}

class RandomInteraction : public testing::TestWithParam<WalkSetting> {};

TEST_P(RandomInteraction, keepsRangesAndTicksSound)
{
    NullContext context;
    const CurrentContextScope scope(context);
    InteractionWalk walk(GetParam());
    for (int step = 0; step < kSteps; ++step) {
        const Rect rect = walk.step();
        const Rect dataRect = walk.graph->dataRectInRect(rect);
        SCOPED_TRACE(step);
        ASSERT_NO_FATAL_FAILURE(expectSoundTicks(*walk.graph->horizontalAxis(), dataRect.width()));
        ASSERT_NO_FATAL_FAILURE(expectSoundTicks(*walk.graph->verticalAxis(), dataRect.height()));
        if (const auto categories = std::dynamic_pointer_cast<TOLVBarAxis>(walk.graph->horizontalAxis())) {
            ASSERT_LE(categories->dataPointCount(), InteractionWalk::kLongestSeries);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Axes, RandomInteraction, testing::ValuesIn(walkSettings()), [](const testing::TestParamInfo<WalkSetting>& setting) { return setting.param.name; });

} // namespace

} // namespace TOLVGraphing::testing_support
