#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/axes/ScientificNumberFormatter.h>
#include <TOLVGraphing/platform/text/NumberFormatter.h>
#include <TOLVGraphing/platform/text/NumberText.h>

#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr int kMostFractionDigits = 18;

struct FormatCloser {
    void operator()(UNumberFormat* format) const { unum_close(format); }
};

/// ICU's decimal style with at most so many fraction digits.
std::string icuText(double number, int fractionDigits)
{
    static std::array<std::unique_ptr<UNumberFormat, FormatCloser>, kMostFractionDigits + 1> formats;
    auto& format = formats.at(static_cast<std::size_t>(fractionDigits));
    UErrorCode status = U_ZERO_ERROR;
    if (!format) {
        format.reset(unum_open(UNUM_DECIMAL, nullptr, 0, "en_US", nullptr, &status));
        require(U_SUCCESS(status) && format, "ICU has a format");
        unum_setAttribute(format.get(), UNUM_MAX_FRACTION_DIGITS, fractionDigits);
    }
    std::array<char16_t, 1024> units{};
    const int32_t length = unum_formatDouble(format.get(), number, units.data(), static_cast<int32_t>(units.size()), nullptr, &status);
    std::array<char, 4096> bytes{};
    u_strToUTF8(bytes.data(), static_cast<int32_t>(bytes.size()), nullptr, units.data(), length, &status);
    require(U_SUCCESS(status), "ICU has a text");
    return bytes.data();
}

void tryDecimal(double number, int fractionDigits)
{
    const auto text = NumberFormatter(fractionDigits).stringFromNumber(number);
    require(text.has_value(), "every number has a text");
    if (std::isnan(number))
        require(*text == "NaN", "NaN has no sign");
    else if (std::isinf(number))
        require(*text == (number < 0.0 ? "-\u221E" : "+\u221E"), "infinities have a sign");
    else
        require(*text == icuText(number, fractionDigits), "the text is ICU's");
}

/// A formatter without an axis writes at most some forty bytes, and the same for the negative number with a sign before it.
void tryShort(const NumberFormatter& formatter, double number)
{
    const auto text = formatter.stringFromNumber(number);
    const auto opposite = formatter.stringFromNumber(-number);
    require(text && opposite && !text->empty() && text->size() <= 40, "a short text");
    if (number > 0.0 && *text != "0" && std::isfinite(number))
        require(*opposite == "-" + *text, "a negative number has the positive one's text with a sign");
}

} // namespace

/// Number texts: the decimal style against ICU's, the others against what holds for all numbers.
Verdict tryInput(std::span<const std::byte> bytes)
{
    InputReader input(bytes);
    const int fractionDigits = static_cast<int>(input.below(kMostFractionDigits + 1));
    const double number = input.yes() ? input.interestingDouble() : static_cast<double>(input.number<float>());
    tryDecimal(number, fractionDigits);
    tryShort(SINumberFormatter(), number);
    tryShort(ScientificNumberFormatter(), number);
    tryShort(AdaptiveNumberFormatter(std::weak_ptr<const TOLVAxis>()), number);
    if (!std::isnan(number))
        require(std::strtod(shortestText(number).c_str(), nullptr) == number, "the shortest text reads back as the number");
    return std::isfinite(number) ? Verdict::accepted : Verdict::refused;
}

} // namespace TOLVGraphing::fuzzing
