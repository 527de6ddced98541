#include "ColorStamp.h"

#include "../raster/Lanes.h"
#include "PixelBytes.h"

#include <algorithm>

namespace TOLVGraphing::cairo {

namespace {

constexpr std::uint32_t kOpaque = 255;

} // namespace

ColorStamp::ColorStamp(const CoverageMask& mask, std::uint32_t color)
{
    const std::uint32_t half = color >> 24U == kOpaque ? kHalvesDown : kHalvesUp;
    m_half = static_cast<std::uint16_t>(half);
    constexpr auto kStep = static_cast<int>(kPixels);
    const int width = mask.range.right - mask.range.left;
    for (int row = 0; row < mask.range.bottom - mask.range.top; ++row) {
        const std::uint8_t* coverage = mask.coverage + row * mask.stride;
        for (int left = 0; left < width; left += kStep) {
            const int count = std::min(kStep, width - left);
            if (std::all_of(coverage + left, coverage + left + count, [](std::uint8_t covered) { return covered == 0; }))
                continue;
            Group group{row, left * 4, {}, {}};
            group.kept.fill(static_cast<std::uint16_t>(kOpaque));
            for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
                const std::uint32_t added = pixelTimes(color, coverage[static_cast<std::size_t>(left) + i], half);
                group.added[i] = added;
                std::fill_n(group.kept.begin() + static_cast<std::ptrdiff_t>(i * 4), 4, static_cast<std::uint16_t>(kOpaque - (added >> 24U)));
            }
            m_groups.push_back(group);
        }
    }
    if (!m_groups.empty())
        m_range = {mask.range.left, mask.range.top, mask.range.left + (width + kStep - 1) / kStep * kStep, mask.range.bottom};
}

#ifdef TOLVGRAPHING_VECTOR_LANES

void ColorStamp::paint(unsigned char* corner, std::ptrdiff_t stride) const
{
    const __m128i none = _mm_setzero_si128();
    const __m128i half = _mm_set1_epi16(static_cast<std::int16_t>(m_half));
    // Times 257 divided by 65,536 is the sum of a number's 256th part and that one's 256th part, divided by 256.
    const __m128i factor = _mm_set1_epi16(257);
    for (const Group& group : m_groups) {
        auto* place = reinterpret_cast<__m128i*>(corner + group.row * stride + group.offset);
        const auto* kept = reinterpret_cast<const __m128i*>(group.kept.data());
        const __m128i pixels = _mm_loadu_si128(place);
        const __m128i first = _mm_mullo_epi16(_mm_unpacklo_epi8(pixels, none), _mm_loadu_si128(kept));
        const __m128i second = _mm_mullo_epi16(_mm_unpackhi_epi8(pixels, none), _mm_loadu_si128(kept + 1));
        const __m128i left = _mm_packus_epi16(_mm_mulhi_epu16(_mm_add_epi16(first, half), factor), _mm_mulhi_epu16(_mm_add_epi16(second, half), factor));
        _mm_storeu_si128(place, _mm_adds_epu8(left, _mm_loadu_si128(reinterpret_cast<const __m128i*>(group.added.data()))));
    }
}

#else

void ColorStamp::paint(unsigned char* corner, std::ptrdiff_t stride) const
{
    const std::uint32_t half = m_half * 0x00010001U;
    for (const Group& group : m_groups) {
        auto* pixels = reinterpret_cast<std::uint32_t*>(corner + group.row * stride + group.offset);
        for (std::size_t i = 0; i < kPixels; ++i)
            pixels[i] = pixelPlus(group.added[i], pixelTimes(pixels[i], group.kept[4 * i], half));
    }
}

#endif

} // namespace TOLVGraphing::cairo
