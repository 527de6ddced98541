#include "PixelRows.h"

#include <cstring>

namespace TOLVGraphing::output {

void PixelRows::copyRow(std::uint32_t row, unsigned char* samples) const
{
    const unsigned char* source = data + stride * row;
    for (std::uint32_t column = 0; column < width; ++column, source += 4) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, source, sizeof pixel);
        const std::uint32_t alpha = isOpaque ? 255U : pixel >> 24U;
        for (const unsigned shift : {16U, 8U, 0U}) {
            const std::uint32_t component = (pixel >> shift) & 255U;
            if (alpha == 255U)
                *samples++ = static_cast<unsigned char>(component);
            else
                *samples++ = static_cast<unsigned char>(alpha == 0U ? 0U : (component * 255U + alpha / 2U) / alpha);
        }
        if (!isOpaque)
            *samples++ = static_cast<unsigned char>(alpha);
    }
}

} // namespace TOLVGraphing::output
