#pragma once

#include "../geometry/Point.h"
#include "../text/AttributedString.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace TOLVGraphing {

/// What a text is drawn on: a frame with the origin in its lower-left corner, y growing upwards.
struct StringFrame {
    /// Width and height in points.
    Size size;
    /// Where the lower-left corner of the text's line box stands, in points.
    Point textOrigin;
    /// Pixels per point.
    double scale = 1.0;
};

/// The pixels of a text, clear where nothing is drawn. Empty by default.
struct StringBitmap {
    /// Columns and rows.
    std::int32_t pixelWidth = 0;
    std::int32_t pixelHeight = 0;
    /// What the picture takes of them from the upper-left corner, in pixels: all of them, unless the rasterizer reports a fraction.
    Size size;
    /// Four bytes a pixel (red, green, blue, alpha); otherwise three.
    bool hasAlpha = true;
    /// The components have been multiplied by alpha. Straight components suit glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA), premultiplied ones glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA).
    bool isPremultiplied = false;
    /// Rows from the top of the text without gaps between them.
    std::vector<std::uint8_t> pixels;

    /// True without pixels.
    [[nodiscard]] bool isEmpty() const { return pixels.empty(); }
};

/// Turns texts into pixels: what a desktop supplies for texts in an OpenGL scene.
class TOLV_EXPORT StringRasterizer {
public:
    virtual ~StringRasterizer();

    /// Draws the text with its own attributes, and nothing else, on a frame that is rounded up to whole pixels; what sticks out of it is cut off. Answers an empty bitmap for a frame that has no pixels, or more
    /// than the rasterizer makes.
    [[nodiscard]] virtual StringBitmap bitmapOfString(const AttributedString& string, const StringFrame& frame) const = 0;
};

/// The rasterizer in force for the whole process, or null, the default: bitmaps are then empty.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<const StringRasterizer> stringRasterizer();
/// Installs a rasterizer (shared) for the process; null takes it away. Safe to call from any thread.
TOLV_EXPORT void setStringRasterizer(std::shared_ptr<const StringRasterizer> rasterizer);

} // namespace TOLVGraphing
