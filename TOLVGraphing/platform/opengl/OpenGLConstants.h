#pragma once

#include <cstdint>

namespace TOLVGraphing {

/// A value of the OpenGL standard that the library uses, so that it builds without OpenGL's headers: the constant of the same name with GL_ before it.
inline constexpr std::uint32_t kGLLineStrip = 3;
inline constexpr std::uint32_t kGLQuads = 7;
inline constexpr std::uint32_t kGLUnpackRowLength = 3314;
inline constexpr std::uint32_t kGLUnpackAlignment = 3317;
inline constexpr std::uint32_t kGLUnsignedByte = 5121;
inline constexpr std::uint32_t kGLRGB = 6407;
inline constexpr std::uint32_t kGLRGBA = 6408;
inline constexpr std::int32_t kGLLinear = 9729;
inline constexpr std::uint32_t kGLTextureMinFilter = 10241;
/// GL_TEXTURE_RECTANGLE, a target whose texture coordinates are texels, not fractions.
inline constexpr std::uint32_t kGLTextureRectangle = 34037;

} // namespace TOLVGraphing
