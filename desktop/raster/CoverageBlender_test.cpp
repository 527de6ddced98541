#include "CoverageBlender.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace TOLVGraphing::raster;

namespace {

/// The product of two levels of which 255 is 1, from the definition. No product lies halfway between two levels.
std::uint32_t product(std::uint32_t a, std::uint32_t b)
{
    return static_cast<std::uint32_t>(std::lround(a * b / 255.0));
}

std::uint32_t channel(std::uint32_t pixel, unsigned shift)
{
    return (pixel >> shift) & 255U;
}

std::uint32_t blended(std::uint32_t below, std::uint32_t color, std::uint32_t coverage)
{
    std::uint32_t result = 0;
    for (unsigned shift = 0; shift < 32; shift += 8)
        result |= (product(channel(color, shift), coverage) + product(channel(below, shift), 255U - product(color >> 24U, coverage))) << shift;
    return result;
}

} // namespace

TEST(CoverageBlender, everyLevelIsBlendedByTheDefinition)
{
    constexpr int kWidth = 259;
    std::vector<std::uint8_t> coverage(kWidth);
    for (std::size_t i = 0; i < coverage.size(); ++i)
        coverage[i] = static_cast<std::uint8_t>(i * 37U);
    for (const std::uint32_t color : {0xFF0072B2U, 0xFFFFFFFFU, 0x80402010U, 0x01010000U, 0x00000000U, 0xFE00FE01U}) {
        for (const std::uint32_t below : {0xFFFFFFFFU, 0x00000000U, 0xFF123456U, 0x7F7F0003U}) {
            std::vector<std::uint32_t> pixels(kWidth, below);
            const CoverageBlender blender({reinterpret_cast<unsigned char*>(pixels.data()), kWidth * 4}, {0, 0, kWidth, 1}, color);
            blender.paint({{0, 0, kWidth, 1}, coverage.data(), kWidth});
            for (std::size_t i = 0; i < pixels.size(); ++i)
                EXPECT_EQ(pixels[i], blended(below, color, coverage[i])) << std::hex << color << " over " << below << ", covered " << static_cast<int>(coverage[i]);
        }
    }
}

TEST(CoverageBlender, onlyPixelsInBoundsAreChanged)
{
    constexpr int kSize = 40;
    const std::vector<std::uint8_t> coverage(100 * 100, 255);
    for (const PixelBox& bounds : {PixelBox{3, 5, 17, 9}, PixelBox{0, 0, kSize, kSize}, PixelBox{39, 39, 1, 1}, PixelBox{0, 0, 0, 0}}) {
        for (const PixelBox& strip : {PixelBox{-20, -20, 100, 100}, PixelBox{7, 6, 4, 100}, PixelBox{30, 0, 5, 5}, PixelBox{50, 50, 8, 8}}) {
            std::vector<std::uint32_t> pixels(kSize * kSize, 0U);
            const CoverageBlender blender({reinterpret_cast<unsigned char*>(pixels.data()), kSize * 4}, bounds, 0xFF010203U);
            blender.paint({strip, coverage.data(), 100});
            const auto isIn = [](const PixelBox& box, int x, int y) { return x >= box.left && x < box.left + box.width && y >= box.top && y < box.top + box.height; };
            for (int y = 0; y < kSize; ++y) {
                for (int x = 0; x < kSize; ++x)
                    EXPECT_EQ(pixels[static_cast<std::size_t>(y * kSize + x)], isIn(bounds, x, y) && isIn(strip, x, y) ? 0xFF010203U : 0U) << x << ", " << y;
            }
        }
    }
}
