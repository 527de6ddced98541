#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// The expected images were made with one font family. Where another one stands in, glyphs are of other shapes and widths.
[[nodiscard]] bool hasPinnedFonts();

/// Another version of the rasteriser may round differently here and there: this many pixels may differ at all, and each component by at most this much.
inline constexpr std::size_t kMostDifferingPixels = 60;
inline constexpr int kLargestDifference = 24;

/// Compares a PNG image with an expected one; a different one is kept in the temporary folder. With TOLV_REGENERATE_GOLDEN=1 the file is written instead.
[[nodiscard]] testing::AssertionResult isImageOfFile(const std::vector<std::byte>& image, const std::string& path);

} // namespace TOLVGraphing::testing_support
