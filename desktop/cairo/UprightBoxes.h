#pragma once

#include "ImagePixels.h"
#include "TOLVGraphing/platform/geometry/AffineTransform.h"
#include "TOLVGraphing/platform/graphics/Path.h"

#include <optional>
#include <vector>

// Paths that are nothing but upright boxes on pixels: backgrounds, clips, frames and grid lines. The points have to lie within a million pixels.

namespace TOLVGraphing::cairo {

/// The box of a path that is a single upright rectangle; it is empty when the rectangle is.
[[nodiscard]] std::optional<FixedBox> boxOfPath(const Path& path, const AffineTransform& toPixels);

/// The boxes that solid lines without ends of their own cover: those of a single upright rectangle with mitered corners, or of lines that each go from one point to another, all level or all upright.
/// Empty where it is another path, where lines are thinner than an eighth of a pixel, and where boxes share a pixel that they cover in part: Cairo has to stroke it.
[[nodiscard]] std::vector<FixedBox> boxesOfStroke(const Path& path, const AffineTransform& toPixels, double lineWidth);

} // namespace TOLVGraphing::cairo
