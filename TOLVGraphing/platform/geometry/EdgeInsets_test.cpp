#include "EdgeInsets.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

TEST(EdgeInsets, StartAtZero)
{
    EXPECT_EQ(EdgeInsets(), (EdgeInsets{0.0, 0.0, 0.0, 0.0}));
}

TEST(EdgeInsets, CompareByAllFourDistances)
{
    const EdgeInsets insets{1.0, 2.0, 3.0, 4.0};
    EXPECT_EQ(insets, (EdgeInsets{1.0, 2.0, 3.0, 4.0}));
    EXPECT_NE(insets, (EdgeInsets{0.0, 2.0, 3.0, 4.0}));
    EXPECT_NE(insets, (EdgeInsets{1.0, 0.0, 3.0, 4.0}));
    EXPECT_NE(insets, (EdgeInsets{1.0, 2.0, 0.0, 4.0}));
    EXPECT_NE(insets, (EdgeInsets{1.0, 2.0, 3.0, 0.0}));
}

TEST(EdgeInsets, TextNamesTopLeftBottomRight)
{
    EXPECT_EQ(toString(EdgeInsets{1.0, 2.5, -3.0, 0.1}), "(1, 2.5, -3, 0.1)");
}

} // namespace
} // namespace TOLVGraphing
