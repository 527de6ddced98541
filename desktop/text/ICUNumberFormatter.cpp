#include "ICUNumberFormatter.h"

#include "TOLVGraphing/platform/foundation/Exception.h"

#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

std::string utf8(const std::u16string& text)
{
    // A UTF-16 unit needs at most three bytes.
    std::string bytes(text.size() * 3 + 1, '\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8(bytes.data(), static_cast<int32_t>(bytes.size()), &length, text.data(), static_cast<int32_t>(text.size()), &status);
    bytes.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

} // namespace

struct ICUNumberFormatter::Format {
    struct Closer {
        void operator()(UNumberFormat* opened) const { unum_close(opened); }
    };

    std::unique_ptr<UNumberFormat, Closer> format;
    std::u16string plusSign;
};

ICUNumberFormatter::ICUNumberFormatter(std::string locale) : m_locale(std::move(locale)), m_format(std::make_unique<Format>())
{
    UErrorCode status = U_ZERO_ERROR;
    m_format->format.reset(unum_open(UNUM_DECIMAL, nullptr, 0, m_locale.empty() ? nullptr : m_locale.c_str(), nullptr, &status));
    if (U_FAILURE(status) || !m_format->format)
        throw Exception("NumberFormatter", "no number format for the locale \"" + m_locale + "\": " + u_errorName(status));
    char16_t sign[32];
    const int32_t length = unum_getSymbol(m_format->format.get(), UNUM_PLUS_SIGN_SYMBOL, sign, 32, &status);
    m_format->plusSign = U_SUCCESS(status) && length <= 32 ? std::u16string(sign, static_cast<std::size_t>(length)) : u"+";
}

ICUNumberFormatter::ICUNumberFormatter(const ICUNumberFormatter& other) : ICUNumberFormatter(other.m_locale) {}

ICUNumberFormatter::~ICUNumberFormatter() = default;

std::optional<std::string> ICUNumberFormatter::stringFromNumber(double number) const
{
    if (std::isnan(number))
        number = std::abs(number);
    // The longest text has 309 digits and a separator for every three, or two, of them.
    std::u16string text(512, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = unum_formatDouble(m_format->format.get(), number, text.data(), static_cast<int32_t>(text.size()), nullptr, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        text.resize(static_cast<std::size_t>(length));
        status = U_ZERO_ERROR;
        length = unum_formatDouble(m_format->format.get(), number, text.data(), length, nullptr, &status);
    }
    if (U_FAILURE(status))
        return std::nullopt;
    text.resize(static_cast<std::size_t>(length));
    if (std::isinf(number) && number > 0.0)
        text = m_format->plusSign + text;
    return utf8(text);
}

std::shared_ptr<NumberFormatter> ICUNumberFormatter::copy() const
{
    return std::make_shared<ICUNumberFormatter>(*this);
}

} // namespace TOLVGraphing
