#include "Color.h"

#include "CurrentContext.h"
#include "RecordingContext.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

using Lines = std::vector<std::string>;

TEST(Color, NamedColors)
{
    EXPECT_EQ(Color::blackColor(), Color(0.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(Color::whiteColor(), Color(1.0, 1.0, 1.0, 1.0));
    EXPECT_EQ(Color::grayColor(), Color(0.5, 0.5, 0.5, 1.0));
    EXPECT_EQ(Color::lightGrayColor(), Color(2.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0, 1.0));
    EXPECT_EQ(Color::darkGrayColor(), Color(1.0 / 3.0, 1.0 / 3.0, 1.0 / 3.0, 1.0));
    EXPECT_EQ(Color::colorWithWhite(0.25, 0.5), Color(0.25, 0.25, 0.25, 0.5));
    EXPECT_EQ(Color(), Color::blackColor());
}

TEST(Color, KeepsComponentsOutsideTheRangeUntilItIsPainted)
{
    const Color color = Color::colorWithRed(-0.5, 1.5, std::numeric_limits<double>::quiet_NaN(), 2.0);
    EXPECT_EQ(color.redComponent(), -0.5);
    EXPECT_EQ(color.greenComponent(), 1.5);
    EXPECT_EQ(color.alphaComponent(), 2.0);
    EXPECT_EQ(color.clamped(), Color(0.0, 1.0, 0.0, 1.0));
    EXPECT_EQ(Color(0.25, 0.5, 0.75, 0.125).clamped(), Color(0.25, 0.5, 0.75, 0.125));
}

TEST(Color, SetsFillAndStrokeOfTheCurrentContext)
{
    RecordingContext context;
    const Color color(0.25, 0.5, 1.0, 0.75);
    color.set();
    {
        const CurrentContextScope scope(context);
        color.set();
        color.setFill();
        color.setStroke();
    }
    EXPECT_EQ(context.calls(), (Lines{"fillColor (0.25, 0.5, 1, 0.75)", "strokeColor (0.25, 0.5, 1, 0.75)", "fillColor (0.25, 0.5, 1, 0.75)", "strokeColor (0.25, 0.5, 1, 0.75)"}));
}

TEST(Color, TextNamesAllComponents)
{
    EXPECT_EQ(toString(Color(0.1, 2.0, -1.0, 0.5)), "(0.1, 2, -1, 0.5)");
}

} // namespace
} // namespace TOLVGraphing
