#pragma once

#include "../platform/geometry/Rect.h"
#include "../platform/graphics/Color.h"
#include "../platform/opengl/OpenGLContext.h"
#include "../platform/text/AttributedString.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <memory>
#include <string>

namespace TOLVGraphing {

/// A text in an OpenGL scene: it is drawn once into a rectangle texture (GL_TEXTURE_RECTANGLE) and then as a textured quad wherever it is wanted. Nothing but the text is drawn, with its own attributes; the three
/// colours are kept for the host and change nothing in the picture.
///
/// The texture is made when it is first drawn, in the context that is current then, and belongs to that context: binding, drawing and deleting go there, whichever context is current. Setters free it, so that the
/// next draw makes it anew. Without a current context (see OpenGLSystem) nothing is drawn and each attempt writes one line to the log; without pixels (see StringRasterizer) nothing is drawn.
///
/// The host enables GL_TEXTURE_RECTANGLE and sets blending and colour; with the desktop's rasterizer glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA) and glColor4f(1, 1, 1, 1) show the text as it looks on paper. Making
/// a texture leaves GL_UNPACK_ROW_LENGTH and GL_UNPACK_ALIGNMENT set for it. Only the thread that owns the context uses the object, which has to go, or its texture has to be deleted, before its context does.
class TOLV_EXPORT StringTexture {
public:
    /// A text (copied) with attributes of its own, which say how it looks, and the three colours. By default the text colour is opaque white, the other two are white and clear.
    explicit StringTexture(AttributedString string);
    StringTexture(AttributedString string, const Color& textColor, const Color& boxColor, const Color& borderColor);
    StringTexture(std::string string, TextAttributes attributes);
    StringTexture(std::string string, TextAttributes attributes, const Color& textColor, const Color& boxColor, const Color& borderColor);
    /// Frees the texture.
    ~StringTexture();
    StringTexture(const StringTexture&) = delete;
    StringTexture& operator=(const StringTexture&) = delete;

    // Properties. Every setter frees the texture first.

    /// The texture's name, 0 while there is none.
    [[nodiscard]] std::uint32_t texName() const { return m_texName; }
    /// The size of the last bitmap in pixels, as it reported it: what the coordinates of a rectangle texture span.
    [[nodiscard]] Size texSize() const { return m_texSize; }
    /// Copied. The text.
    [[nodiscard]] const AttributedString& string() const { return m_string; }
    /// A frame that is not static is measured again when it is next asked for.
    void setString(AttributedString string);
    void setString(std::string string, TextAttributes withAttributes);
    /// Copied. Kept for the host; the text is drawn in the colour of its attributes.
    [[nodiscard]] const Color& textColor() const { return m_textColor; }
    void setTextColor(const Color& color);
    [[nodiscard]] const Color& boxColor() const { return m_boxColor; }
    void setBoxColor(const Color& color);
    [[nodiscard]] const Color& borderColor() const { return m_borderColor; }
    void setBorderColor(const Color& color);
    /// The space left of and right of the text, and below and above it, in points; (1, 1) at first.
    [[nodiscard]] Size marginSize() const { return m_marginSize; }
    /// A frame that is not static is measured again when it is next asked for.
    void setMargins(const Size& size);
    /// The frame has a fixed size; false at first.
    [[nodiscard]] bool staticFrame() const { return m_staticFrame; }
    /// What the text is drawn on, in points: the size that was fixed, or that of the text with its margins, measured when it is first asked for.
    [[nodiscard]] Size frameSize() const;
    /// Fixes the size of the frame in points. The text stands at the margin from the lower-left corner; what sticks out is cut off.
    void useStaticFrame(const Size& size);
    /// The frame follows the text again. A frame that does so already keeps its texture.
    void useDynamicFrame();
    /// Pixels of the bitmap per point of the frame, 1 at first. A scene whose units are the points of a screen with two pixels a point takes 2 and draws with bounds half as large as `texSize`.
    [[nodiscard]] double pixelsPerPoint() const { return m_pixelsPerPoint; }
    void setPixelsPerPoint(double pixelsPerPoint);

    // Making and drawing the texture.

    /// Draws the text and makes a texture of it in the current context, in place of the one there was.
    void genTexture();
    /// Frees the texture in its context.
    void deleteTexture();
    /// Draws the whole texture as a quad that covers the rectangle (units of the scene, y growing upwards).
    void drawWithBounds(const Rect& bounds);
    /// Draws the texture with its lower-left corner at the point, one unit of the scene for each of its pixels.
    void drawAtPoint(Point point);

private:
    /// Makes the texture unless there is one; false where that fails.
    [[nodiscard]] bool ensureTexture();

    std::shared_ptr<OpenGLContext> m_context;
    std::uint32_t m_texName = 0;
    Size m_texSize;
    AttributedString m_string;
    Color m_textColor;
    Color m_boxColor;
    Color m_borderColor;
    bool m_staticFrame = false;
    Size m_marginSize{1.0, 1.0};
    /// (0, 0) while it is not known.
    mutable Size m_frameSize;
    double m_pixelsPerPoint = 1.0;
};

} // namespace TOLVGraphing
