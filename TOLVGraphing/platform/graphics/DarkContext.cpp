#include "DarkContext.h"

#include "../text/AttributedString.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

/// The grey that black becomes.
constexpr double kBrightestGrey = 0.95;
/// From this chroma on a colour is colourful: it never becomes as dark as the background.
constexpr double kColorfulChroma = 0.1;
/// The contrast that the lightest colourful colours aim at. Luminance and lightness differ a little by hue, so it is more than what is promised.
constexpr double kColorfulContrast = 3.1;
/// How far outside sRGB a component may lie before the chroma is lowered.
constexpr double kGamutTolerance = 1e-4;

/// Lightness from 0 to 1, green to red, blue to yellow.
struct Lab {
    double lightness = 0.0;
    double a = 0.0;
    double b = 0.0;

    [[nodiscard]] double chroma() const { return std::hypot(a, b); }
};

struct LinearColor {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    [[nodiscard]] double luminance() const { return 0.2126 * red + 0.7152 * green + 0.0722 * blue; }
    [[nodiscard]] bool isInGamut() const
    {
        const auto [low, high] = std::minmax({red, green, blue});
        return low >= -kGamutTolerance && high <= 1.0 + kGamutTolerance;
    }
};

double linearComponent(double encoded)
{
    return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

double encodedComponent(double linear)
{
    const double limited = std::clamp(linear, 0.0, 1.0);
    return limited <= 0.0031308 ? 12.92 * limited : 1.055 * std::pow(limited, 1.0 / 2.4) - 0.055;
}

LinearColor linearColor(const Color& color)
{
    return {linearComponent(color.redComponent()), linearComponent(color.greenComponent()), linearComponent(color.blueComponent())};
}

Lab labOf(const LinearColor& color)
{
    const double l = std::cbrt(0.4122214708 * color.red + 0.5363325363 * color.green + 0.0514459929 * color.blue);
    const double m = std::cbrt(0.2119034982 * color.red + 0.6806995451 * color.green + 0.1073969566 * color.blue);
    const double s = std::cbrt(0.0883024619 * color.red + 0.2817188376 * color.green + 0.6299787005 * color.blue);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s, 1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s, 0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

double cubed(double number)
{
    return number * number * number;
}

LinearColor linearColor(const Lab& lab)
{
    const double l = cubed(lab.lightness + 0.3963377774 * lab.a + 0.2158037573 * lab.b);
    const double m = cubed(lab.lightness - 0.1055613458 * lab.a - 0.0638541728 * lab.b);
    const double s = cubed(lab.lightness - 0.0894841775 * lab.a - 1.2914855480 * lab.b);
    return {
        4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s, -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s, -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

/// The lightness that a colour of full lightness and this chroma becomes.
double darkestLightness(double chroma, const LinearColor& ground, double brightest)
{
    const double groundLightness = labOf(ground).lightness;
    // The lightness of the grey with the contrast: luminance is its cube.
    const double readable = std::min(std::cbrt(kColorfulContrast * (ground.luminance() + 0.05) - 0.05), brightest);
    const double part = std::min(chroma / kColorfulChroma, 1.0);
    const double smoothPart = part * part * (3.0 - 2.0 * part);
    return groundLightness + (std::max(readable, groundLightness) - groundLightness) * smoothPart;
}

/// The colour, or the most colourful one of its lightness and hue that sRGB has.
LinearColor inGamut(const Lab& lab)
{
    constexpr int kHalvings = 30;
    const auto withChroma = [&lab](double part) { return linearColor(Lab{lab.lightness, lab.a * part, lab.b * part}); };
    if (withChroma(1.0).isInGamut())
        return withChroma(1.0);
    double inside = 0.0;
    double outside = 1.0;
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = 0.5 * (inside + outside);
        (withChroma(middle).isInGamut() ? inside : outside) = middle;
    }
    return withChroma(inside);
}

} // namespace

Color colorOnDarkGround(const Color& color, const Color& background)
{
    const double alpha = color.alphaComponent();
    const Color opaque = color.clamped().colorWithAlphaComponent(1.0);
    const Color ground = background.clamped();
    // The ends are exact.
    if (opaque == Color::whiteColor())
        return ground.colorWithAlphaComponent(alpha);
    if (opaque == Color::blackColor())
        return Color::colorWithWhite(kBrightestGrey, alpha);
    const Lab lab = labOf(linearColor(opaque));
    const LinearColor linearGround = linearColor(ground);
    const Lab groundLab = labOf(linearGround);
    const double brightest = labOf(linearColor(Color::colorWithWhite(kBrightestGrey))).lightness;
    const double darkest = darkestLightness(lab.chroma(), linearGround, brightest);
    // A background that is not grey lends its tint to what comes near to it.
    const double tint = lab.lightness * (1.0 - std::min(lab.chroma() / kColorfulChroma, 1.0));
    const LinearColor result = inGamut({brightest + (darkest - brightest) * lab.lightness, lab.a + groundLab.a * tint, lab.b + groundLab.b * tint});
    return {encodedComponent(result.red), encodedComponent(result.green), encodedComponent(result.blue), alpha};
}

DarkContext::DarkContext(DrawingContext& target, const Color& background) : ForwardingContext(target), m_background(background.clamped().colorWithAlphaComponent(1.0))
{
    target.setFillColor(counterpart(std::nullopt));
    target.setStrokeColor(counterpart(std::nullopt));
}

Color DarkContext::counterpart(const std::optional<Color>& color) const
{
    return colorOnDarkGround(color.value_or(Color::blackColor()), m_background);
}

void DarkContext::setFillColor(const std::optional<Color>& color)
{
    target().setFillColor(counterpart(color));
}

void DarkContext::setStrokeColor(const std::optional<Color>& color)
{
    target().setStrokeColor(counterpart(color));
}

void DarkContext::drawText(const AttributedString& text, Point origin)
{
    AttributedString recolored = text;
    recolored.setForegroundColor(counterpart(text.attributes().foregroundColor));
    target().drawText(recolored, origin);
}

} // namespace TOLVGraphing
