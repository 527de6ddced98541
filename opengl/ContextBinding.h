#pragma once

#include <variant>

namespace TOLVGraphing::opengl {

/// An EGL context with its display and its surfaces, as EGL's own handles.
struct EGLBinding {
    void* display = nullptr;
    void* context = nullptr;
    void* drawSurface = nullptr;
    void* readSurface = nullptr;

    /// What EGL has current on this thread; the context is null where nothing is.
    [[nodiscard]] static EGLBinding current();
    /// The context is current on this thread, whatever its surfaces.
    [[nodiscard]] bool isCurrent() const;
    bool makeCurrent() const;
    /// Leaves nothing current.
    void release() const;
};

/// A GLX context with its display and its drawables (X's numbers).
struct GLXBinding {
    void* display = nullptr;
    void* context = nullptr;
    unsigned long drawDrawable = 0;
    unsigned long readDrawable = 0;

    [[nodiscard]] static GLXBinding current();
    [[nodiscard]] bool isCurrent() const;
    bool makeCurrent() const;
    void release() const;
};

/// What is, or shall be, current on a thread: nothing, or a context of either.
using ContextBinding = std::variant<std::monostate, EGLBinding, GLXBinding>;

[[nodiscard]] ContextBinding currentBinding();

/// Makes a context current for the life of the scope, unless it is, and then what was before.
class CurrentBindingScope {
public:
    explicit CurrentBindingScope(const ContextBinding& binding);
    ~CurrentBindingScope();
    CurrentBindingScope(const CurrentBindingScope&) = delete;
    CurrentBindingScope& operator=(const CurrentBindingScope&) = delete;

    /// False where the context could not be made current; what was before is current then.
    [[nodiscard]] bool isCurrent() const { return m_isCurrent; }

private:
    ContextBinding m_binding;
    ContextBinding m_former;
    bool m_isSwitched = false;
    bool m_isCurrent = false;
};

} // namespace TOLVGraphing::opengl
