#pragma once

#include <TOLVGraphing/platform/geometry/AffineTransform.h>
#include <TOLVGraphing/platform/geometry/Point.h>
#include <TOLVGraphing/platform/geometry/Rect.h>
#include <TOLVGraphing/platform/graphics/Color.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace TOLVGraphing::testing_support {

// Comparisons of results with expected values, for EXPECT_TRUE; the failure texts show all digits. NaN equals NaN and 0 equals -0.

[[nodiscard]] testing::AssertionResult same(float got, float expected);
[[nodiscard]] testing::AssertionResult same(double got, double expected);
[[nodiscard]] testing::AssertionResult same(const Point& got, const Point& expected);
[[nodiscard]] testing::AssertionResult same(const Size& got, const Size& expected);
[[nodiscard]] testing::AssertionResult same(const Rect& got, const Rect& expected);
[[nodiscard]] testing::AssertionResult same(const Color& got, const Color& expected);
[[nodiscard]] testing::AssertionResult same(const std::optional<Color>& got, const std::optional<Color>& expected);
/// A length that differs is a difference; otherwise the first element that differs is shown.
[[nodiscard]] testing::AssertionResult same(const std::vector<float>& got, const std::vector<float>& expected);
[[nodiscard]] testing::AssertionResult same(const std::vector<double>& got, const std::vector<double>& expected);
[[nodiscard]] testing::AssertionResult same(const std::vector<Point>& got, const std::vector<Point>& expected);
[[nodiscard]] testing::AssertionResult same(const std::vector<Rect>& got, const std::vector<Rect>& expected);

/// |got - expected| <= tolerance. An expected value that is not finite has to be met exactly.
[[nodiscard]] testing::AssertionResult within(double got, double expected, double tolerance);
[[nodiscard]] testing::AssertionResult within(float got, float expected, double tolerance);
[[nodiscard]] testing::AssertionResult within(const Point& got, const Point& expected, double tolerance);
[[nodiscard]] testing::AssertionResult within(const Rect& got, const Rect& expected, double tolerance);
[[nodiscard]] testing::AssertionResult within(const AffineTransform& got, const AffineTransform& expected, double tolerance);
/// The points differ by at most the tolerances along x and y.
[[nodiscard]] testing::AssertionResult within(const std::vector<Point>& got, const std::vector<Point>& expected, double toleranceX, double toleranceY);

/// The results differ by at most so many units in the last place of the expected one: steps to neighbouring floats.
[[nodiscard]] testing::AssertionResult withinUlps(float got, float expected, std::int64_t ulps);

/// |got - expected| <= tolerance * |expected| for every element.
[[nodiscard]] testing::AssertionResult withinRelative(const std::vector<double>& got, const std::vector<double>& expected, double tolerance);

} // namespace TOLVGraphing::testing_support
