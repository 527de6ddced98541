#include "SeriesColors.h"

#include <gtest/gtest.h>

using namespace TOLVGraphing;

namespace {

TEST(SeriesColors, FirstIsBlueAndTheyBeginAgainAfterTheLast)
{
    EXPECT_EQ(seriesColor(0), Color(0.0, 0x72 / 255.0, 0xB2 / 255.0));
    EXPECT_EQ(seriesColor(6), Color::blackColor());
    EXPECT_EQ(seriesColor(kSeriesColorCount), seriesColor(0));
    EXPECT_EQ(seriesColor(3 * kSeriesColorCount + 2), seriesColor(2));
}

TEST(SeriesColors, AllDiffer)
{
    for (std::size_t i = 0; i < kSeriesColorCount; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(seriesColor(i), seriesColor(j)) << i << " " << j;
    }
}

} // namespace
