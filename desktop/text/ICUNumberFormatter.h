#pragma once

#include "TOLVGraphing/platform/text/NumberFormatter.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <string>

namespace TOLVGraphing {

/// The decimal style of a locale: its digits, its separators, its grouping, at most three fraction digits, halves to even. For "en_US" it writes what the base class writes.
/// NaN has no sign, a positive infinity has the locale's plus sign. Texts are UTF-8. An axis takes it as its formatter; it is not changed once it is made, and several threads may ask it.
class TOLV_EXPORT ICUNumberFormatter final : public NumberFormatter {
public:
    /// For a locale such as "de_CH" or "en-IN"; one that is not known reads as its language or as the root locale. An empty name is the process's own locale.
    /// Throws Exception "NumberFormatter" when there is no locale data at all.
    explicit ICUNumberFormatter(std::string locale);
    ~ICUNumberFormatter() override;
    /// An equal, independent formatter.
    ICUNumberFormatter(const ICUNumberFormatter& other);
    ICUNumberFormatter& operator=(const ICUNumberFormatter&) = delete;

    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;

    /// The locale as it was given; empty for the process's own.
    [[nodiscard]] const std::string& locale() const { return m_locale; }

private:
    struct Format;

    std::string m_locale;
    std::unique_ptr<Format> m_format;
};

} // namespace TOLVGraphing
