#include "TOLVLinearMapping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TOLVLinearMapping mappingOf(float minValue, float maxValue, float minPoint, float maxPoint)
{
    TOLVLinearMapping mapping;
    mapping.setMinValue(minValue);
    mapping.setMaxValue(maxValue);
    mapping.setMinPoint(minPoint);
    mapping.setMaxPoint(maxPoint);
    return mapping;
}

TEST(TOLVLinearMapping, MapsBothWaysWithoutClamping)
{
    const TOLVLinearMapping mapping = mappingOf(0.0F, 10.0F, 100.0F, 300.0F);
    struct Case {
        float value;
        float point;
    };
    for (const Case& one : {Case{0.0F, 100.0F}, Case{5.0F, 200.0F}, Case{10.0F, 300.0F}, Case{-5.0F, 0.0F}, Case{20.0F, 500.0F}}) {
        EXPECT_EQ(mapping.pointForValue(one.value), one.point);
        EXPECT_EQ(mapping.valueForPoint(one.point), one.value);
    }
}

TEST(TOLVLinearMapping, MapsReversedRanges)
{
    EXPECT_EQ(mappingOf(10.0F, 0.0F, 100.0F, 300.0F).pointForValue(2.5F), 250.0F);
    EXPECT_EQ(mappingOf(0.0F, 10.0F, 300.0F, 100.0F).pointForValue(2.5F), 250.0F);
}

TEST(TOLVLinearMapping, AnEmptyOrNaNRangeMapsEverythingToTheLowPoint)
{
    for (const TOLVLinearMapping& mapping : {mappingOf(4.0F, 4.0F, 100.0F, 300.0F), mappingOf(0.0F, 0.0F, 100.0F, 300.0F)}) {
        for (const float value : {-1e30F, 0.0F, 4.0F, 5.0F})
            EXPECT_EQ(mapping.pointForValue(value), 100.0F);
        EXPECT_FALSE(std::isfinite(mapping.valueForPoint(200.0F)));
    }
    EXPECT_EQ(mappingOf(0.0F, kNaN, 100.0F, 300.0F).pointForValue(5.0F), 100.0F);
}

TEST(TOLVLinearMapping, MapsToTheLowPointBeforeARangeIsSet)
{
    TOLVLinearMapping mapping;
    EXPECT_EQ(mapping.pointForValue(7.0F), 0.0F);
    mapping.setMinPoint(3.0F);
    EXPECT_EQ(mapping.pointForValue(7.0F), 3.0F);
}

TEST(TOLVLinearMapping, TheOrderOfSettingDoesNotMatter)
{
    std::array<int, 4> order = {0, 1, 2, 3};
    do {
        TOLVLinearMapping mapping;
        for (const int property : order) {
            switch (property) {
            case 0: mapping.setMinValue(0.0F); break;
            case 1: mapping.setMaxValue(10.0F); break;
            case 2: mapping.setMinPoint(100.0F); break;
            default: mapping.setMaxPoint(300.0F); break;
            }
        }
        EXPECT_EQ(mapping.pointForValue(5.0F), 200.0F);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(TOLVLinearMapping, EachOperationIsRoundedToSinglePrecision)
{
    const TOLVLinearMapping mapping = mappingOf(0.1F, 0.7F, 10.3F, 97.9F);
    const float scale = (97.9F - 10.3F) / (0.7F - 0.1F);
    const float difference = 0.33F - 0.1F;
    const float product = difference * scale;
    EXPECT_EQ(mapping.pointForValue(0.33F), product + 10.3F);
}

TEST(TOLVLinearMapping, ACopyMapsToTheLowPointUntilAPropertyIsSet)
{
    const TOLVLinearMapping mapping = mappingOf(0.0F, 10.0F, 100.0F, 300.0F);
    const auto copy = mapping.copy();
    EXPECT_EQ(copy->minValue(), 0.0F);
    EXPECT_EQ(copy->maxValue(), 10.0F);
    EXPECT_EQ(copy->minPoint(), 100.0F);
    EXPECT_EQ(copy->maxPoint(), 300.0F);
    EXPECT_EQ(copy->pointForValue(5.0F), 100.0F);
    EXPECT_EQ(copy->pointForValue(10.0F), 100.0F);
    copy->setMaxPoint(300.0F);
    EXPECT_EQ(copy->pointForValue(5.0F), 200.0F);
    EXPECT_NE(dynamic_cast<TOLVLinearMapping*>(copy.get()), nullptr);
}

} // namespace
} // namespace TOLVGraphing
