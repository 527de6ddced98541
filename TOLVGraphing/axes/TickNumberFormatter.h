#pragma once

#include "../platform/text/NumberFormatter.h"
#include "TickSpacing.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

struct DecimalDigits;

/// What the formatters that look at an axis's ticks have in common: the ticks decide how many digits there are, and a subclass how they are written. Zero, and what rounds to it, is "0" whatever its sign. NaN and infinities are
/// written as in the decimal style. The text is UTF-8 and does not depend on the process's locale. As the axis is looked at, the thread that draws it is the one to ask from.
class TOLV_EXPORT TickNumberFormatter : public NumberFormatter {
public:
    /// The number's text, which is never missing. A number is narrowed to single precision to be looked for among the ticks.
    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const final;

    /// Weak. The axis whose ticks are looked at; null without one.
    [[nodiscard]] std::shared_ptr<const TOLVAxis> axis() const { return m_spacing.axis(); }
    /// A formatter of the same class and settings that looks at another axis, referred to weakly.
    [[nodiscard]] virtual std::shared_ptr<NumberFormatter> copyForAxis(std::weak_ptr<const TOLVAxis> axis) const = 0;

protected:
    /// For an axis, which is referred to weakly and looked at anew for each number; none is allowed.
    explicit TickNumberFormatter(std::weak_ptr<const TOLVAxis> axis);

    /// The digits of a number that nothing is known of the ticks around: at most six, unless a subclass knows better.
    [[nodiscard]] virtual DecimalDigits digitsWithoutTicks(double number) const;
    /// The text of digits that are not all zero, without a sign.
    [[nodiscard]] virtual std::string textOfDigits(const DecimalDigits& decimal) const = 0;

    /// What is known of the axis's ticks.
    [[nodiscard]] const TickSpacing& spacing() const { return m_spacing; }

private:
    TickSpacing m_spacing;
};

} // namespace TOLVGraphing
