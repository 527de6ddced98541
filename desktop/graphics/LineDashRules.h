#pragma once

#include "TOLVGraphing/platform/graphics/Path.h"

namespace TOLVGraphing::paint {

/// The dash as a backend can use it: a pattern with a negative or non-finite length, or without any length above zero, becomes the solid line;
/// a pattern with an odd count is written out twice, so that painted lengths and gaps alternate; the phase is brought into one turn of the pattern,
/// 0 for a non-finite one.
[[nodiscard]] LineDash usableDash(const LineDash& dash);

/// The part of a line that a usable dash paints, from 0 to 1; 1 without a dash.
[[nodiscard]] double paintedPart(const LineDash& dash);

/// True when ends that stick out of each dash, round or square ones, of a line so wide fill the gaps of a usable dash to the eye: it then looks like the solid line. Never without a dash.
[[nodiscard]] bool hasGapsClosedByEnds(const LineDash& dash, double lineWidth);

/// True when a line so long, in the units of the dash, has more dashes and gaps than are worth walking through: on pixels it then looks like a solid line of a weaker colour. Never without a dash.
[[nodiscard]] bool hasTooManyDashes(const LineDash& dash, double length);

} // namespace TOLVGraphing::paint
