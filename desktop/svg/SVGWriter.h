#pragma once

#include "TOLVGraphing/platform/geometry/AffineTransform.h"
#include "TOLVGraphing/platform/graphics/Color.h"
#include "TOLVGraphing/platform/graphics/Path.h"

#include <string>
#include <string_view>

namespace TOLVGraphing::svg {

/// A coordinate or length with at most six digits after the point and none that are not needed: "12.5", "-0.25", "0". Beyond 1e9, and for NaN, it is limited to
/// what readers with single precision still place: -1e9...1e9, 0.
[[nodiscard]] std::string numberText(double number);

/// Text for an element's content or for an attribute between double quotes: markup characters are escaped, and what XML does not allow (control characters except tab
/// and newline, U+FFFE, U+FFFF, bytes that are not UTF-8) becomes U+FFFD.
[[nodiscard]] std::string escapedText(std::string_view text);

/// "#rrggbb" of the limited components; the alpha is not part of it.
[[nodiscard]] std::string colorText(const Color& color);

/// The path data: "M0 0L10 0 10 5C1 2 3 4 5 6Z", each point after the transform.
[[nodiscard]] std::string pathData(const Path& path, const AffineTransform& transform);

/// "matrix(a b c d tx ty)".
[[nodiscard]] std::string matrixText(const AffineTransform& transform);

} // namespace TOLVGraphing::svg
