#pragma once

#include "TickNumberFormatter.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Writes one digit before the point and a power of ten in superscript: "2×10³", "1.5×10⁻⁹", "-3×10⁰". The sign of multiplication is U+00D7, the superscripts are U+2070,
/// U+00B9, U+00B2, U+00B3, U+2074 to U+2079 and the minus U+207B.
///
/// With an axis its ticks decide how many digits there are, as for AdaptiveNumberFormatter; without one, or where nothing is known of its ticks, at most six. There are no
/// trailing zeros. Zero, and what rounds to it, is "0" whatever its sign. NaN and infinities are written as in the decimal style. The text is UTF-8 and does not depend on the
/// process's locale.
class TOLV_EXPORT ScientificNumberFormatter final : public TickNumberFormatter {
public:
    /// For an axis, which is referred to weakly and looked at anew for each number; none is allowed.
    explicit ScientificNumberFormatter(std::weak_ptr<const TOLVAxis> axis = {});

    /// For the same axis.
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copyForAxis(std::weak_ptr<const TOLVAxis> axis) const override;

private:
    [[nodiscard]] std::string textOfDigits(const DecimalDigits& decimal) const override;
};

} // namespace TOLVGraphing
