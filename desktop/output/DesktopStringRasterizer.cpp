#include "DesktopStringRasterizer.h"

#include "PixelDrawing.h"
#include "TOLVGraphing/platform/foundation/Log.h"
#include "TOLVGraphing/platform/text/NumberText.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

namespace TOLVGraphing {

namespace {

constexpr double kMostPixelsASide = 16'384.0;
constexpr double kMostPixels = 67'108'864.0;

using Pixel = std::array<std::uint8_t, 4>;

std::uint8_t byteOf(double component)
{
    return static_cast<std::uint8_t>(std::lround(component * 255.0));
}

/// A pixel of the drawing as red, green, blue and alpha, premultiplied.
Pixel premultipliedPixel(std::uint32_t drawn)
{
    return {static_cast<std::uint8_t>(drawn >> 16U), static_cast<std::uint8_t>(drawn >> 8U), static_cast<std::uint8_t>(drawn), static_cast<std::uint8_t>(drawn >> 24U)};
}

/// The same with straight components; a clear one has the given colour.
Pixel straightPixel(std::uint32_t drawn, const Pixel& clear)
{
    Pixel pixel = premultipliedPixel(drawn);
    const unsigned alpha = pixel[3];
    if (alpha == 0)
        return clear;
    for (std::size_t i = 0; i < 3; ++i)
        pixel[i] = static_cast<std::uint8_t>((pixel[i] * 255U + alpha / 2U) / alpha);
    return pixel;
}

/// Writes the pixels of the drawing, 32 bits each in the machine's byte order, over themselves.
template <typename Conversion>
void convertPixels(std::vector<std::uint8_t>& pixels, const Conversion& conversion)
{
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        std::uint32_t drawn = 0;
        std::memcpy(&drawn, &pixels[i], sizeof drawn);
        const Pixel pixel = conversion(drawn);
        std::memcpy(&pixels[i], pixel.data(), pixel.size());
    }
}

bool isTooLarge(const Size& pixelSize)
{
    if (pixelSize.width <= kMostPixelsASide && pixelSize.height <= kMostPixelsASide && pixelSize.width * pixelSize.height <= kMostPixels)
        return false;
    writeLog(
        "The bitmap of a text would have " + shortestText(pixelSize.width) + " x " + shortestText(pixelSize.height) + " pixels; at most 16384 a side and 67108864 in all are made");
    return true;
}

} // namespace

StringBitmap DesktopStringRasterizer::bitmapOfString(const AttributedString& string, const StringFrame& frame) const
{
    const Size pixelSize{std::ceil(frame.size.width * frame.scale), std::ceil(frame.size.height * frame.scale)};
    const bool hasPixels = pixelSize.valid() && frame.scale > 0.0 && pixelSize.width > 0.0 && pixelSize.height > 0.0;
    if (!hasPixels || isTooLarge(pixelSize))
        return {};
    StringBitmap bitmap;
    bitmap.pixelWidth = static_cast<std::int32_t>(pixelSize.width);
    bitmap.pixelHeight = static_cast<std::int32_t>(pixelSize.height);
    bitmap.size = pixelSize;
    bitmap.isPremultiplied = m_components == Components::Premultiplied;
    const std::ptrdiff_t bytesPerRow = std::ptrdiff_t{4} * bitmap.pixelWidth;
    bitmap.pixels.resize(static_cast<std::size_t>(bytesPerRow * bitmap.pixelHeight));
    drawOnPixels({bitmap.pixels.data(), bitmap.pixelWidth, bitmap.pixelHeight, bytesPerRow}, frame.scale, [&](DrawingContext&) { string.drawAtPoint(frame.textOrigin); });
    if (bitmap.isPremultiplied) {
        convertPixels(bitmap.pixels, premultipliedPixel);
        return bitmap;
    }
    const Color color = string.attributes().foregroundColorOrDefault().clamped();
    const Pixel clear{byteOf(color.redComponent()), byteOf(color.greenComponent()), byteOf(color.blueComponent()), 0};
    convertPixels(bitmap.pixels, [&](std::uint32_t drawn) { return straightPixel(drawn, clear); });
    return bitmap;
}

void installDesktopStringRasterizer(DesktopStringRasterizer::Components components)
{
    setStringRasterizer(std::make_shared<DesktopStringRasterizer>(components));
}

} // namespace TOLVGraphing
