#pragma once

#include "ImagePixels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TOLVGraphing::cairo {

/// The coverage of a small shape in one colour, made ready to be laid over 32-bit pixels at many places: what is added to each pixel and what is kept of it. The bytes are those that Cairo gives when it fills or strokes
/// the shape.
class ColorStamp {
public:
    /// Nothing to paint.
    ColorStamp() = default;
    /// The mask's range says where the stamp is, relative to wherever it is painted. The colour is premultiplied, with alpha in the highest eight bits.
    ColorStamp(const CoverageMask& mask, std::uint32_t color);

    /// The pixels that painting reads and writes: those of the mask, and up to three more to the right that stay as they are. Empty when nothing is covered.
    [[nodiscard]] const PixelRange& range() const { return m_range; }
    /// About how many bytes of memory it takes.
    [[nodiscard]] std::size_t byteCount() const { return sizeof *this + m_groups.size() * sizeof(Group); }

    /// `corner` is the pixel in the upper left corner of the range.
    void paint(unsigned char* corner, std::ptrdiff_t stride) const;

private:
    static constexpr std::size_t kPixels = 4;
    static constexpr std::size_t kBytes = 4 * kPixels;

    /// Pixels that are side by side, some of them covered.
    struct Group {
        std::int32_t row = 0;
        /// Bytes from the left edge of the range.
        std::int32_t offset = 0;
        std::array<std::uint32_t, kPixels> added{};
        /// The part of each byte that is kept, in 255ths.
        std::array<std::uint16_t, kBytes> kept{};
    };

    PixelRange m_range;
    std::uint16_t m_half = 0;
    std::vector<Group> m_groups;
};

} // namespace TOLVGraphing::cairo
