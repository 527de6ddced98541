#include "CheckedOpenGL.h"

#include <gtest/gtest.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <utility>

namespace TOLVGraphing::testing_support {

namespace {

class CheckedFunctions final : public OpenGLFunctions {
public:
    CheckedFunctions(OpenGLFunctions& functions, OpenGLCounts& counts) : m_functions(functions), m_counts(counts) {}

    void pixelStorei(std::uint32_t name, std::int32_t value) override
    {
        m_functions.pixelStorei(name, value);
        check("pixelStorei");
    }
    void genTextures(std::int32_t count, std::uint32_t* names) override
    {
        m_functions.genTextures(count, names);
        check("genTextures");
        m_counts.generatedTextures += static_cast<std::size_t>(count);
        for (std::int32_t i = 0; i < count; ++i)
            m_counts.largestTextureName = std::max(m_counts.largestTextureName, names[i]);
    }
    void deleteTextures(std::int32_t count, const std::uint32_t* names) override
    {
        m_functions.deleteTextures(count, names);
        check("deleteTextures");
        m_counts.deletedTextures += static_cast<std::size_t>(count);
    }
    void bindTexture(std::uint32_t target, std::uint32_t name) override
    {
        m_functions.bindTexture(target, name);
        check("bindTexture");
    }
    void texParameteri(std::uint32_t target, std::uint32_t name, std::int32_t value) override
    {
        m_functions.texParameteri(target, name, value);
        check("texParameteri");
    }
    void texImage2D(std::uint32_t target, std::int32_t level, std::int32_t internalFormat, std::int32_t width, std::int32_t height, std::int32_t border, std::uint32_t format,
        std::uint32_t type, const void* pixels) override
    {
        m_functions.texImage2D(target, level, internalFormat, width, height, border, format, type, pixels);
        check("texImage2D");
    }
    // Between begin and end OpenGL must not be asked.
    void begin(std::uint32_t mode) override { m_functions.begin(mode); }
    void texCoord2f(float s, float t) override { m_functions.texCoord2f(s, t); }
    void vertex2f(float x, float y) override { m_functions.vertex2f(x, y); }
    void vertex3f(float x, float y, float z) override { m_functions.vertex3f(x, y, z); }
    void end() override
    {
        m_functions.end();
        check("end");
    }

private:
    void check(const char* call)
    {
        ++m_counts.checkedCalls;
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << call;
    }

    OpenGLFunctions& m_functions;
    OpenGLCounts& m_counts;
};

class CheckedContext final : public OpenGLContext {
public:
    CheckedContext(std::shared_ptr<OpenGLContext> context, std::shared_ptr<OpenGLCounts> counts) : m_context(std::move(context)), m_counts(std::move(counts)) {}

    bool perform(const std::function<void(OpenGLFunctions&)>& calls) override
    {
        return m_context->perform([&](OpenGLFunctions& functions) {
            CheckedFunctions checked(functions, *m_counts);
            calls(checked);
        });
    }

private:
    std::shared_ptr<OpenGLContext> m_context;
    std::shared_ptr<OpenGLCounts> m_counts;
};

class CheckedSystem final : public OpenGLSystem {
public:
    explicit CheckedSystem(std::shared_ptr<OpenGLCounts> counts) : m_counts(std::move(counts)) {}

    [[nodiscard]] std::shared_ptr<OpenGLContext> currentContext() const override
    {
        auto context = m_system.currentContext();
        return context ? std::make_shared<CheckedContext>(std::move(context), m_counts) : nullptr;
    }

private:
    EpoxyOpenGLSystem m_system;
    std::shared_ptr<OpenGLCounts> m_counts;
};

} // namespace

CheckedOpenGLScope::CheckedOpenGLScope() : m_counts(std::make_shared<OpenGLCounts>()), m_former(openGLSystem())
{
    setOpenGLSystem(std::make_shared<CheckedSystem>(m_counts));
}

CheckedOpenGLScope::~CheckedOpenGLScope()
{
    setOpenGLSystem(m_former);
}

} // namespace TOLVGraphing::testing_support
