#pragma once

#include <memory>
#include <ostream>
#include <string>

namespace TOLVGraphing::testing_support {

enum class Platform { EGL, GLX };

inline std::ostream& operator<<(std::ostream& stream, Platform platform)
{
    return stream << (platform == Platform::EGL ? "EGL" : "GLX");
}

/// A compatibility context of a test's own: EGL without a surface, or GLX with a small pixel buffer on a private display.
class TestContext {
public:
    /// Null where the platform is not there; `whyNot` says why.
    [[nodiscard]] static std::unique_ptr<TestContext> make(Platform platform, std::string& whyNot);
    /// A context of OpenGL ES 2, by EGL.
    [[nodiscard]] static std::unique_ptr<TestContext> makeES(std::string& whyNot);

    /// A context of EGL with a small pixel buffer.
    [[nodiscard]] static std::unique_ptr<TestContext> makeEGLWithSurface(std::string& whyNot);

    virtual ~TestContext() = default;
    TestContext(const TestContext&) = delete;
    TestContext& operator=(const TestContext&) = delete;

    /// Makes it current on this thread, whichever was; false where that fails.
    virtual bool makeCurrent() = 0;
    /// True when it is current, with its own surfaces.
    [[nodiscard]] virtual bool isCurrent() const = 0;
    /// Takes its surface away; it becomes current without one from now on.
    virtual void destroySurface() {}

protected:
    TestContext() = default;
};

/// Leaves no context of either platform current.
void releaseCurrentContext();
/// Ends the private display.
void closeTestDisplays();

} // namespace TOLVGraphing::testing_support
