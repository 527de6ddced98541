#include "TestContext.h"

#include <tests/desktop/PrivateDisplay.h>

#include <epoxy/egl.h>
#include <epoxy/gl.h>
#include <epoxy/glx.h>

#include <optional>

namespace TOLVGraphing::testing_support {

namespace {

EGLDisplay surfacelessDisplay()
{
    static const EGLDisplay display = [] {
        EGLDisplay found = epoxy_has_egl() && epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless")
            ? eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr)
            : EGL_NO_DISPLAY;
        return found != EGL_NO_DISPLAY && eglInitialize(found, nullptr, nullptr) ? found : EGL_NO_DISPLAY;
    }();
    return display;
}

/// The display of the tests. The connection stays open: closing it unloads the driver, and what that still holds would count as lost.
struct DisplayConnection {
    PrivateDisplay server;
    Display* display = nullptr;

    DisplayConnection()
    {
        if (!server.name().empty())
            display = XOpenDisplay(server.name().c_str());
    }
};

std::optional<DisplayConnection>& displayConnection()
{
    static std::optional<DisplayConnection> connection;
    return connection;
}

Display* privateDisplay()
{
    auto& connection = displayConnection();
    if (!connection && PrivateDisplay::isInstalled())
        connection.emplace();
    return connection ? connection->display : nullptr;
}

class EGLTestContext final : public TestContext {
public:
    EGLTestContext(EGLDisplay display, EGLContext context, EGLSurface surface) : m_display(display), m_context(context), m_surface(surface) {}
    ~EGLTestContext() override
    {
        if (isCurrent())
            releaseCurrentContext();
        destroySurface();
        eglDestroyContext(m_display, m_context);
    }

    bool makeCurrent() override
    {
        releaseCurrentContext();
        return eglMakeCurrent(m_display, m_surface, m_surface, m_context) == EGL_TRUE;
    }
    [[nodiscard]] bool isCurrent() const override
    {
        return eglGetCurrentContext() == m_context && eglGetCurrentSurface(EGL_DRAW) == m_surface && eglGetCurrentSurface(EGL_READ) == m_surface;
    }
    void destroySurface() override
    {
        if (m_surface != EGL_NO_SURFACE)
            eglDestroySurface(m_display, m_surface);
        m_surface = EGL_NO_SURFACE;
    }

private:
    EGLDisplay m_display;
    EGLContext m_context;
    EGLSurface m_surface;
};

class GLXTestContext final : public TestContext {
public:
    GLXTestContext(Display* display, GLXContext context, GLXPbuffer buffer) : m_display(display), m_context(context), m_buffer(buffer) {}
    ~GLXTestContext() override
    {
        if (glXGetCurrentContext() == m_context)
            releaseCurrentContext();
        glXDestroyContext(m_display, m_context);
        glXDestroyPbuffer(m_display, m_buffer);
    }

    bool makeCurrent() override
    {
        releaseCurrentContext();
        return glXMakeContextCurrent(m_display, m_buffer, m_buffer, m_context) == True;
    }
    [[nodiscard]] bool isCurrent() const override { return glXGetCurrentContext() == m_context && glXGetCurrentDrawable() == m_buffer && glXGetCurrentReadDrawable() == m_buffer; }

private:
    Display* m_display;
    GLXContext m_context;
    GLXPbuffer m_buffer;
};

std::unique_ptr<TestContext> makeEGL(EGLenum api, EGLint renderable, bool hasSurface, std::string& whyNot)
{
    whyNot = "EGL without a surface is not there";
    const EGLDisplay display = surfacelessDisplay();
    if (display == EGL_NO_DISPLAY || !eglBindAPI(api))
        return nullptr;
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, renderable, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted, &config, 1, &count) || count == 0)
        return nullptr;
    const EGLint version[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, api == EGL_OPENGL_ES_API ? version : nullptr);
    if (context == EGL_NO_CONTEXT)
        return nullptr;
    const EGLint size[] = {EGL_WIDTH, 16, EGL_HEIGHT, 16, EGL_NONE};
    return std::make_unique<EGLTestContext>(display, context, hasSurface ? eglCreatePbufferSurface(display, config, size) : EGL_NO_SURFACE);
}

std::unique_ptr<TestContext> makeGLX(std::string& whyNot)
{
    whyNot = "there is no display server with GLX";
    Display* display = privateDisplay();
    if (!display || !epoxy_has_glx(display))
        return nullptr;
    const int wanted[] = {GLX_DRAWABLE_TYPE, GLX_PBUFFER_BIT, GLX_RENDER_TYPE, GLX_RGBA_BIT, None};
    int count = 0;
    GLXFBConfig* configs = glXChooseFBConfig(display, DefaultScreen(display), wanted, &count);
    if (!configs || count == 0)
        return nullptr;
    const int size[] = {GLX_PBUFFER_WIDTH, 16, GLX_PBUFFER_HEIGHT, 16, None};
    const GLXPbuffer buffer = glXCreatePbuffer(display, configs[0], size);
    const GLXContext context = glXCreateNewContext(display, configs[0], GLX_RGBA_TYPE, nullptr, True);
    XFree(configs);
    if (!context)
        return nullptr;
    return std::make_unique<GLXTestContext>(display, context, buffer);
}

} // namespace

std::unique_ptr<TestContext> TestContext::make(Platform platform, std::string& whyNot)
{
    return platform == Platform::EGL ? makeEGL(EGL_OPENGL_API, EGL_OPENGL_BIT, false, whyNot) : makeGLX(whyNot);
}

std::unique_ptr<TestContext> TestContext::makeES(std::string& whyNot)
{
    return makeEGL(EGL_OPENGL_ES_API, EGL_OPENGL_ES2_BIT, false, whyNot);
}

std::unique_ptr<TestContext> TestContext::makeEGLWithSurface(std::string& whyNot)
{
    return makeEGL(EGL_OPENGL_API, EGL_OPENGL_BIT, true, whyNot);
}

void releaseCurrentContext()
{
    const auto& connection = displayConnection();
    if (connection && connection->display && glXGetCurrentContext())
        glXMakeContextCurrent(connection->display, None, None, nullptr);
    if (epoxy_has_egl() && eglGetCurrentContext() != EGL_NO_CONTEXT)
        eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

void closeTestDisplays()
{
    releaseCurrentContext();
    displayConnection().reset();
}

} // namespace TOLVGraphing::testing_support
