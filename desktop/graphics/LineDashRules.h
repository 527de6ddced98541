#pragma once

#include "TOLVGraphing/platform/graphics/Path.h"

namespace TOLVGraphing::paint {

/// The dash as a backend can use it: a pattern with a negative or non-finite length, or without any length above zero, becomes the solid line;
/// a pattern with an odd count is written out twice, so that painted lengths and gaps alternate; the phase is brought into one turn of the pattern,
/// 0 for a non-finite one.
[[nodiscard]] LineDash usableDash(const LineDash& dash);

} // namespace TOLVGraphing::paint
