#include "PixelDrawing.h"

#include "../cairo/CairoContext.h"
#include "../cairo/CairoPointers.h"
#include "TOLVGraphing/platform/graphics/CurrentContext.h"

#include <cmath>
#include <limits>
#include <string>

namespace TOLVGraphing {

namespace {

void requireSuccess(cairo_status_t status)
{
    if (status != CAIRO_STATUS_SUCCESS)
        throw OutputError(std::string("cannot draw on the pixels: ") + cairo_status_to_string(status));
}

} // namespace

void drawOnPixels(const PixelMemory& memory, double pixelsPerPoint, const std::function<void(DrawingContext&)>& drawing)
{
    if (memory.width <= 0 || memory.height <= 0)
        return;
    if (!memory.pixels)
        throw OutputError("cannot draw on the pixels: there is no memory; expected room for " + std::to_string(memory.width) + " x " + std::to_string(memory.height) + " pixels");
    if (memory.bytesPerRow % 4 != 0 || memory.bytesPerRow / 4 < memory.width || memory.bytesPerRow > std::numeric_limits<int>::max())
        throw OutputError("cannot draw on the pixels: the memory has " + std::to_string(memory.bytesPerRow)
            + " bytes a row; expected a multiple of 4, less than 2147483648, with room for " + std::to_string(memory.width) + " pixels");
    if (!std::isfinite(pixelsPerPoint) || !(pixelsPerPoint > 0.0))
        throw OutputError("cannot draw on the pixels: the scale has to be finite and above 0");
    const cairo::SurfacePointer surface(cairo_image_surface_create_for_data(memory.pixels, CAIRO_FORMAT_ARGB32, memory.width, memory.height, static_cast<int>(memory.bytesPerRow)));
    requireSuccess(cairo_surface_status(surface.get()));
    const cairo::ContextPointer target(cairo_create(surface.get()));
    cairo::setUpwardCoordinates(target.get(), static_cast<double>(memory.height), pixelsPerPoint);
    {
        cairo::CairoContext context(target.get());
        const CurrentContextScope scope(context);
        drawing(context);
    }
    cairo_surface_flush(surface.get());
    requireSuccess(cairo_status(target.get()));
}

} // namespace TOLVGraphing
