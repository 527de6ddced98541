#pragma once

#include "TickNumberFormatter.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Writes as many digits as the ticks of an axis need and no trailing zeros: steps of 0.25 give "1,000,000.25" and "1,000,000.5". Two ticks never get the same text, and what
/// is written of a tick lies nearer to it than to any other. Values between ticks get about two digits more than ticks do, never more than their float has. Where nothing is
/// known of the ticks, the text is the shortest one that reads back as the same float (as the same double for a number that is no float).
///
/// The text is plain where that reads easily, with groups of three where the axis has numbers of five digits and more ("1980" is a year, "2,000" stands beside "10,000"), and scientific ("1.5×10⁻⁹", see ScientificNumberFormatter) for magnitudes from
/// 1e9 on and below 1e-5. On an evenly scaled axis the magnitude of the largest tick decides for all values, and ticks below 1e-3 that need more than six fraction digits are
/// scientific too; larger values beyond the ticks decide for themselves. On other axes, and without ticks, each value decides for itself.
///
/// Zero, and what rounds to it, is "0" whatever its sign. NaN and infinities are written as in the decimal style. The text is UTF-8 and does not depend on the process's
/// locale.
class TOLV_EXPORT AdaptiveNumberFormatter final : public TickNumberFormatter {
public:
    /// For an axis, which is referred to weakly and looked at anew for each number; none is allowed.
    explicit AdaptiveNumberFormatter(std::weak_ptr<const TOLVAxis> axis);

    /// For the same axis.
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copyForAxis(std::weak_ptr<const TOLVAxis> axis) const override;

private:
    /// The shortest digits that read back as the same float.
    [[nodiscard]] DecimalDigits digitsWithoutTicks(double number) const override;
    [[nodiscard]] std::string textOfDigits(const DecimalDigits& decimal) const override;
    /// The exponent is the one of the digits that the number is written with.
    [[nodiscard]] bool writesScientifically(int exponent) const;
    [[nodiscard]] std::string plainText(const DecimalDigits& decimal) const;
};

} // namespace TOLVGraphing
