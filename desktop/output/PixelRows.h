#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What the writers of files are made of.
namespace TOLVGraphing::output {

/// An image to encode: rows of 32-bit pixels from the top, each 0xAARRGGBB in the machine's byte order with premultiplied components, none of them greater than alpha. Not owned. `renderToBytes` makes images of drawings; this is for pixels that are there already.
struct TOLV_EXPORT PixelRows {
    /// The first pixel of the top row, as long as the image is used; not null where there are pixels.
    const unsigned char* data = nullptr;
    /// Bytes from one row to the next, at least four times the width.
    std::size_t stride = 0;
    /// Pixels, at least 1 each to be encoded, in PNG at most 1,000,000.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// Every alpha is 255, which is not looked at: the file has no alpha channel.
    bool isOpaque = true;
    /// The resolution that is stored, the same in both directions, finite and above zero: 72 is one pixel a point. PNG has it in whole pixels per metre.
    double pixelsPerInch = 72.0;
    /// Stored where they are not empty. UTF-8; other bytes are replaced.
    std::string title;
    std::string creator;

    /// Bytes of a pixel in the file: red, green, blue and, unless the image is opaque, alpha.
    [[nodiscard]] std::size_t samplesPerPixel() const { return isOpaque ? 3 : 4; }
    /// Bytes of a row in the file, before it is compressed.
    [[nodiscard]] std::size_t bytesPerRow() const { return samplesPerPixel() * width; }
    /// Writes the samples of a row, counted from 0 at the top and below the height, components not premultiplied, to `samples`, which has room for bytesPerRow().
    void copyRow(std::uint32_t row, unsigned char* samples) const;
};

/// A PNG file with its resolution. Throws OutputError where the image has no pixels or the library fails.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> encodedPNG(const PixelRows& image);
/// A TIFF file: deflated strips, unassociated alpha, resolution per inch. Throws OutputError where the image has no pixels or the library fails.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> encodedTIFF(const PixelRows& image);

} // namespace TOLVGraphing::output
