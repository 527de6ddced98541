#include "DarkContext.h"

#include "../../data/SeriesColors.h"
#include "../text/AttributedString.h"
#include "RecordingContext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Lines = std::vector<std::string>;

Color colorFromBits(unsigned bits)
{
    return {static_cast<double>(bits >> 16 & 0xFFU) / 255.0, static_cast<double>(bits >> 8 & 0xFFU) / 255.0, static_cast<double>(bits & 0xFFU) / 255.0, 1.0};
}

double linear(double component)
{
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const Color& color)
{
    return 0.2126 * linear(color.redComponent()) + 0.7152 * linear(color.greenComponent()) + 0.0722 * linear(color.blueComponent());
}

/// From 1 to 21.
double contrast(const Color& first, const Color& second)
{
    const double one = luminance(first);
    const double other = luminance(second);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

struct Tone {
    double chroma = 0.0;
    /// In degrees.
    double hue = 0.0;
};

/// In the perceptual space with matrices written in three steps: linear light, cone responses, opponent colours.
Tone toneOf(const Color& color)
{
    const std::array<double, 3> light{linear(color.redComponent()), linear(color.greenComponent()), linear(color.blueComponent())};
    constexpr std::array<std::array<double, 3>, 3> kToCones{
        {{0.4122214708, 0.5363325363, 0.0514459929}, {0.2119034982, 0.6806995451, 0.1073969566}, {0.0883024619, 0.2817188376, 0.6299787005}}};
    std::array<double, 3> cones{};
    for (std::size_t i = 0; i < 3; ++i)
        cones[i] = std::cbrt(kToCones[i][0] * light[0] + kToCones[i][1] * light[1] + kToCones[i][2] * light[2]);
    const double a = 1.9779984951 * cones[0] - 2.4285922050 * cones[1] + 0.4505937099 * cones[2];
    const double b = 0.0259040371 * cones[0] + 0.7827717662 * cones[1] - 0.8086757660 * cones[2];
    return {std::hypot(a, b), std::atan2(b, a) * 180.0 / std::numbers::pi};
}

TEST(DarkContext, WhiteBecomesTheBackgroundAndBlackNearlyWhite)
{
    for (const unsigned bits : {0x1E1E1EU, 0x000000U, 0x1A1B26U, 0x2E3440U}) {
        const Color background = colorFromBits(bits);
        EXPECT_EQ(colorOnDarkGround(Color::whiteColor(), background), background) << bits;
        EXPECT_EQ(colorOnDarkGround(Color::blackColor(), background), Color::colorWithWhite(0.95)) << bits;
        // Close to the ends nothing jumps.
        const Color nearlyWhite = colorOnDarkGround(Color::colorWithWhite(1.0 - 1e-6), background);
        EXPECT_NEAR(nearlyWhite.redComponent(), background.redComponent(), 1e-4) << bits;
        EXPECT_NEAR(nearlyWhite.greenComponent(), background.greenComponent(), 1e-4) << bits;
        EXPECT_NEAR(nearlyWhite.blueComponent(), background.blueComponent(), 1e-4) << bits;
        EXPECT_NEAR(colorOnDarkGround(Color::colorWithWhite(1e-9), background).redComponent(), 0.95, 2e-3) << bits;
    }
}

TEST(DarkContext, TheUsualBackgroundIsADarkGrey)
{
    EXPECT_EQ(darkBackgroundColor(), colorFromBits(0x1E1E1E));
    RecordingContext target;
    EXPECT_EQ(DarkContext(target).background(), darkBackgroundColor());
}

TEST(DarkContext, GreysGetDarkerTheLighterTheyWereAndStayGrey)
{
    double former = 1.0;
    for (int i = 0; i <= 100; ++i) {
        const Color grey = colorOnDarkGround(Color::colorWithWhite(i / 100.0), darkBackgroundColor());
        EXPECT_NEAR(grey.redComponent(), grey.greenComponent(), 1e-6) << i;
        EXPECT_NEAR(grey.redComponent(), grey.blueComponent(), 1e-6) << i;
        EXPECT_LT(grey.greenComponent(), former) << i;
        former = grey.greenComponent();
    }
    EXPECT_EQ(former, 30.0 / 255.0);
}

TEST(DarkContext, LightGridLinesBecomeDarkAndFinerOnesDarkerStill)
{
    const Color major = colorOnDarkGround(Color::grayColor(), darkBackgroundColor());
    const Color minor = colorOnDarkGround(Color::lightGrayColor(), darkBackgroundColor());
    EXPECT_LT(major.redComponent(), 0.45);
    EXPECT_LT(minor.redComponent(), 0.32);
    EXPECT_GT(minor.redComponent(), darkBackgroundColor().redComponent() + 0.1);
}

TEST(DarkContext, SeriesColorsKeepTheirHueAndCanBeSeen)
{
    for (std::size_t i = 0; i < kSeriesColorCount; ++i) {
        const Color color = seriesColor(i);
        for (const unsigned ground : {0x000000U, 0x1E1E1EU, 0x2E2E2EU, 0x1A1B26U}) {
            const Color dark = colorOnDarkGround(color, colorFromBits(ground));
            EXPECT_GE(contrast(dark, colorFromBits(ground)), 3.0) << i << " on " << ground;
            if (toneOf(color).chroma < 0.01)
                continue;
            EXPECT_NEAR(toneOf(dark).hue, toneOf(color).hue, 0.5) << i << " on " << ground;
            // Most of the chroma is left.
            EXPECT_GT(toneOf(dark).chroma, 0.7 * toneOf(color).chroma) << i << " on " << ground;
            EXPECT_LT(toneOf(dark).chroma, toneOf(color).chroma + 1e-3) << i << " on " << ground;
        }
    }
}

TEST(DarkContext, EveryColorfulColorHasAContrastOfThreeToOne)
{
    constexpr int kSteps = 12;
    for (int red = 0; red <= kSteps; ++red) {
        for (int green = 0; green <= kSteps; ++green) {
            for (int blue = 0; blue <= kSteps; ++blue) {
                const Color color(red / double{kSteps}, green / double{kSteps}, blue / double{kSteps});
                if (toneOf(color).chroma < 0.1)
                    continue;
                for (const double grey : {0.0, 30.0 / 255.0, 0.2})
                    ASSERT_GE(contrast(colorOnDarkGround(color, Color::colorWithWhite(grey)), Color::colorWithWhite(grey)), 3.0) << toString(color) << " on " << grey;
            }
        }
    }
}

TEST(DarkContext, TextReadableOnItsBadgeStaysReadable)
{
    const Color ground = darkBackgroundColor();
    struct Pair {
        Color text;
        Color badge;
    };
    const Pair pairs[] = {
        {Color::whiteColor(), Color::blackColor()},
        {Color::blackColor(), Color::whiteColor()},
        {Color::whiteColor(), colorFromBits(0x0072B2)},
        {Color::blackColor(), colorFromBits(0xE69F00)},
        {Color::blackColor(), colorFromBits(0xFFFFCC)},
        {Color::whiteColor(), Color::darkGrayColor()},
    };
    for (const auto& [text, badge] : pairs)
        EXPECT_GE(contrast(colorOnDarkGround(text, ground), colorOnDarkGround(badge, ground)), 3.0) << toString(badge);
}

TEST(DarkContext, AlphaStays)
{
    for (const double alpha : {0.0, 0.25, 1.0, 1.5, -1.0}) {
        EXPECT_EQ(colorOnDarkGround(Color::colorWithWhite(1.0, alpha), darkBackgroundColor()), Color::colorWithWhite(30.0 / 255.0, alpha));
        EXPECT_EQ(colorOnDarkGround(Color::colorWithWhite(0.0, alpha), darkBackgroundColor()), Color::colorWithWhite(0.95, alpha));
        EXPECT_EQ(colorOnDarkGround(Color(0.9, 0.1, 0.2, alpha), darkBackgroundColor()).alphaComponent(), alpha);
    }
}

TEST(DarkContext, ComponentsOutOfRangeCountAsTheNearestAndNaNAsNone)
{
    const Color ground = darkBackgroundColor();
    EXPECT_EQ(colorOnDarkGround(Color(2.0, kInfinity, 1.5), ground), ground);
    EXPECT_EQ(colorOnDarkGround(Color(kNaN, -1.0, -kInfinity), ground), Color::colorWithWhite(0.95));
    EXPECT_EQ(colorOnDarkGround(Color(3.0, kNaN, 0.5), ground), colorOnDarkGround(Color(1.0, 0.0, 0.5), ground));
    EXPECT_EQ(colorOnDarkGround(Color::whiteColor(), Color(kNaN, 2.0, -1.0)), Color(0.0, 1.0, 0.0));
    // On any ground, also one that is not dark, components are those of a colour.
    for (const double grey : {0.0, 0.5, 1.0}) {
        for (std::size_t i = 0; i < kSeriesColorCount; ++i) {
            const Color color = colorOnDarkGround(seriesColor(i), Color::colorWithWhite(grey));
            EXPECT_EQ(color, color.clamped()) << i << " on " << grey;
        }
    }
}

TEST(DarkContext, ReplacesEveryColorAndPassesTheRest)
{
    RecordingContext target;
    DarkContext context(target, Color::colorWithWhite(0.125));
    const Lines initial{"fillColor (0.95, 0.95, 0.95, 1)", "strokeColor (0.95, 0.95, 0.95, 1)"};
    EXPECT_EQ(target.calls(), initial);
    target.clearCalls();
    context.saveState();
    context.setFillColor(Color::whiteColor());
    context.setFillColor(std::nullopt);
    context.setStrokeColor(Color::colorWithWhite(1.0, 0.5));
    context.setStrokeColor(std::nullopt);
    context.fill(Rect(0.0, 0.0, 1.0, 2.0), Color::whiteColor());
    context.drawText(AttributedString("plain"), {1.0, 2.0});
    context.drawText(AttributedString("Tj", {Font{"HelveticaNeue", 9.5}, Color::whiteColor()}), {3.0, 4.0});
    context.concatenateTransform({1.0, 0.0, 0.0, 1.0, 5.0, 6.0});
    context.setLineWidth(2.0);
    context.setLineDash({{1.0, 2.0}, 0.5});
    context.setLineCap(LineCap::Round);
    context.setLineJoin(LineJoin::Bevel);
    context.setMiterLimit(4.0);
    context.clipToPath(Path::pathWithRect({0.0, 0.0, 1.0, 1.0}), FillRule::EvenOdd);
    context.drawStrokedPath(Path::pathWithRect({0.0, 0.0, 1.0, 1.0}));
    context.restoreState();
    const Lines expected{"save", "fillColor (0.125, 0.125, 0.125, 1)", "fillColor (0.95, 0.95, 0.95, 1)", "strokeColor (0.125, 0.125, 0.125, 0.5)",
        "strokeColor (0.95, 0.95, 0.95, 1)", "fillColor (0.125, 0.125, 0.125, 1)", "fill M 0 0 L 1 0 L 1 2 L 0 2 Z", "text \"plain\" Helvetica 12 (0.95, 0.95, 0.95, 1) at (1, 2)",
        "text \"Tj\" HelveticaNeue 9.5 (0.125, 0.125, 0.125, 1) at (3, 4)", "transform [1 0 0 1 5 6]", "lineWidth 2", "lineDash 0.5 [1, 2]", "lineCap round", "lineJoin bevel",
        "miterLimit 4", "eoclip M 0 0 L 1 0 L 1 1 L 0 1 Z", "stroke M 0 0 L 1 0 L 1 1 L 0 1 Z", "restore"};
    EXPECT_EQ(target.calls(), expected);
}

} // namespace
} // namespace TOLVGraphing
