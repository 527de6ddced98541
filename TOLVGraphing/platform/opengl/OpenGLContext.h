#pragma once

#include <TOLVMath/Export.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace TOLVGraphing {

/// The entry points of OpenGL that the library calls, by their names without "gl". They are those of the compatibility profile. An object is valid during OpenGLContext::perform only.
class TOLV_EXPORT OpenGLFunctions {
public:
    virtual ~OpenGLFunctions();

    /// The entry point of the same name, with its parameters as the OpenGL standard has them; the values that the library passes are in OpenGLConstants.h.
    virtual void pixelStorei(std::uint32_t name, std::int32_t value) = 0;
    virtual void genTextures(std::int32_t count, std::uint32_t* names) = 0;
    virtual void deleteTextures(std::int32_t count, const std::uint32_t* names) = 0;
    virtual void bindTexture(std::uint32_t target, std::uint32_t name) = 0;
    virtual void texParameteri(std::uint32_t target, std::uint32_t name, std::int32_t value) = 0;
    virtual void texImage2D(std::uint32_t target, std::int32_t level, std::int32_t internalFormat, std::int32_t width, std::int32_t height, std::int32_t border,
        std::uint32_t format, std::uint32_t type, const void* pixels)
        = 0;
    virtual void begin(std::uint32_t mode) = 0;
    virtual void end() = 0;
    virtual void texCoord2f(float s, float t) = 0;
    virtual void vertex2f(float x, float y) = 0;
    virtual void vertex3f(float x, float y, float z) = 0;
};

/// An OpenGL context as it was captured: calls made through it reach it, whichever context is current.
class TOLV_EXPORT OpenGLContext {
public:
    virtual ~OpenGLContext();

    /// Makes the context current on this thread, unless it is, runs the calls and makes current again what was before, also when the calls throw. Answers false, without running them, where the context
    /// cannot be made current: the calls never reach another one. A context that has gone is the host's to avoid.
    virtual bool perform(const std::function<void(OpenGLFunctions&)>& calls) = 0;
};

/// Knows which OpenGL context is current: what a desktop supplies, or a host with a loader of its own.
class TOLV_EXPORT OpenGLSystem {
public:
    virtual ~OpenGLSystem();

    /// Captures the context that is current on this thread, or answers null where none is.
    [[nodiscard]] virtual std::shared_ptr<OpenGLContext> currentContext() const = 0;
};

/// The system in force for the whole process, or null, the default: no context is ever current then.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<const OpenGLSystem> openGLSystem();
/// Installs a system (shared) for the process; null takes it away. Safe to call from any thread.
TOLV_EXPORT void setOpenGLSystem(std::shared_ptr<const OpenGLSystem> system);

/// Captures the context that is current on this thread by the installed system; null without a context or a system.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<OpenGLContext> currentOpenGLContext();

} // namespace TOLVGraphing
