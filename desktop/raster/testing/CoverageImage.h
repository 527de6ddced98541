#pragma once

#include "../UnionCoverage.h"

#include <string>
#include <vector>

namespace TOLVGraphing::raster {

/// What a coverage hands out, put together as one picture.
class CoverageImage {
public:
    CoverageImage(const PixelBox& box, UnionCoverage& coverage)
        : m_box(box)
        , m_pixels(box.isEmpty() ? 0 : static_cast<std::size_t>(box.width) * static_cast<std::size_t>(box.height))
    {
        coverage.forEachStrip([&](const CoverageStrip& strip) {
            ++m_stripCount;
            for (int y = 0; y < strip.box.height; ++y) {
                for (int x = 0; x < strip.box.width; ++x)
                    m_pixels.at(index(strip.box.left - box.left + x, strip.box.top - box.top + y)) = strip.coverage[y * strip.stride + x];
            }
        });
    }

    int at(int x, int y) const { return m_pixels.at(index(x, y)); }
    int stripCount() const { return m_stripCount; }

    /// The rows from top to bottom: "0 255 / 128 0".
    std::string text() const
    {
        std::string text;
        for (int y = 0; y < m_box.height; ++y) {
            text += y == 0 ? "" : " / ";
            for (int x = 0; x < m_box.width; ++x)
                text += (x == 0 ? "" : " ") + std::to_string(at(x, y));
        }
        return text;
    }

private:
    std::size_t index(int x, int y) const { return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_box.width) + static_cast<std::size_t>(x); }

    PixelBox m_box;
    std::vector<std::uint8_t> m_pixels;
    int m_stripCount = 0;
};

} // namespace TOLVGraphing::raster
