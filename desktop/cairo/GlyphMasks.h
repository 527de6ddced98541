#pragma once

#include "../text/PangoPointers.h"
#include "CairoPointers.h"
#include "ImagePixels.h"
#include "TOLVGraphing/platform/geometry/AffineTransform.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace TOLVGraphing::cairo {

/// Draws lines of small text on pixels from remembered coverage masks of single glyphs. Filling outlines anew takes Cairo some 5 microseconds a glyph, more than the rest of a label;
/// Cairo's own glyph cache moves every glyph to a whole pixel, so that the letters of unhinted text are unevenly spaced. Masks are made for quarters of a pixel in both directions:
/// a glyph is never farther than an eighth of a pixel from its exact place.
///
/// One thread at a time may use an object.
class GlyphMasks {
public:
    /// The line's coverage, valid until the next call; its range is empty when there is nothing to paint. `toPixels` maps the line's coordinates (y downwards from the baseline, in the units that it was
    /// shaped in) to whole pixels. Nothing when the line is too large or has glyphs that are no outlines of a font: it has to be filled then.
    [[nodiscard]] std::optional<CoverageMask> maskOfLine(PangoLayoutLine* line, const AffineTransform& toPixels);
    /// Paints the line's coverage with the target's source; the pixels are those of the target's surface. False, with nothing painted, when there is no mask of the line.
    [[nodiscard]] bool drawLine(cairo_t* target, PangoLayoutLine* line, const AffineTransform& toPixels);

private:
    struct Key {
        PangoFont* font = nullptr;
        std::uint32_t glyph = 0;
        /// Quarters of a pixel.
        int phaseX = 0;
        int phaseY = 0;
        double a = 0.0;
        double b = 0.0;
        double c = 0.0;
        double d = 0.0;

        friend bool operator==(const Key&, const Key&) = default;
    };

    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    /// The coverage of a glyph whose origin is in pixel (0, 0); rows downwards.
    struct Mask {
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;
        std::vector<std::uint8_t> coverage;
    };

    /// A mask and the pixel of its glyph's origin.
    struct PlacedMask {
        const Mask* mask = nullptr;
        int x = 0;
        int y = 0;
    };

    /// The glyph's mask; made now if need be.
    const Mask& maskFor(const Key& key);
    /// Collects the line's masks; false when one of its glyphs has none.
    bool place(PangoLayoutLine* line, const AffineTransform& toPixels);
    /// The pixels of the line's masks.
    [[nodiscard]] PixelRange placedRange() const;
    void forgetIfFull();

    std::unordered_map<Key, Mask, KeyHash> m_masks;
    /// Keeps the fonts of the keys, so that no other font gets their addresses.
    std::unordered_map<PangoFont*, text::PangoPointer<PangoFont>> m_fonts;
    std::size_t m_bytes = 0;
    /// The glyphs of the last line and its coverage.
    std::vector<PlacedMask> m_placed;
    std::vector<std::uint8_t> m_coverage;
};

} // namespace TOLVGraphing::cairo
