#pragma once

#include "TOLVGraphing/platform/opengl/StringRasterizer.h"
#include <TOLVMath/Export.h>

#include <cstdint>

namespace TOLVGraphing {

/// Draws texts for an OpenGL scene with the fonts and the image context that PNG files are drawn with. It needs no OpenGL. Safe to use from several threads.
///
/// Bitmaps have an alpha channel. A frame is rounded up to whole pixels, and its lower-left corner is that of the bitmap. A frame or a scale that is not finite and above zero gives an empty bitmap, and so do more than 16,384 pixels
/// a side or 67,108,864 in all, with a line in the log. Throws OutputError where the drawing library fails.
class TOLV_EXPORT DesktopStringRasterizer final : public StringRasterizer {
public:
    /// What the components are. Straight ones suit the blend function that most scenes have, glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA): clear pixels have the text's colour, so that nothing dark shines through at the
    /// edges where pixels are interpolated. Premultiplied ones suit scenes with glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA).
    enum class Components : std::uint8_t { Straight, Premultiplied };

    /// Straight components by default.
    explicit DesktopStringRasterizer(Components components = Components::Straight) : m_components(components) {}

    [[nodiscard]] StringBitmap bitmapOfString(const AttributedString& string, const StringFrame& frame) const override;

private:
    Components m_components;
};

/// Makes the bitmaps of every string texture of the process from now on. Programs call it once at their start, besides `installDesktopTextSystem`. Any thread may call it.
TOLV_EXPORT void installDesktopStringRasterizer(DesktopStringRasterizer::Components components = DesktopStringRasterizer::Components::Straight);

} // namespace TOLVGraphing
