#include "PropertyListScalars.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <limits>

namespace TOLVGraphing::plist {

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kSpaces = " \t\r\n";

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kSpaces);
    return first == std::string_view::npos ? std::string_view() : text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

template <typename Number>
std::optional<Number> wholeText(std::string_view text)
{
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    Number number{};
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// The length of the UTF-8 sequence at the start of the text, or 0 when there is no well-formed one.
std::size_t sequenceLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned>(static_cast<unsigned char>(text[i])) : 0U; };
    const auto continues = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned first = byte(0);
    if (first < 0x80U)
        return 1;
    if (first >= 0xC2U && first < 0xE0U)
        return continues(1) ? 2 : 0;
    if (first >= 0xE0U && first < 0xF0U) {
        // Neither a longer form of a shorter sequence nor half of a surrogate pair.
        const bool allowed = (first != 0xE0U || byte(1) >= 0xA0U) && (first != 0xEDU || byte(1) < 0xA0U);
        return allowed && continues(1) && continues(2) ? 3 : 0;
    }
    if (first >= 0xF0U && first < 0xF5U) {
        const bool allowed = (first != 0xF0U || byte(1) >= 0x90U) && (first != 0xF4U || byte(1) < 0x90U);
        return allowed && continues(1) && continues(2) && continues(3) ? 4 : 0;
    }
    return 0;
}

/// Reads exactly `count` digits off the front.
std::optional<int> takeDigits(std::string_view& text, std::size_t count)
{
    if (text.size() < count)
        return std::nullopt;
    int number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        number = number * 10 + (text[i] - '0');
    }
    text.remove_prefix(count);
    return number;
}

} // namespace

std::optional<std::int64_t> wholeNumberFromText(std::string_view text)
{
    return wholeText<std::int64_t>(text);
}

std::optional<double> numberFromText(std::string_view text)
{
    return wholeText<double>(text);
}

std::optional<std::string> bytesFromBase64(std::string_view text)
{
    std::string bytes;
    std::uint32_t bits = 0;
    std::size_t digits = 0;
    std::size_t padding = 0;
    for (const char character : text) {
        if (kSpaces.find(character) != std::string_view::npos)
            continue;
        if (character == '=') {
            ++padding;
            continue;
        }
        const std::size_t value = kDigits.find(character);
        if (value == std::string_view::npos || padding > 0)
            return std::nullopt;
        bits = bits << 6U | static_cast<std::uint32_t>(value);
        if (++digits % 4 == 0) {
            for (const unsigned shift : {16U, 8U, 0U})
                bytes += static_cast<char>(static_cast<unsigned char>(bits >> shift & 0xFFU));
            bits = 0;
        }
    }
    const std::size_t rest = digits % 4;
    if (rest == 1 || (rest == 0 ? padding != 0 : padding != 4 - rest))
        return std::nullopt;
    bits <<= 6U * (4U - rest);
    if (rest >= 2)
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> 16U & 0xFFU));
    if (rest == 3)
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> 8U & 0xFFU));
    return bytes;
}

std::string base64FromBytes(std::string_view bytes)
{
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t bits = 0;
        for (std::size_t j = 0; j < 3; ++j)
            bits = bits << 8U | (j < count ? static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i + j])) : 0U);
        for (std::size_t j = 0; j < 4; ++j)
            text += j <= count ? kDigits[bits >> (18U - 6U * j) & 0x3FU] : '=';
    }
    return text;
}

std::optional<std::int32_t> secondsFromDate(std::string_view text)
{
    text = trimmed(text);
    int parts[6] = {};
    static constexpr std::size_t kWidths[6] = {4, 2, 2, 2, 2, 2};
    static constexpr char kEnds[6] = {'-', '-', 'T', ':', ':', 'Z'};
    for (int i = 0; i < 6; ++i) {
        const auto part = takeDigits(text, kWidths[i]);
        if (!part || !text.starts_with(kEnds[i]))
            return std::nullopt;
        parts[i] = *part;
        text.remove_prefix(1);
    }
    using namespace std::chrono;
    const year_month_day day{year(parts[0]), month(static_cast<unsigned>(parts[1])), std::chrono::day(static_cast<unsigned>(parts[2]))};
    if (!text.empty() || !day.ok() || parts[3] > 23 || parts[4] > 59 || parts[5] > 59)
        return std::nullopt;
    const auto moment = sys_days(day) + hours(parts[3]) + minutes(parts[4]) + seconds(parts[5]);
    const std::int64_t since = duration_cast<seconds>(moment - sys_days(2001y / January / 1)).count();
    if (since < std::numeric_limits<std::int32_t>::min() || since > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(since);
}

bool isStorableText(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = text.front() == '\0' ? 0 : sequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string_view beginningOf(std::string_view text)
{
    constexpr std::size_t kLongest = 40;
    if (text.size() <= kLongest)
        return text;
    std::size_t end = kLongest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return text.substr(0, end);
}

bool appendCodePoint(std::string& text, std::uint32_t code)
{
    const auto append = [&](std::uint32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code == 0 || (code >= 0xD800U && code < 0xE000U) || code > 0x10FFFFU)
        return false;
    if (code < 0x80U) {
        append(code);
    } else if (code < 0x800U) {
        append(0xC0U | code >> 6U);
        append(0x80U | (code & 0x3FU));
    } else if (code < 0x10000U) {
        append(0xE0U | code >> 12U);
        append(0x80U | (code >> 6U & 0x3FU));
        append(0x80U | (code & 0x3FU));
    } else {
        append(0xF0U | code >> 18U);
        append(0x80U | (code >> 12U & 0x3FU));
        append(0x80U | (code >> 6U & 0x3FU));
        append(0x80U | (code & 0x3FU));
    }
    return true;
}

} // namespace TOLVGraphing::plist
