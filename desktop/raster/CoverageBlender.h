#pragma once

#include "UnionCoverage.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace TOLVGraphing::raster {

/// The pixels of an image in memory: premultiplied, 32 bits with alpha in the highest eight. Row `y` is `y * stride` bytes after the first.
struct ImagePixels {
    unsigned char* first = nullptr;
    std::ptrdiff_t stride = 0;
};

/// Puts one colour over pixels where they are covered. Products of two levels are divided by 255 and rounded to nearest, first those of the colour and the coverage,
/// then those of what shines through: the same bytes come out as from image libraries that put a colour over an image through a mask.
class CoverageBlender {
public:
    /// Only pixels in `bounds`, all of which are the image's, are changed. The colour is premultiplied, with alpha in the highest eight bits.
    CoverageBlender(const ImagePixels& pixels, const PixelBox& bounds, std::uint32_t color);

    void paint(const CoverageStrip& strip) const;

private:
    void paintRow(unsigned char* pixels, const std::uint8_t* coverage, int count) const;

    ImagePixels m_pixels;
    PixelBox m_bounds;
    std::uint8_t m_alpha;
    /// The colour of eight pixels.
    std::array<std::uint8_t, 32> m_colors{};
};

} // namespace TOLVGraphing::raster
