#pragma once

#include "TOLVGraphing/platform/geometry/Point.h"

#include "PangoPointers.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TOLVGraphing::text {

/// One line of a laid-out text: its bytes in TextLayout::text and its advance width in points.
struct TextLine {
    std::size_t start = 0;
    std::size_t length = 0;
    double width = 0.0;
    /// The line's glyphs, owned by the layout.
    PangoLayoutLine* shaped = nullptr;
};

/// A text broken into lines at its newlines, shaped and measured. The lines are aligned to the left. Distances are in points with y growing upwards from the lower-left
/// corner of the whole text.
struct TextLayout {
    /// The text as valid UTF-8.
    std::string text;
    /// Shaped for a font size of `scale` times less than the text's own; 1 except for extreme sizes. Null for a text that cannot be drawn.
    PangoPointer<PangoLayout> layout;
    double scale = 1.0;
    std::vector<TextLine> lines;
    Size size;
    double lineHeight = 0.0;
    /// From the top of a line to its baseline.
    double ascender = 0.0;

    /// The height of the line's baseline above the bottom of the text.
    [[nodiscard]] double baseline(std::size_t line) const { return size.height - static_cast<double>(line) * lineHeight - ascender; }
};

} // namespace TOLVGraphing::text
