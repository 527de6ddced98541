#include "StringTexture.h"

#include "../platform/foundation/Log.h"
#include "../platform/opengl/OpenGLConstants.h"
#include "../platform/opengl/StringRasterizer.h"

#include <utility>

namespace TOLVGraphing {

namespace {

const Color kTextColor(1.0, 1.0, 1.0, 1.0);
const Color kClearColor(1.0, 1.0, 1.0, 0.0);

/// One corner of the quad: where it stands in the texture and in the scene.
void emitCorner(OpenGLFunctions& gl, double s, double t, double x, double y)
{
    gl.texCoord2f(static_cast<float>(s), static_cast<float>(t));
    gl.vertex2f(static_cast<float>(x), static_cast<float>(y));
}

/// Makes a texture of the bitmap and answers its name.
std::uint32_t uploadedTexture(OpenGLFunctions& gl, const StringBitmap& bitmap)
{
    std::uint32_t name = 0;
    gl.pixelStorei(kGLUnpackRowLength, bitmap.pixelWidth);
    gl.pixelStorei(kGLUnpackAlignment, 1);
    gl.genTextures(1, &name);
    gl.bindTexture(kGLTextureRectangle, name);
    gl.texParameteri(kGLTextureRectangle, kGLTextureMinFilter, kGLLinear);
    gl.texImage2D(kGLTextureRectangle, 0, static_cast<std::int32_t>(kGLRGBA), bitmap.pixelWidth, bitmap.pixelHeight, 0, bitmap.hasAlpha ? kGLRGBA : kGLRGB, kGLUnsignedByte,
        bitmap.pixels.data());
    return name;
}

} // namespace

StringTexture::StringTexture(AttributedString string, const Color& textColor, const Color& boxColor, const Color& borderColor)
    : m_string(std::move(string))
    , m_textColor(textColor)
    , m_boxColor(boxColor)
    , m_borderColor(borderColor)
{
}

StringTexture::StringTexture(AttributedString string) : StringTexture(std::move(string), kTextColor, kClearColor, kClearColor) {}

StringTexture::StringTexture(std::string string, TextAttributes attributes, const Color& textColor, const Color& boxColor, const Color& borderColor)
    : StringTexture(AttributedString(std::move(string), std::move(attributes)), textColor, boxColor, borderColor)
{
}

StringTexture::StringTexture(std::string string, TextAttributes attributes) : StringTexture(AttributedString(std::move(string), std::move(attributes))) {}

StringTexture::~StringTexture()
{
    deleteTexture();
}

void StringTexture::setString(AttributedString string)
{
    deleteTexture();
    m_string = std::move(string);
    if (!m_staticFrame)
        m_frameSize = {};
}

void StringTexture::setString(std::string string, TextAttributes withAttributes)
{
    setString(AttributedString(std::move(string), std::move(withAttributes)));
}

void StringTexture::setTextColor(const Color& color)
{
    deleteTexture();
    m_textColor = color;
}

void StringTexture::setBoxColor(const Color& color)
{
    deleteTexture();
    m_boxColor = color;
}

void StringTexture::setBorderColor(const Color& color)
{
    deleteTexture();
    m_borderColor = color;
}

void StringTexture::setMargins(const Size& size)
{
    deleteTexture();
    m_marginSize = size;
    if (!m_staticFrame)
        m_frameSize = {};
}

Size StringTexture::frameSize() const
{
    if (!m_staticFrame && m_frameSize == Size()) {
        const Size size = m_string.size();
        m_frameSize = {size.width + 2.0 * m_marginSize.width, size.height + 2.0 * m_marginSize.height};
    }
    return m_frameSize;
}

void StringTexture::useStaticFrame(const Size& size)
{
    deleteTexture();
    m_frameSize = size;
    m_staticFrame = true;
}

void StringTexture::useDynamicFrame()
{
    if (!m_staticFrame)
        return;
    deleteTexture();
    m_staticFrame = false;
    m_frameSize = {};
}

void StringTexture::setPixelsPerPoint(double pixelsPerPoint)
{
    deleteTexture();
    m_pixelsPerPoint = pixelsPerPoint;
}

void StringTexture::genTexture()
{
    deleteTexture();
    const auto rasterizer = stringRasterizer();
    const StringFrame frame{frameSize(), {m_marginSize.width, m_marginSize.height}, m_pixelsPerPoint};
    const StringBitmap bitmap = rasterizer ? rasterizer->bitmapOfString(m_string, frame) : StringBitmap();
    m_texSize = bitmap.size;
    const auto context = currentOpenGLContext();
    if (!context) {
        writeLog("StringTexture -genTexture: Failure to get current OpenGL context");
        return;
    }
    if (bitmap.isEmpty())
        return;
    context->perform([&](OpenGLFunctions& gl) { m_texName = uploadedTexture(gl, bitmap); });
    if (m_texName != 0)
        m_context = context;
}

void StringTexture::deleteTexture()
{
    if (m_texName == 0 || !m_context)
        return;
    m_context->perform([this](OpenGLFunctions& gl) { gl.deleteTextures(1, &m_texName); });
    m_texName = 0;
    m_context = nullptr;
}

bool StringTexture::ensureTexture()
{
    if (m_texName == 0)
        genTexture();
    return m_texName != 0;
}

void StringTexture::drawWithBounds(const Rect& bounds)
{
    if (!ensureTexture())
        return;
    m_context->perform([&](OpenGLFunctions& gl) {
        gl.bindTexture(kGLTextureRectangle, m_texName);
        gl.begin(kGLQuads);
        // The first row of the texture is the top of the text and stands at the upper edge.
        emitCorner(gl, 0.0, m_texSize.height, bounds.x(), bounds.y());
        emitCorner(gl, 0.0, 0.0, bounds.x(), bounds.maxY());
        emitCorner(gl, m_texSize.width, 0.0, bounds.maxX(), bounds.maxY());
        emitCorner(gl, m_texSize.width, m_texSize.height, bounds.maxX(), bounds.y());
        gl.end();
    });
}

void StringTexture::drawAtPoint(Point point)
{
    if (ensureTexture())
        drawWithBounds({point, m_texSize});
}

} // namespace TOLVGraphing
