#include "TOLVMapping.h"

#include "../platform/foundation/Exception.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

TEST(TOLVMapping, StartsAtZero)
{
    const TOLVMapping mapping;
    EXPECT_EQ(mapping.minValue(), 0.0F);
    EXPECT_EQ(mapping.maxValue(), 0.0F);
    EXPECT_EQ(mapping.minPoint(), 0.0F);
    EXPECT_EQ(mapping.maxPoint(), 0.0F);
}

TEST(TOLVMapping, ConvertsNothingItself)
{
    const TOLVMapping mapping;
    const auto expectInterfaceMethod = [](auto convert) {
        try {
            convert();
            ADD_FAILURE() << "no exception";
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.name(), "InterfaceMethod");
            EXPECT_EQ(exception.reason(), "Trying to call interface method directly");
        }
    };
    expectInterfaceMethod([&] { (void)mapping.pointForValue(1.0F); });
    expectInterfaceMethod([&] { (void)mapping.valueForPoint(1.0F); });
}

TEST(TOLVMapping, CopyHasTheFourRangeNumbers)
{
    TOLVMapping mapping;
    mapping.setMinValue(1.0F);
    mapping.setMaxValue(2.0F);
    mapping.setMinPoint(3.0F);
    mapping.setMaxPoint(4.0F);
    const auto copy = mapping.copy();
    mapping.setMinValue(9.0F);
    EXPECT_EQ(copy->minValue(), 1.0F);
    EXPECT_EQ(copy->maxValue(), 2.0F);
    EXPECT_EQ(copy->minPoint(), 3.0F);
    EXPECT_EQ(copy->maxPoint(), 4.0F);
}

} // namespace
} // namespace TOLVGraphing
