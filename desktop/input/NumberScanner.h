#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace TOLVGraphing::input {

/// The float nearest to the decimal text [begin, end), which has the form that scanNumber() accepts. Slow and always right: beyond the
/// range of float the result is an infinity, below it a zero, with the text's sign.
[[nodiscard]] float exactNumber(const char* begin, const char* end, char decimalMark);

namespace detail {

inline bool isDigit(char character)
{
    return static_cast<unsigned char>(character - '0') < 10;
}

inline constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Scans `e+05` and its like behind the digits. Returns null where the digits are missing.
inline const char* scanExponent(const char* position, int& exponent)
{
    bool isNegative = *position == '-';
    if (*position == '-' || *position == '+')
        ++position;
    if (!isDigit(*position))
        return nullptr;
    int value = 0;
    for (; isDigit(*position); ++position)
        value = value < 100000 ? value * 10 + (*position - '0') : value;
    exponent += isNegative ? -value : value;
    return position;
}

} // namespace detail

/// Scans a decimal number: an optional sign, digits with at most one decimal mark (at least one digit; a decimal comma needs a digit behind
/// it), an optional exponent after e, E, d or D. Leading zeros are allowed, blanks and separators of thousands are not.
///
/// The text must be followed by a byte that cannot continue a number, such as a separator, a line end or NUL; no bound is looked at.
/// `value` is the float nearest to the decimal number. Returns the position behind the number, or null where there is none.
inline const char* scanNumber(const char* position, char decimalMark, float& value)
{
    using detail::isDigit;
    const char* begin = position;
    bool isNegative = *position == '-';
    if (isNegative || *position == '+')
        ++position;
    std::uint64_t digits = 0;
    const char* digitsBegin = position;
    for (; isDigit(*position); ++position)
        digits = digits * 10 + static_cast<std::uint64_t>(*position - '0');
    std::ptrdiff_t digitCount = position - digitsBegin;
    int exponent = 0;
    if (*position == decimalMark) {
        const char* fractionBegin = ++position;
        for (; isDigit(*position); ++position)
            digits = digits * 10 + static_cast<std::uint64_t>(*position - '0');
        std::ptrdiff_t fractionCount = position - fractionBegin;
        if (fractionCount == 0 && decimalMark == ',')
            return nullptr;
        digitCount += fractionCount;
        exponent = fractionCount < 1000 ? -static_cast<int>(fractionCount) : -1000;
    }
    if (digitCount == 0)
        return nullptr;
    char letter = static_cast<char>(*position | 0x20);
    if (letter == 'e' || letter == 'd') {
        position = detail::scanExponent(position + 1, exponent);
        if (!position)
            return nullptr;
    }
    // 19 digits fit the integer. Digits up to 2^53 and powers up to 10^22 are exact in double, so one operation gives the double nearest to
    // the decimal number. Rounding that to float gives the float nearest to the decimal number, unless the double lies exactly half-way
    // between two floats: then the lost bits decide, and only the exact way knows them. The magnitude is between 1e-22 and 1e38 or zero, so
    // the float is a normal one.
    if (digitCount <= 19 && digits <= (std::uint64_t{1} << 53U) && exponent >= -22 && exponent <= 22) {
        auto number = static_cast<double>(static_cast<std::int64_t>(digits));
        number = exponent < 0 ? number / detail::kPowersOfTen[-exponent] : number * detail::kPowersOfTen[exponent];
        constexpr std::uint64_t belowFloat = 0x1FFFFFFF;
        constexpr std::uint64_t halfWay = 0x10000000;
        if ((std::bit_cast<std::uint64_t>(number) & belowFloat) != halfWay) {
            const auto magnitude = static_cast<float>(number);
            value = isNegative ? -magnitude : magnitude;
            return position;
        }
    }
    value = exactNumber(begin, position, decimalMark);
    return position;
}

} // namespace TOLVGraphing::input
