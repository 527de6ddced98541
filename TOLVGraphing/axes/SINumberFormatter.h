#pragma once

#include "TickNumberFormatter.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Writes thousands as prefixes, without a space: "20", "200", "2k", "1.5M", "20µ". The prefixes are f, p, n, µ (U+00B5), m, none, k, M, G, T, P and E; magnitudes below 1e-15
/// and from 1e21 on are scientific ("2×10²¹", see ScientificNumberFormatter). What rounds up to the next prefix is written with it: 999.9999 is "1k".
///
/// With an axis its ticks decide how many digits there are, as for AdaptiveNumberFormatter; without one, or where nothing is known of its ticks, at most six. There are no
/// trailing zeros. Zero, and what rounds to it, is "0" whatever its sign. NaN and infinities are written as in the decimal style. The text is UTF-8 and does not depend on the
/// process's locale.
class TOLV_EXPORT SINumberFormatter final : public TickNumberFormatter {
public:
    /// For an axis, which is referred to weakly and looked at anew for each number; none is allowed.
    explicit SINumberFormatter(std::weak_ptr<const TOLVAxis> axis = {});

    /// For the same axis.
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copyForAxis(std::weak_ptr<const TOLVAxis> axis) const override;

private:
    [[nodiscard]] std::string textOfDigits(const DecimalDigits& decimal) const override;
};

} // namespace TOLVGraphing
