#include "ColorOperations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing {
namespace {

const Color kBlack(0.0, 0.0, 0.0);
const Color kWhite(1.0, 1.0, 1.0);
const Color kRed(1.0, 0.0, 0.0);
const Color kGreen(0.0, 1.0, 0.0);
const Color kBlue(0.0, 0.0, 1.0);
const Color kYellow(1.0, 1.0, 0.0);

TEST(ColorOperations, BlendsAreNotClampedAndKeepTheFirstAlpha)
{
    const Color a(0.75, 0.5, 0.25, 0.125);
    const Color b(0.5, 0.25, 1.0, 0.875);
    EXPECT_EQ(toString(linearBurn(a, b)), "(0.25, -0.25, 0.25, 0.125)");
    EXPECT_EQ(toString(linearDodge(a, b)), "(1.25, 0.75, 1.25, 0.125)");
    EXPECT_EQ(toString(multiply(a, b)), "(0.375, 0.125, 0.25, 0.125)");
}

TEST(ColorOperations, BrightColoursNeedADarkLabel)
{
    for (const Color& color : {kWhite, kYellow, kGreen})
        EXPECT_TRUE(needsDarkLabel(color)) << toString(color);
    for (const Color& color : {kBlack, kRed, kBlue})
        EXPECT_FALSE(needsDarkLabel(color)) << toString(color);
}

TEST(ColorOperations, TheAlphaPlaysNoPartInTheLuminance)
{
    EXPECT_TRUE(needsDarkLabel(Color(1.0, 1.0, 1.0, 0.0)));
    EXPECT_FALSE(needsDarkLabel(Color(0.0, 0.0, 0.0, 0.0)));
}

TEST(ColorOperations, NaNNeedsADarkLabel)
{
    EXPECT_TRUE(needsDarkLabel(Color(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0)));
}

TEST(ColorOperations, LuminanceOfExactlyOneHalfNeedsADarkLabel)
{
    const double green = std::nextafter(0.5 / 0.7152, 1.0);
    ASSERT_EQ(0.7152 * green, 0.5);
    EXPECT_TRUE(needsDarkLabel(Color(0.0, green, 0.0)));
    EXPECT_FALSE(needsDarkLabel(Color(0.0, std::nextafter(green, 0.0), 0.0)));
    EXPECT_TRUE(needsDarkLabel(Color::grayColor()));
}

TEST(ColorOperations, LabelsAreBlackOrWhite)
{
    EXPECT_EQ(appropriateLabelColor(kYellow), kBlack);
    EXPECT_EQ(appropriateLabelColor(kBlue), kWhite);
    EXPECT_EQ(appropriateLabelColor(Color(0.0, 0.0, 0.0, 0.25)).alphaComponent(), 1.0);
}

TEST(ColorOperations, SecondaryColourIsShiftedByOneHalfUnclamped)
{
    EXPECT_EQ(toString(appropriateSecondaryColor(kWhite)), "(0.5, 0.5, 0.5, 1)");
    EXPECT_EQ(toString(appropriateSecondaryColor(kBlack)), "(0.5, 0.5, 0.5, 1)");
    EXPECT_EQ(toString(appropriateSecondaryColor(kRed)), "(1.5, 0.5, 0.5, 1)");
    EXPECT_EQ(toString(appropriateSecondaryColor(kGreen)), "(-0.5, 0.5, -0.5, 1)");
    EXPECT_EQ(appropriateSecondaryColor(Color(1.0, 0.0, 0.0, 0.25)).alphaComponent(), 0.25);
}

TEST(ColorOperations, ReadsHexadecimalText)
{
    struct Case {
        const char* text;
        unsigned rgb;
    };
    const Case cases[] = {
        {"FF8000", 0xFF8000},
        {"0xff8000", 0xFF8000},
        {"0XFf8000", 0xFF8000},
        {"  \t\nff8000", 0xFF8000},
        {"1FF8000", 0xFF8000},
        {"FF8000 and more", 0xFF8000},
        {"FF80zz", 0xFF80},
        {"0", 0x000000},
        {"7", 0x000007},
        {"FFFFFFFF", 0xFFFFFF},
        {"123456789A", 0xFFFFFF},
        {"0x00000000000000000000000000FF8000", 0xFF8000},
        {"ffffffffffffffffffffffffffffffffffffffff", 0xFFFFFF},
    };
    for (const Case& one : cases) {
        const auto color = colorWithSRGBHexString(one.text, 0.5);
        ASSERT_TRUE(color) << one.text;
        EXPECT_EQ(color->redComponent(), ((one.rgb >> 16) & 255U) / 255.0) << one.text;
        EXPECT_EQ(color->greenComponent(), ((one.rgb >> 8) & 255U) / 255.0) << one.text;
        EXPECT_EQ(color->blueComponent(), (one.rgb & 255U) / 255.0) << one.text;
        EXPECT_EQ(color->alphaComponent(), 0.5) << one.text;
    }
}

TEST(ColorOperations, TextWithoutDigitsGivesNoColour)
{
    for (const char* text : {"", "   ", "#FF8000", "0x", "0X", "0xg", "x12", "g", "-1", "+1", " #1"})
        EXPECT_FALSE(colorWithSRGBHexString(text, 1.0)) << text;
}

} // namespace
} // namespace TOLVGraphing
