#include "OptionValues.h"

#include <desktop/input/CalendarDate.h>

#include <TOLVGraphing/data/ColorOperations.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>
#include <utility>

namespace TOLVGraphing::app {

namespace {

template <typename Value, std::size_t count>
using Words = std::array<std::pair<std::string_view, Value>, count>;

constexpr auto kPatternWords = std::to_array<std::pair<std::string_view, LinePattern>>(
    {{"solid", LinePattern::Solid}, {"dashed", LinePattern::Dashed}, {"dash-dot", LinePattern::DashDot}, {"dotted", LinePattern::Dotted}});
constexpr auto kDrawingWords = std::to_array<std::pair<std::string_view, DrawingKind>>({{"curve", DrawingKind::Curve}, {"plain-curve", DrawingKind::PlainCurve},
    {"dotted", DrawingKind::Dotted}, {"line", DrawingKind::Line}, {"bar", DrawingKind::Bar}, {"x", DrawingKind::X}, {"impulse", DrawingKind::Impulse}});
constexpr auto kXAxisWords
    = std::to_array<std::pair<std::string_view, AxisKind>>({{"linear", AxisKind::Linear}, {"log", AxisKind::Logarithmic}, {"bar", AxisKind::Bar}, {"line", AxisKind::Line}});
constexpr auto kYAxisWords = std::to_array<std::pair<std::string_view, AxisKind>>({{"linear", AxisKind::Linear}, {"log", AxisKind::Logarithmic}});
constexpr auto kNumberStyleWords = std::to_array<std::pair<std::string_view, NumberStyle>>(
    {{"decimal", NumberStyle::Decimal}, {"adaptive", NumberStyle::Adaptive}, {"si", NumberStyle::SI}, {"scientific", NumberStyle::Scientific}, {"date", NumberStyle::Date}});

template <typename Value, std::size_t count>
Value parseWord(const std::string& option, const std::string& text, const Words<Value, count>& words)
{
    std::string expected = "one of";
    for (const auto& [word, value] : words) {
        if (text == word)
            return value;
        expected += (word == words.front().first ? " " : ", ") + std::string(word);
    }
    throw UsageError(option, text, expected);
}

/// Every value has a word.
template <typename Value, std::size_t count>
std::string wordIn(const Words<Value, count>& words, Value value)
{
    return std::string(std::find_if(words.begin(), words.end(), [&](const auto& entry) { return entry.second == value; })->first);
}

} // namespace

UsageError::UsageError(const std::string& option, const std::string& found, const std::string& expected)
    : std::runtime_error(option + ": found '" + found + "', expected " + expected)
{
}

UsageError::UsageError(const std::string& option, const std::string& expected) : std::runtime_error(option + ": found nothing, expected " + expected) {}

std::optional<double> numberFromText(const std::string& text)
{
    const char* begin = text.data();
    const char* end = begin + text.size();
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        ++begin;
    double number = 0.0;
    const auto [parsed, error] = std::from_chars(begin, end, number);
    if (error != std::errc() || parsed != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

double parseNumberOrDate(const std::string& option, const std::string& text, std::optional<double> dateOrigin)
{
    if (const auto number = numberFromText(text))
        return *number - dateOrigin.value_or(0.0);
    if (dateOrigin) {
        const auto days = input::daysOfDate(text);
        if (days && std::isfinite(*days))
            return *days - *dateOrigin;
        throw UsageError(option, text, "a number or a date such as 2026-11-21");
    }
    throw UsageError(option, text, "a number");
}

double parsePositive(const std::string& option, const std::string& text, double largest)
{
    const auto number = numberFromText(text);
    if (!number || !(*number > 0.0) || *number > largest) {
        std::string limit = std::to_string(largest);
        limit.erase(limit.find('.'));
        throw UsageError(option, text, "a number greater than 0 and at most " + limit);
    }
    return *number;
}

std::size_t parseCount(const std::string& option, const std::string& text, std::size_t most)
{
    std::size_t count = 0;
    const char* end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, count);
    if (error != std::errc() || parsed != end || count < 1 || count > most)
        throw UsageError(option, text, "a whole number from 1 to " + std::to_string(most));
    return count;
}

Size parseSize(const std::string& option, const std::string& text)
{
    const std::size_t cross = text.find_first_of("xX");
    if (cross != std::string::npos) {
        const auto width = numberFromText(text.substr(0, cross));
        const auto height = numberFromText(text.substr(cross + 1));
        if (width && height && *width >= 1.0 && *height >= 1.0 && *width <= kLargestSide && *height <= kLargestSide)
            return {*width, *height};
    }
    throw UsageError(option, text, "WIDTHxHEIGHT in points, each from 1 to 14400, for example 640x400");
}

RangeText parseRange(const std::string& option, const std::string& text)
{
    // A time of day has colons of its own, so the middle one of an odd number is the separator.
    std::vector<std::size_t> colons;
    for (std::size_t at = text.find(':'); at != std::string::npos; at = text.find(':', at + 1))
        colons.push_back(at);
    if (colons.size() % 2 == 0)
        throw UsageError(option, text, "FROM:TO, for example 0:10; an end may be left out");
    const std::size_t middle = colons[colons.size() / 2];
    return {text.substr(0, middle), text.substr(middle + 1)};
}

Color parseColor(const std::string& option, const std::string& text)
{
    std::string digits = text;
    if (digits.starts_with("#"))
        digits.erase(0, 1);
    else if (digits.starts_with("0x") || digits.starts_with("0X"))
        digits.erase(0, 2);
    if (digits.size() == 6 && digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos) {
        if (const auto color = colorWithSRGBHexString(digits, 1.0))
            return *color;
    }
    throw UsageError(option, text, "six hexadecimal digits RRGGBB, for example 0072B2");
}

LinePattern parsePattern(const std::string& option, const std::string& text)
{
    return parseWord(option, text, kPatternWords);
}

DrawingKind parseDrawing(const std::string& option, const std::string& text)
{
    return parseWord(option, text, kDrawingWords);
}

AxisKind parseXAxis(const std::string& option, const std::string& text)
{
    return parseWord(option, text, kXAxisWords);
}

AxisKind parseYAxis(const std::string& option, const std::string& text)
{
    return parseWord(option, text, kYAxisWords);
}

NumberStyle parseNumberStyle(const std::string& option, const std::string& text)
{
    return parseWord(option, text, kNumberStyleWords);
}

std::string wordFor(LinePattern pattern)
{
    return wordIn(kPatternWords, pattern);
}

std::string wordFor(DrawingKind drawing)
{
    return wordIn(kDrawingWords, drawing);
}

std::string wordFor(AxisKind axis)
{
    return wordIn(kXAxisWords, axis);
}

std::string wordFor(NumberStyle style)
{
    return wordIn(kNumberStyleWords, style);
}

std::string parseLayoutFile(const std::string& option, const std::string& text)
{
    constexpr std::string_view kSuffix = ".json";
    const std::string_view end = std::string_view(text).substr(text.size() - std::min(text.size(), kSuffix.size()));
    const auto isSame = [](char one, char other) { return (one >= 'A' && one <= 'Z' ? one - 'A' + 'a' : one) == other; };
    if (!std::equal(end.begin(), end.end(), kSuffix.begin(), kSuffix.end(), isSame))
        throw UsageError(option, text, "a name that ends in .json");
    return text;
}

std::vector<std::string> parseList(const std::string& option, const std::string& text)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        const std::size_t comma = text.find(',', start);
        parts.push_back(text.substr(start, comma == std::string::npos ? comma : comma - start));
        if (parts.back().empty())
            throw UsageError(option, text, "values separated by commas");
        if (comma == std::string::npos)
            return parts;
        start = comma + 1;
    }
}

EdgeInsets parseInsets(const std::string& option, const std::string& text)
{
    const char* const expected = "four distances in points, TOP,LEFT,BOTTOM,RIGHT, for example 15,30,15,15";
    const auto parts = parseList(option, text);
    if (parts.size() != 4)
        throw UsageError(option, text, expected);
    double values[4];
    for (std::size_t i = 0; i < 4; ++i) {
        const auto value = numberFromText(parts[i]);
        if (!value || *value < 0.0 || *value > kLargestSide)
            throw UsageError(option, text, expected);
        values[i] = *value;
    }
    return {values[0], values[1], values[2], values[3]};
}

} // namespace TOLVGraphing::app
