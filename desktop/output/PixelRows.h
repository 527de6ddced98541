#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TOLVGraphing::output {

/// An image to encode: rows of 32-bit pixels from the top, each 0xAARRGGBB with premultiplied components. Not owned.
struct TOLV_EXPORT PixelRows {
    const unsigned char* data = nullptr;
    /// Bytes from one row to the next.
    std::size_t stride = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// Every alpha is 255: the file has no alpha channel.
    bool isOpaque = true;
    double pixelsPerInch = 72.0;
    std::string title;
    std::string creator;

    /// Bytes of a pixel in the file: red, green, blue and, unless the image is opaque, alpha.
    [[nodiscard]] std::size_t samplesPerPixel() const { return isOpaque ? 3 : 4; }
    [[nodiscard]] std::size_t bytesPerRow() const { return samplesPerPixel() * width; }
    /// Writes a row's samples, components not premultiplied, to `samples`, which has room for bytesPerRow().
    void copyRow(std::uint32_t row, unsigned char* samples) const;
};

/// A PNG file with its resolution. Throws OutputError.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> encodedPNG(const PixelRows& image);
/// A TIFF file: deflated strips, unassociated alpha, resolution per inch. Throws OutputError.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> encodedTIFF(const PixelRows& image);

} // namespace TOLVGraphing::output
