#pragma once

#include <tests/desktop/Pixels.h>

#include <cstdint>

namespace TOLVGraphing::testing_support {

/// A framebuffer object that stays bound in the context that was current when it was made. A unit of the scene is a point; y grows upwards from the lower-left corner, z from -1 (far) to 1 (near). It goes with the context.
class PixelCanvas {
public:
    /// White, with blending by alpha and rectangle textures on, as scenes have it.
    PixelCanvas(int width, int height, double pixelsPerPoint = 1.0);

    /// White again, and nothing near. Its context has to be current, here and below.
    void clear() const;
    /// What was drawn, rows from the top.
    [[nodiscard]] Pixels pixels() const;

private:
    int m_width;
    int m_height;
    std::uint32_t m_framebuffer = 0;
};

} // namespace TOLVGraphing::testing_support
