#include "Comparison.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace TOLVGraphing::testing_support {

namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

template <typename Number>
std::string digits(Number number)
{
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

template <typename Number>
bool isSame(Number got, Number expected)
{
    return got == expected || (std::isnan(got) && std::isnan(expected));
}

template <typename Number>
AssertionResult difference(Number got, Number expected)
{
    return AssertionFailure() << "got " << digits(got) << ", expected " << digits(expected);
}

/// Compares named parts one after the other with the comparison of one number.
template <std::size_t count, typename Compare>
AssertionResult parts(const std::array<const char*, count>& names, const std::array<double, count>& got, const std::array<double, count>& expected, Compare compare)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (AssertionResult result = compare(got[i], expected[i]); !result)
            return result << " for " << names[i];
    }
    return AssertionSuccess();
}

constexpr std::array<const char*, 2> kPointParts{"x", "y"};
constexpr std::array<const char*, 2> kSizeParts{"the width", "the height"};
constexpr std::array<const char*, 4> kRectParts{"x", "y", "the width", "the height"};
constexpr std::array<const char*, 4> kColorParts{"red", "green", "blue", "alpha"};
constexpr std::array<const char*, 6> kTransformParts{"a", "b", "c", "d", "tx", "ty"};

std::array<double, 4> numbersOf(const Rect& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

std::array<double, 4> numbersOf(const Color& color)
{
    return {color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent()};
}

std::array<double, 6> numbersOf(const AffineTransform& t)
{
    return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}

constexpr auto kExactly = [](double got, double expected) { return same(got, expected); };

template <typename Value, typename Compare>
AssertionResult lists(const std::vector<Value>& got, const std::vector<Value>& expected, Compare compare)
{
    for (std::size_t i = 0; i < std::min(got.size(), expected.size()); ++i) {
        if (AssertionResult result = compare(got[i], expected[i]); !result)
            return result << " in element " << i << " of " << got.size() << ", expected " << expected.size();
    }
    if (got.size() != expected.size())
        return AssertionFailure() << "got " << got.size() << " elements, expected " << expected.size();
    return AssertionSuccess();
}

template <typename Value>
AssertionResult sameLists(const std::vector<Value>& got, const std::vector<Value>& expected)
{
    return lists(got, expected, [](const Value& a, const Value& b) { return same(a, b); });
}

/// Where the number stands in the order of all floats; both zeros stand at 0.
std::int64_t rankOf(float number)
{
    std::int32_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits >= 0 ? bits : std::int64_t{std::numeric_limits<std::int32_t>::min()} - bits;
}

} // namespace

AssertionResult same(float got, float expected)
{
    return isSame(got, expected) ? AssertionSuccess() : difference(got, expected);
}

AssertionResult same(double got, double expected)
{
    return isSame(got, expected) ? AssertionSuccess() : difference(got, expected);
}

AssertionResult same(const Point& got, const Point& expected)
{
    return parts<2>(kPointParts, {got.x, got.y}, {expected.x, expected.y}, kExactly);
}

AssertionResult same(const Size& got, const Size& expected)
{
    return parts<2>(kSizeParts, {got.width, got.height}, {expected.width, expected.height}, kExactly);
}

AssertionResult same(const Rect& got, const Rect& expected)
{
    return parts<4>(kRectParts, numbersOf(got), numbersOf(expected), kExactly);
}

AssertionResult same(const Color& got, const Color& expected)
{
    return parts<4>(kColorParts, numbersOf(got), numbersOf(expected), kExactly);
}

AssertionResult same(const std::optional<Color>& got, const std::optional<Color>& expected)
{
    if (got && expected)
        return same(*got, *expected);
    if (!got && !expected)
        return AssertionSuccess();
    return AssertionFailure() << "got " << (got ? toString(*got) : "no colour") << ", expected " << (expected ? toString(*expected) : "no colour");
}

AssertionResult same(const std::vector<float>& got, const std::vector<float>& expected)
{
    return sameLists(got, expected);
}

AssertionResult same(const std::vector<double>& got, const std::vector<double>& expected)
{
    return sameLists(got, expected);
}

AssertionResult same(const std::vector<Point>& got, const std::vector<Point>& expected)
{
    return sameLists(got, expected);
}

AssertionResult same(const std::vector<Rect>& got, const std::vector<Rect>& expected)
{
    return sameLists(got, expected);
}

AssertionResult within(double got, double expected, double tolerance)
{
    if (isSame(got, expected) || (std::isfinite(expected) && std::abs(got - expected) <= tolerance))
        return AssertionSuccess();
    return difference(got, expected) << " within " << digits(tolerance);
}

AssertionResult within(float got, float expected, double tolerance)
{
    return within(static_cast<double>(got), static_cast<double>(expected), tolerance);
}

AssertionResult within(const Point& got, const Point& expected, double tolerance)
{
    return parts<2>(kPointParts, {got.x, got.y}, {expected.x, expected.y}, [&](double a, double b) { return within(a, b, tolerance); });
}

AssertionResult within(const Rect& got, const Rect& expected, double tolerance)
{
    return parts<4>(kRectParts, numbersOf(got), numbersOf(expected), [&](double a, double b) { return within(a, b, tolerance); });
}

AssertionResult within(const AffineTransform& got, const AffineTransform& expected, double tolerance)
{
    return parts<6>(kTransformParts, numbersOf(got), numbersOf(expected), [&](double a, double b) { return within(a, b, tolerance); });
}

AssertionResult within(const std::vector<Point>& got, const std::vector<Point>& expected, double toleranceX, double toleranceY)
{
    return lists(got, expected, [&](const Point& a, const Point& b) {
        AssertionResult x = within(a.x, b.x, toleranceX);
        return x ? within(a.y, b.y, toleranceY) << " for y" : x << " for x";
    });
}

AssertionResult withinUlps(float got, float expected, std::int64_t ulps)
{
    if (isSame(got, expected))
        return AssertionSuccess();
    if (std::isfinite(got) && std::isfinite(expected) && std::abs(rankOf(got) - rankOf(expected)) <= ulps)
        return AssertionSuccess();
    return difference(got, expected) << " within " << ulps << " units in the last place";
}

AssertionResult withinRelative(const std::vector<double>& got, const std::vector<double>& expected, double tolerance)
{
    return lists(got, expected, [&](double a, double b) { return within(a, b, tolerance * std::abs(b)); });
}

} // namespace TOLVGraphing::testing_support
