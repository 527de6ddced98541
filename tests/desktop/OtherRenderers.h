#pragma once

#include "Pixels.h"

#include <gtest/gtest.h>

#include <string>

namespace TOLVGraphing::testing_support {

/// Renderers weigh the pixels at edges differently. The mean difference of a component is at most this, and of the pixels at most this part differs by more than half of the range.
struct PictureTolerance {
    double mean;
    double part;
};
/// rsvg-convert, which draws with the library that draws the images too. Measured: means up to 0.32, no pixel.
inline constexpr PictureTolerance kSameRasteriser{0.6, 0.0};
/// Ghostscript. Measured: means up to 3.4, parts up to 0.0006.
inline constexpr PictureTolerance kGhostscript{4.5, 0.0015};
/// pdftoppm, which moves thin lines to whole pixels. Measured: means up to 6.7, parts up to 0.0053.
inline constexpr PictureTolerance kAdjustedStrokes{8.5, 0.0075};

/// The picture is of the image's size and differs from it by no more than the tolerance.
[[nodiscard]] testing::AssertionResult looksLike(const Pixels& picture, const Pixels& image, const PictureTolerance& tolerance);

/// How programs that have nothing to do with this library show the first page of a file, each of which has to be installed, in pixels per inch. Throw std::runtime_error where they fail.
[[nodiscard]] Pixels pageByPdftoppm(const std::string& path, int pixelsPerInch);
/// Of PDF or PostScript.
[[nodiscard]] Pixels pageByGhostscript(const std::string& path, int pixelsPerInch);
/// EPS as it is placed on a page: its bounding box only.
[[nodiscard]] Pixels figureByGhostscript(const std::string& path, int pixelsPerInch);
/// SVG over white.
[[nodiscard]] Pixels pageByRsvg(const std::string& path, int pixelsPerInch);

} // namespace TOLVGraphing::testing_support
