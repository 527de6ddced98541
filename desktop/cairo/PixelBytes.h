#pragma once

#include "TOLVGraphing/platform/graphics/Color.h"

#include <cstdint>

// Arithmetic on the four bytes of a pixel, to the byte as Cairo has it: products over 255, rounded to nearest.

namespace TOLVGraphing::cairo {

/// Two of a pixel's four bytes, with a free byte above each.
constexpr std::uint32_t kTwoBytes = 0x00FF00FF;
/// How a product of bytes over 255 is rounded when it lies in the middle. Cairo's own loops over opaque colours and what it paints through masks differ there.
constexpr std::uint32_t kHalvesDown = 0x007F007F;
constexpr std::uint32_t kHalvesUp = 0x00800080;

/// The premultiplied pixel of a colour: sixteen bits a component, of which the upper eight count.
inline std::uint32_t pixelOfColor(const Color& color)
{
    const Color painted = color.clamped();
    const double alpha = painted.alphaComponent();
    const auto component = [](double value) { return static_cast<std::uint32_t>(value * 65535.0 + 0.5) >> 8U; };
    return component(alpha) << 24U | component(painted.redComponent() * alpha) << 16U | component(painted.greenComponent() * alpha) << 8U
        | component(painted.blueComponent() * alpha);
}

inline std::uint32_t twoBytesTimes(std::uint32_t bytes, std::uint32_t factor, std::uint32_t half)
{
    const std::uint32_t product = (bytes & kTwoBytes) * factor + half;
    return ((product + ((product >> 8U) & kTwoBytes)) >> 8U) & kTwoBytes;
}

/// The sums of both bytes, at most 255.
inline std::uint32_t twoBytesPlus(std::uint32_t one, std::uint32_t other)
{
    const std::uint32_t sum = one + other;
    return (sum | (0x01000100U - ((sum >> 8U) & kTwoBytes))) & kTwoBytes;
}

inline std::uint32_t pixelTimes(std::uint32_t pixel, std::uint32_t factor, std::uint32_t half)
{
    return twoBytesTimes(pixel, factor, half) | twoBytesTimes(pixel >> 8U, factor, half) << 8U;
}

inline std::uint32_t pixelPlus(std::uint32_t one, std::uint32_t other)
{
    return twoBytesPlus(one & kTwoBytes, other & kTwoBytes) | twoBytesPlus((one >> 8U) & kTwoBytes, (other >> 8U) & kTwoBytes) << 8U;
}

} // namespace TOLVGraphing::cairo
