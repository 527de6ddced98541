#pragma once

#include <TOLVGraphing/platform/opengl/OpenGLContext.h>
#include <opengl/EpoxyOpenGLSystem.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace TOLVGraphing::testing_support {

/// What the library called.
struct OpenGLCounts {
    /// Calls whose error was asked for, outside of begin and end.
    std::size_t checkedCalls = 0;
    std::size_t generatedTextures = 0;
    std::size_t deletedTextures = 0;
    std::uint32_t largestTextureName = 0;
};

/// Installs the system of EGL and GLX for the life of the scope and asks for OpenGL's error after every call that the library makes: any is a failure.
class CheckedOpenGLScope {
public:
    CheckedOpenGLScope();
    ~CheckedOpenGLScope();
    CheckedOpenGLScope(const CheckedOpenGLScope&) = delete;
    CheckedOpenGLScope& operator=(const CheckedOpenGLScope&) = delete;

    [[nodiscard]] const OpenGLCounts& counts() const { return *m_counts; }

private:
    std::shared_ptr<OpenGLCounts> m_counts;
    std::shared_ptr<const OpenGLSystem> m_former;
};

} // namespace TOLVGraphing::testing_support
