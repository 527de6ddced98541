#pragma once

#include "OutputError.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <functional>

namespace TOLVGraphing {

class DrawingContext;

/// Pixels in a host's memory, the top row first: 32 bits each in the machine's byte order, alpha in the highest eight, then red, green and blue, premultiplied by alpha. Not owned.
struct PixelMemory {
    /// The first pixel of the top row, for as long as something is drawn; at an address that is a multiple of 4.
    unsigned char* pixels = nullptr;
    /// Pixels, at most 32,767 each.
    int width = 0;
    int height = 0;
    /// From the start of one row to that of the next: a multiple of 4, at least four times the width and less than 2 GiB. Not negative: images whose bottom row comes first are none.
    std::ptrdiff_t bytesPerRow = 0;
};

/// Runs the drawing (not empty) once, in the calling thread, on top of what is in the memory: the way for a host with pixels of its own, such as a toolkit's image or a shared buffer, to show a view by `view.displayInContext(context)`. The context's origin is the lower-left corner of the image, y growing upwards, and a point is `pixelsPerPoint` pixels (finite, above zero) wide and high; it is the current context
/// meanwhile. Does nothing for an image without pixels. Several threads may draw at a time, each on memory of its own. Texts are set by the desktop's text system (see installDesktopTextSystem). Errors of the drawing pass through; memory that cannot be an image and failures of the drawing library throw OutputError.
TOLV_EXPORT void drawOnPixels(const PixelMemory& memory, double pixelsPerPoint, const std::function<void(DrawingContext&)>& drawing);

} // namespace TOLVGraphing
