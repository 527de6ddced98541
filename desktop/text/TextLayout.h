#pragma once

#include "TOLVGraphing/platform/geometry/Point.h"

#include "PangoPointers.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace TOLVGraphing {
class AttributedString;
}

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

/// The layouts of PangoTextSystem::shared(), for the backends that draw them.
struct SharedLayouts {
    /// Calls the function with the text's layout, which is valid during the call only. No other text is laid out meanwhile, in whatever thread: the function must not ask for another one.
    TOLV_EXPORT static void withLayout(const AttributedString& text, const std::function<void(const TextLayout&)>& use);
};

} // namespace TOLVGraphing::text
