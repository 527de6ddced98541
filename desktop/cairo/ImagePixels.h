#pragma once

#include "CairoPointers.h"
#include "PixelRange.h"
#include "TOLVGraphing/platform/graphics/Color.h"

#include <cstddef>
#include <cstdint>
#include <optional>

// What a graph draws again and again on pixels, background, grid lines and labels, without Cairo: upright boxes and masks. Cairo takes some 60 instructions for each pixel that a thin
// line covers in part, and some 10,000 for the smallest mask. Every byte comes out as Cairo's.

namespace TOLVGraphing::cairo {

class ColorStamp;

/// The target's clip in pixels of its device, whatever its units are now, where it is one box of whole pixels.
[[nodiscard]] std::optional<PixelRange> clipOfWholePixels(cairo_t* target);

/// An upright box in 256ths of a pixel, as Cairo rounds coordinates; rows counted downwards.
struct FixedBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    /// True when no pixel is covered in part.
    [[nodiscard]] bool isWholePixels() const;
    /// The pixels that are covered at least in part.
    [[nodiscard]] PixelRange pixels() const;

    friend bool operator==(const FixedBox&, const FixedBox&) = default;
};

/// A coordinate in 256ths of a pixel. It has to lie within a million pixels.
[[nodiscard]] int fixedFromPixels(double coordinate);

/// Coverage of pixels, 0 to 255: row `y` of the range, counted from its top, is at `coverage + y * stride`. Not owned.
struct CoverageMask {
    PixelRange range;
    const std::uint8_t* coverage = nullptr;
    std::ptrdiff_t stride = 0;
};

/// The pixels of an image surface while they are changed without Cairo. Cairo must not draw into the surface meanwhile.
class ImagePixels {
public:
    /// True for an image in memory of 32 bits a pixel that Cairo's error state has not reached.
    [[nodiscard]] static bool canChange(cairo_surface_t* surface);

    /// Of a surface that `canChange`; it is not owned and has to outlive this object. A finished one stays as it is and gets into Cairo's error state, as with any drawing.
    explicit ImagePixels(cairo_surface_t* surface);
    ~ImagePixels();
    ImagePixels(const ImagePixels&) = delete;
    ImagePixels& operator=(const ImagePixels&) = delete;

    /// Fills a box as far as it lies in the clip. The colour may be translucent where the box is of whole pixels. Where boxes share pixels that they cover in part, Cairo would add up their coverage: fill such ones with Cairo.
    void fillBox(const FixedBox& box, const Color& color, const PixelRange& clip);
    /// Lays the colour over the pixels through the mask, as far as it lies in the clip.
    void drawMask(const CoverageMask& mask, const Color& color, const PixelRange& clip);
    /// Paints the stamp with the corner of its range at this pixel. The whole range has to lie in the image.
    void drawStamp(const ColorStamp& stamp, int left, int top);

private:
    [[nodiscard]] unsigned char* row(int y) const;
    /// Empty on a finished surface.
    [[nodiscard]] PixelRange bounds() const;

    cairo_surface_t* m_surface;
    unsigned char* m_data = nullptr;
    std::ptrdiff_t m_stride;
};

} // namespace TOLVGraphing::cairo
