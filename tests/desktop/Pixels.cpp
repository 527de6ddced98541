#include "Pixels.h"

#include "TemporaryFolder.h"

#include <cairo.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

cairo_status_t readBytes(void* closure, unsigned char* target, unsigned length)
{
    auto& rest = *static_cast<std::span<const std::byte>*>(closure);
    if (rest.size() < length)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(target, rest.data(), length);
    rest = rest.subspan(length);
    return CAIRO_STATUS_SUCCESS;
}

/// The image painted over white, without alpha.
Surface overWhite(cairo_surface_t* image)
{
    Surface opaque(cairo_image_surface_create(CAIRO_FORMAT_RGB24, cairo_image_surface_get_width(image), cairo_image_surface_get_height(image)), &cairo_surface_destroy);
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context(cairo_create(opaque.get()), &cairo_destroy);
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    cairo_set_source_surface(context.get(), image, 0.0, 0.0);
    cairo_paint(context.get());
    cairo_surface_flush(opaque.get());
    return opaque;
}

} // namespace

std::string Pixels::colorAt(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height)
        return "outside";
    const std::uint8_t* pixel = bytes.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3;
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", pixel[0], pixel[1], pixel[2]);
    return text;
}

Pixels pixelsOfPNG(std::span<const std::byte> bytes)
{
    const Surface image(cairo_image_surface_create_from_png_stream(readBytes, &bytes), &cairo_surface_destroy);
    if (const cairo_status_t status = cairo_surface_status(image.get()))
        throw std::runtime_error(std::string("no PNG image: ") + cairo_status_to_string(status));
    const Surface opaque = overWhite(image.get());
    Pixels pixels;
    pixels.width = cairo_image_surface_get_width(opaque.get());
    pixels.height = cairo_image_surface_get_height(opaque.get());
    pixels.bytes.reserve(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height) * 3);
    const unsigned char* data = cairo_image_surface_get_data(opaque.get());
    for (int y = 0; y < pixels.height; ++y) {
        const unsigned char* row = data + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(opaque.get());
        for (int x = 0; x < pixels.width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + static_cast<std::ptrdiff_t>(x) * 4, sizeof pixel);
            for (const unsigned shift : {16U, 8U, 0U})
                pixels.bytes.push_back(static_cast<std::uint8_t>(pixel >> shift & 255U));
        }
    }
    return pixels;
}

Pixels pixelsOfPNGFile(const std::string& path)
{
    const std::string content = contentOfFile(path);
    return pixelsOfPNG(std::as_bytes(std::span(content)));
}

std::string PixelDifference::text() const
{
    if (!haveSameSize)
        return "the sizes differ";
    return std::to_string(differingCount) + " pixels differ, the largest difference is " + std::to_string(largest) + ", the mean " + std::to_string(mean);
}

PixelDifference pixelDifference(const Pixels& one, const Pixels& other, int threshold)
{
    PixelDifference difference;
    difference.haveSameSize = one.width == other.width && one.height == other.height;
    if (!difference.haveSameSize)
        return difference;
    std::size_t sum = 0;
    for (std::size_t i = 0; i < one.bytes.size(); i += 3) {
        int pixelLargest = 0;
        for (std::size_t component = i; component < i + 3; ++component) {
            const int distance = std::abs(static_cast<int>(one.bytes[component]) - static_cast<int>(other.bytes[component]));
            pixelLargest = std::max(pixelLargest, distance);
            sum += static_cast<std::size_t>(distance);
        }
        difference.largest = std::max(difference.largest, pixelLargest);
        difference.differingCount += pixelLargest > threshold ? 1 : 0;
    }
    difference.mean = one.bytes.empty() ? 0.0 : static_cast<double>(sum) / static_cast<double>(one.bytes.size());
    return difference;
}

} // namespace TOLVGraphing::testing_support
