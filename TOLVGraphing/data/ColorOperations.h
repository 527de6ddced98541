#pragma once

#include "../platform/graphics/Color.h"
#include <TOLVMath/Export.h>

#include <optional>
#include <string_view>

namespace TOLVGraphing {

/// A blend of two colours, component by component in double precision and never clamped; the alpha is the first colour's: a + b - 1.
[[nodiscard]] TOLV_EXPORT Color linearBurn(const Color& a, const Color& b);
/// The blend a + b, otherwise as `linearBurn`.
[[nodiscard]] TOLV_EXPORT Color linearDodge(const Color& a, const Color& b);
/// The blend a * b, otherwise as `linearBurn`.
[[nodiscard]] TOLV_EXPORT Color multiply(const Color& a, const Color& b);

/// True unless the colour's relative luminance 0.2126 red + 0.7152 green + 0.0722 blue is below 0.5; NaN counts as bright. The alpha is ignored.
[[nodiscard]] TOLV_EXPORT bool needsDarkLabel(const Color& color);
/// Black on a colour that needs a dark label, white on others.
[[nodiscard]] TOLV_EXPORT Color appropriateLabelColor(const Color& color);
/// The colour darkened by 0.5 in every component when it needs a dark label, otherwise lightened by 0.5; not clamped, alpha kept.
[[nodiscard]] TOLV_EXPORT Color appropriateSecondaryColor(const Color& color);

/// The colour written as hexadecimal digits RRGGBB in either case: leading blanks and "0x" are passed over, what follows the digits is ignored, and only the lowest 24 bits count
/// (numbers of more than 32 bits count as FFFFFFFF). Fewer digits are the last ones: "FF" is blue. A number sign is not accepted. The alpha is kept as it is given. Nothing when there is no digit; throws nothing.
[[nodiscard]] TOLV_EXPORT std::optional<Color> colorWithSRGBHexString(std::string_view text, double alphaComponent);

} // namespace TOLVGraphing
