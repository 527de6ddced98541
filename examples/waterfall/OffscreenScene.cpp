#include "OffscreenScene.h"

#include <desktop/output/AtomicFile.h>
#include <desktop/output/PixelRows.h>

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace {

constexpr GLint kSamples = 4;

/// A compatibility context that is current for the life of the object. Its display is the process's and stays started.
class SurfacelessContext {
public:
    SurfacelessContext()
    {
        if (!epoxy_has_egl() || !epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
            throw std::runtime_error("there is no EGL that draws without a surface; expected Mesa's (EGL_MESA_platform_surfaceless)");
        m_display = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
        if (m_display == EGL_NO_DISPLAY || !eglInitialize(m_display, nullptr, nullptr))
            throw std::runtime_error("EGL cannot be started without a display");
        const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        eglBindAPI(EGL_OPENGL_API);
        if (eglChooseConfig(m_display, wanted, &config, 1, &count) && count > 0)
            m_context = eglCreateContext(m_display, config, EGL_NO_CONTEXT, nullptr);
        if (m_context == EGL_NO_CONTEXT || !eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, m_context))
            throw std::runtime_error("EGL has no context of OpenGL that draws without a surface");
    }
    ~SurfacelessContext()
    {
        eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(m_display, m_context);
    }
    SurfacelessContext(const SurfacelessContext&) = delete;
    SurfacelessContext& operator=(const SurfacelessContext&) = delete;

private:
    EGLDisplay m_display = EGL_NO_DISPLAY;
    EGLContext m_context = EGL_NO_CONTEXT;
};

/// A framebuffer with colours only, which goes with its context.
GLuint framebufferWithSamples(GLint samples, int width, int height)
{
    GLuint framebuffer = 0;
    GLuint colors = 0;
    glGenFramebuffers(1, &framebuffer);
    glGenRenderbuffers(1, &colors);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glBindRenderbuffer(GL_RENDERBUFFER, colors);
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, width, height);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colors);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        throw std::runtime_error("OpenGL has no framebuffer of " + std::to_string(width) + " by " + std::to_string(height) + " pixels");
    return framebuffer;
}

/// The pixels of the framebuffer that is read from, rows from the top.
std::vector<std::uint32_t> readPixels(int width, int height)
{
    const auto columns = static_cast<std::size_t>(width);
    const auto rows = static_cast<std::size_t>(height);
    std::vector<std::uint32_t> pixels(columns * rows);
    glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels.data());
    for (std::size_t row = 0; row < rows / 2; ++row) {
        const auto upper = pixels.begin() + static_cast<std::ptrdiff_t>(row * columns);
        std::swap_ranges(upper, upper + static_cast<std::ptrdiff_t>(columns), pixels.end() - static_cast<std::ptrdiff_t>((row + 1) * columns));
    }
    return pixels;
}

} // namespace

void writeScene(const std::string& path, int width, int height, double pixelsPerPoint, const std::function<void(int width, int height)>& drawing)
{
    const SurfacelessContext context;
    GLint mostSamples = 0;
    GLint mostPixelsASide = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &mostSamples);
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &mostPixelsASide);
    if (width < 1 || height < 1 || width > mostPixelsASide || height > mostPixelsASide)
        throw std::runtime_error(
            "the picture would have " + std::to_string(width) + " by " + std::to_string(height) + " pixels; expected 1 to " + std::to_string(mostPixelsASide) + " a side");
    const GLuint plain = framebufferWithSamples(0, width, height);
    const GLuint sampled = framebufferWithSamples(std::min(kSamples, mostSamples), width, height);
    drawing(width, height);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, sampled);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, plain);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, plain);
    const std::vector<std::uint32_t> pixels = readPixels(width, height);
    if (const GLenum error = glGetError(); error != GL_NO_ERROR)
        throw std::runtime_error("OpenGL error " + std::to_string(error));
    TOLVGraphing::output::PixelRows rows;
    rows.data = reinterpret_cast<const unsigned char*>(pixels.data());
    rows.stride = static_cast<std::size_t>(width) * 4;
    rows.width = static_cast<std::uint32_t>(width);
    rows.height = static_cast<std::uint32_t>(height);
    rows.pixelsPerInch = 72.0 * pixelsPerPoint;
    rows.creator = "TOLVGraphing";
    TOLVGraphing::writeFileAtomically(path, TOLVGraphing::output::encodedPNG(rows));
}
