#pragma once

#include <string>

namespace TOLVGraphing {

/// The decimal digits of a number without its sign: value = 0.d1 d2 d3 ... x 10^exponent. This is what number formatters round and lay out; they write the sign themselves.
struct DecimalDigits {
    /// '0' to '9' only. Zero is no digits at all or only zeros, whatever the exponent.
    std::string digits;
    int exponent = 0;

    [[nodiscard]] bool operator==(const DecimalDigits&) const = default;
};

/// The fewest digits that read back as the same number, the nearest to it of those. The magnitude is finite and not negative. Zero is "0" with exponent 1.
[[nodiscard]] DecimalDigits shortestDecimalDigits(double magnitude);
[[nodiscard]] DecimalDigits shortestDecimalDigits(float magnitude);

/// Keeps the first `kept` digits (may be zero or negative: nothing is kept), rounding half to even on the digits at hand. A carry beyond the first digit raises the exponent and
/// leaves a zero more.
void roundDecimalDigits(DecimalDigits& decimal, int kept);
/// Zero loses all its digits.
void removeTrailingZeros(DecimalDigits& decimal);

/// The double nearest to the digits; infinity above the range of doubles.
[[nodiscard]] double valueOfDecimalDigits(const DecimalDigits& decimal);

/// "1,234.5": groups of three with ",", at most so many fraction digits, cut off behind them, and no trailing zeros.
[[nodiscard]] std::string groupedText(const DecimalDigits& decimal, int maximumFractionDigits);
/// "1.5×10⁻⁹": one digit before the point, all others behind it, without trailing zeros; zero is "0". The text is UTF-8.
[[nodiscard]] std::string scientificText(DecimalDigits decimal);

} // namespace TOLVGraphing
