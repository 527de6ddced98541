#include "TOLVLogarithmicMapping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace TOLVGraphing {
namespace {

constexpr float kSmallest = std::numeric_limits<float>::min();

TOLVLogarithmicMapping mappingOf(float minValue, float maxValue, float minPoint, float maxPoint)
{
    TOLVLogarithmicMapping mapping;
    mapping.setMinValue(minValue);
    mapping.setMaxValue(maxValue);
    mapping.setMinPoint(minPoint);
    mapping.setMaxPoint(maxPoint);
    return mapping;
}

TEST(TOLVLogarithmicMapping, MapsDecadesEvenly)
{
    const TOLVLogarithmicMapping mapping = mappingOf(1.0F, 1000.0F, 0.0F, 300.0F);
    EXPECT_EQ(mapping.pointForValue(1.0F), 0.0F);
    EXPECT_EQ(mapping.pointForValue(10.0F), 100.0F);
    EXPECT_EQ(mapping.pointForValue(100.0F), 200.0F);
    EXPECT_EQ(mapping.pointForValue(1000.0F), 300.0F);
    EXPECT_NEAR(mapping.valueForPoint(150.0F), 31.622776, 1e-4);
    EXPECT_NEAR(mapping.valueForPoint(100.0F), 10.0, 1e-5);
}

TEST(TOLVLogarithmicMapping, TheOrderOfSettingDoesNotMatter)
{
    std::array<int, 4> order = {0, 1, 2, 3};
    do {
        TOLVLogarithmicMapping mapping;
        for (const int property : order) {
            switch (property) {
            case 0: mapping.setMinValue(10.0F); break;
            case 1: mapping.setMaxValue(1000.0F); break;
            case 2: mapping.setMinPoint(100.0F); break;
            default: mapping.setMaxPoint(300.0F); break;
            }
        }
        EXPECT_EQ(mapping.pointForValue(100.0F), 200.0F);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(TOLVLogarithmicMapping, ZeroMapsAsTheSmallestNormalNumber)
{
    const TOLVLogarithmicMapping mapping = mappingOf(1.0F, 1000.0F, 20.0F, 320.0F);
    EXPECT_EQ(std::log10(0.0F + kSmallest), -37.929779052734375F);
    const float logMin = std::log10(1.0F + kSmallest);
    const float scale = (320.0F - 20.0F) / (std::log10(1000.0F + kSmallest) - logMin);
    EXPECT_EQ(mapping.pointForValue(0.0F), (-37.929779052734375F - logMin) * scale + 20.0F);
    EXPECT_LT(mapping.pointForValue(0.0F), -3000.0F);
}

TEST(TOLVLogarithmicMapping, NegativeValuesHaveNoPosition)
{
    const TOLVLogarithmicMapping mapping = mappingOf(1.0F, 1000.0F, 0.0F, 300.0F);
    for (const float value : {-1.0F, -1e-30F, -std::numeric_limits<float>::infinity()})
        EXPECT_TRUE(std::isnan(mapping.pointForValue(value))) << value;
}

TEST(TOLVLogarithmicMapping, ARangeFromZeroPressesTheDataToTheTop)
{
    const TOLVLogarithmicMapping mapping = mappingOf(0.0F, 1000.0F, 0.0F, 300.0F);
    EXPECT_EQ(mapping.pointForValue(0.0F), 0.0F);
    EXPECT_GT(mapping.pointForValue(1.0F), 270.0F);
}

TEST(TOLVLogarithmicMapping, AnEmptyOrUndefinedRangeMapsToTheLowPoint)
{
    EXPECT_EQ(mappingOf(5.0F, 5.0F, 20.0F, 320.0F).pointForValue(7.0F), 20.0F);
    EXPECT_FALSE(std::isfinite(mappingOf(5.0F, 5.0F, 20.0F, 320.0F).valueForPoint(100.0F)));
    // The logarithm of the negative end is NaN: so is every position.
    EXPECT_TRUE(std::isnan(mappingOf(-5.0F, 5.0F, 20.0F, 320.0F).pointForValue(7.0F)));
    EXPECT_EQ(mappingOf(5.0F, -5.0F, 20.0F, 320.0F).pointForValue(7.0F), 20.0F);
}

TEST(TOLVLogarithmicMapping, ACopyMapsToTheLowPointUntilAPropertyIsSet)
{
    const TOLVLogarithmicMapping mapping = mappingOf(1.0F, 1000.0F, 20.0F, 320.0F);
    const auto copy = mapping.copy();
    EXPECT_NE(dynamic_cast<TOLVLogarithmicMapping*>(copy.get()), nullptr);
    EXPECT_EQ(copy->minValue(), 1.0F);
    EXPECT_EQ(copy->maxValue(), 1000.0F);
    for (const float value : {1.0F, 10.0F, 1000.0F})
        EXPECT_EQ(copy->pointForValue(value), 20.0F);
    copy->setMinValue(1.0F);
    copy->setMaxValue(1000.0F);
    EXPECT_EQ(copy->pointForValue(10.0F), 120.0F);
}

} // namespace
} // namespace TOLVGraphing
