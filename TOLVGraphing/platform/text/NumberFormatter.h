#pragma once

#include <TOLVMath/Export.h>

#include <memory>
#include <optional>
#include <string>

namespace TOLVGraphing {

/// Turns numbers into the texts that people read. The base class writes the decimal style: groups of three with ",", at most three fraction digits
/// (or as many as it is made with) and none that are not needed, halves rounded to even on the shortest digits of the double: 1234567.875 gives "1,234,567.875", 0.0625 gives "0.062".
/// NaN gives "NaN" whatever its sign, infinities "+∞" and "-∞"; a negative number that rounds to nothing gives "-0". The text is UTF-8 and does not depend
/// on the process's locale. Other styles are subclasses; a formatter is not changed once it is in use.
class TOLV_EXPORT NumberFormatter {
public:
    /// The decimal style with at most this many fraction digits, 0 to 18; numbers outside are limited to that.
    explicit NumberFormatter(int maximumFractionDigits = 3);
    virtual ~NumberFormatter();
    NumberFormatter(const NumberFormatter&) = default;
    NumberFormatter& operator=(const NumberFormatter&) = delete;

    /// The most digits behind the point that the decimal style writes.
    [[nodiscard]] int maximumFractionDigits() const { return m_maximumFractionDigits; }

    /// The number's text in UTF-8, or nothing when this formatter has none for it; the decimal style has one for every number. Single-precision values are widened by the caller. May be asked from several threads, unless a
    /// subclass says otherwise.
    [[nodiscard]] virtual std::optional<std::string> stringFromNumber(double number) const;
    /// An equal, independent formatter of the same class. Every subclass overrides it: axes keep copies, and the base's own would write the decimal style.
    [[nodiscard]] virtual std::shared_ptr<NumberFormatter> copy() const;

private:
    const int m_maximumFractionDigits;
};

/// The text that a formatter gives a value shown to people on an axis or in a callout: as `stringFromNumber`, but what would read as
/// minus zero ("-0") reads as zero.
[[nodiscard]] TOLV_EXPORT std::optional<std::string> labelTextFromNumber(const NumberFormatter& formatter, double number);

} // namespace TOLVGraphing
