#include "TickDigits.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TOLVGraphing {

namespace {

constexpr int kSignificantDigits = 6;
/// Parts of the distance between ticks, or of a tick that lies closer to zero. A tick is written this exactly,
constexpr double kWantedTolerance = 1.0 / 1000.0;
/// this exactly where floats are no finer (a step of 0.25 still has both its digits: 0.2 would be a fifth of the step away),
constexpr double kCoarsestTolerance = 1.0 / 6.0;
/// and never further away than this part of the distance, which keeps it apart from the next tick.
constexpr double kLastTolerance = 0.49;
/// Distances between floats may be a little short of the power of ten that they stand for; in powers of ten.
constexpr double kPlaceTolerance = 0.01;
/// Tick values are a rounded step times a whole number, rounded: they may be that part of themselves off, and a sum that should be zero that part of the distance.
constexpr double kNoise = static_cast<double>(std::numeric_limits<float>::epsilon());

/// The exponent of the power of ten that is not above a distance.
int placeOfDistance(double distance)
{
    return static_cast<int>(std::floor(std::log10(distance) + kPlaceTolerance));
}

double errorOfDigits(const DecimalDigits& decimal, double magnitude)
{
    return std::abs(valueOfDecimalDigits(decimal) - magnitude);
}

DecimalDigits roundedToPlace(DecimalDigits decimal, int place)
{
    roundDecimalDigits(decimal, decimal.exponent - place);
    return decimal;
}

/// The digits rounded to the first place from `place` down where that changes the magnitude by no more than the tolerance; all of them where there is none.
DecimalDigits roundedWithinTolerance(const DecimalDigits& decimal, double magnitude, int place, double tolerance)
{
    const int last = decimal.exponent - static_cast<int>(decimal.digits.size());
    for (; place > last; --place) {
        DecimalDigits rounded = roundedToPlace(decimal, place);
        if (errorOfDigits(rounded, magnitude) <= tolerance)
            return rounded;
    }
    return decimal;
}

DecimalDigits digitsOfTick(double magnitude, double distance)
{
    if (magnitude <= distance * kNoise)
        return {};
    // Where floats are hardly finer than the ticks, the nearest tick may seem to be closer than a step.
    const int place = placeOfDistance(distance) + 1;
    const double size = std::min(distance, magnitude);
    const double tolerance = std::clamp(magnitude * kNoise, size * kWantedTolerance, size * kCoarsestTolerance);
    DecimalDigits decimal = roundedWithinTolerance(shortestLabelDigits(magnitude), magnitude, place, tolerance);
    // The shortest digits of a float may stand in the middle between it and the next one.
    if (errorOfDigits(decimal, magnitude) > distance * kLastTolerance)
        decimal = roundedWithinTolerance(shortestDecimalDigits(magnitude), magnitude, place, distance * kLastTolerance);
    return decimal;
}

} // namespace

std::optional<DecimalDigits> digitsAmongTicks(double number, const TickSpacing& spacing)
{
    const auto resolution = spacing.resolutionForValue(number);
    if (!resolution)
        return std::nullopt;
    const double magnitude = std::abs(number);
    DecimalDigits decimal
        = resolution->isTick ? digitsOfTick(magnitude, resolution->distance) : roundedToPlace(shortestLabelDigits(magnitude), placeOfDistance(resolution->distance));
    removeTrailingZeros(decimal);
    return decimal;
}

DecimalDigits shortestLabelDigits(double number)
{
    const double magnitude = std::abs(number);
    const auto narrowed = static_cast<float>(magnitude);
    DecimalDigits decimal = static_cast<double>(narrowed) == magnitude ? shortestDecimalDigits(narrowed) : shortestDecimalDigits(magnitude);
    removeTrailingZeros(decimal);
    return decimal;
}

DecimalDigits significantDigits(double number)
{
    DecimalDigits decimal = shortestLabelDigits(number);
    roundDecimalDigits(decimal, kSignificantDigits);
    removeTrailingZeros(decimal);
    return decimal;
}

} // namespace TOLVGraphing
