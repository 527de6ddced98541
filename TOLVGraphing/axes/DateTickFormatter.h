#pragma once

#include "../platform/text/NumberFormatter.h"
#include <TOLVMath/Export.h>

#include <memory>

namespace TOLVGraphing {

class TOLVAxis;
class TOLVDateAxis;

/// Writes the values of an axis of dates. Ticks are written as short as the axis's step allows: years "2026", months "2026-03", days "2026-03-01", times "10:30", seconds "10:30:15", parts of a second "10:30:15.25", without zeros at the end. Of ticks
/// with times, the first major one (the first minor one where there is no major one) has the date before it, "2026-03-01 10:30", and one at midnight is the date alone. Ticks that a host has set are written so where they stand at multiples of the step.
///
/// Every other value is written with date and time, "2026-03-01 10:30:15.25", to a tenth of the shorter step or somewhat finer: the date alone where that is a day or more, else to the minute, to the second, or with as many digits of the second as it takes. No second, and no digit
/// of one, is written that is shorter than the distance of neighbouring floats. Where the major ticks are days or longer, midnight is the date alone.
///
/// Before the axis's first preparation, and where it has no step, the texts are those of DayDateFormatter with the axis's origin; without an axis, or with one of another class, those of a DayDateFormatter without an origin. What lies outside the years 0 to 9999 or is not
/// finite is written in decimal style. The axis is referred to weakly and looked at anew for each number, which takes a time logarithmic in the number of ticks; the thread that draws it is the one to ask from. Texts are ASCII and do not depend on the process's locale.
class TOLV_EXPORT DateTickFormatter final : public NumberFormatter {
public:
    /// For an axis, which is referred to weakly; none is allowed.
    explicit DateTickFormatter(std::weak_ptr<const TOLVAxis> axis);

    /// The text of days since the axis's origin, which is never missing. A number is narrowed to single precision to be looked for among the ticks, and a tick is written as what it was before it was narrowed.
    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const override;
    /// For the same axis.
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;

    /// Weak. The axis whose ticks are looked at; null without one.
    [[nodiscard]] std::shared_ptr<const TOLVAxis> axis() const { return m_axis.lock(); }

private:
    [[nodiscard]] static std::optional<std::string> textOfTick(const TOLVDateAxis& axis, double number);
    [[nodiscard]] static std::optional<std::string> wholeText(const TOLVDateAxis& axis, double number);

    std::weak_ptr<const TOLVAxis> m_axis;
};

} // namespace TOLVGraphing
