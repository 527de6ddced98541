#include "EpoxyFunctions.h"

#include "TOLVGraphing/platform/opengl/OpenGLConstants.h"

#include <epoxy/gl.h>

namespace TOLVGraphing::opengl {

static_assert(kGLLineStrip == GL_LINE_STRIP && kGLQuads == GL_QUADS);
static_assert(kGLUnpackRowLength == GL_UNPACK_ROW_LENGTH && kGLUnpackAlignment == GL_UNPACK_ALIGNMENT);
static_assert(kGLUnsignedByte == GL_UNSIGNED_BYTE && kGLRGB == GL_RGB && kGLRGBA == GL_RGBA);
static_assert(kGLLinear == GL_LINEAR && kGLTextureMinFilter == GL_TEXTURE_MIN_FILTER && kGLTextureRectangle == GL_TEXTURE_RECTANGLE);

void EpoxyFunctions::pixelStorei(std::uint32_t name, std::int32_t value)
{
    glPixelStorei(name, value);
}

void EpoxyFunctions::genTextures(std::int32_t count, std::uint32_t* names)
{
    glGenTextures(count, names);
}

void EpoxyFunctions::deleteTextures(std::int32_t count, const std::uint32_t* names)
{
    glDeleteTextures(count, names);
}

void EpoxyFunctions::bindTexture(std::uint32_t target, std::uint32_t name)
{
    glBindTexture(target, name);
}

void EpoxyFunctions::texParameteri(std::uint32_t target, std::uint32_t name, std::int32_t value)
{
    glTexParameteri(target, name, value);
}

void EpoxyFunctions::texImage2D(std::uint32_t target, std::int32_t level, std::int32_t internalFormat, std::int32_t width, std::int32_t height, std::int32_t border,
    std::uint32_t format, std::uint32_t type, const void* pixels)
{
    glTexImage2D(target, level, internalFormat, width, height, border, format, type, pixels);
}

void EpoxyFunctions::begin(std::uint32_t mode)
{
    glBegin(mode);
}

void EpoxyFunctions::end()
{
    glEnd();
}

void EpoxyFunctions::texCoord2f(float s, float t)
{
    glTexCoord2f(s, t);
}

void EpoxyFunctions::vertex2f(float x, float y)
{
    glVertex2f(x, y);
}

void EpoxyFunctions::vertex3f(float x, float y, float z)
{
    glVertex3f(x, y, z);
}

} // namespace TOLVGraphing::opengl
