#include "ContextBinding.h"

namespace TOLVGraphing::opengl {

namespace {

bool isNothing(const ContextBinding& binding)
{
    return std::holds_alternative<std::monostate>(binding);
}

bool isCurrent(const ContextBinding& binding)
{
    if (const auto* egl = std::get_if<EGLBinding>(&binding))
        return egl->isCurrent();
    if (const auto* glx = std::get_if<GLXBinding>(&binding))
        return glx->isCurrent();
    return false;
}

bool makeCurrent(const ContextBinding& binding)
{
    if (const auto* egl = std::get_if<EGLBinding>(&binding))
        return egl->makeCurrent();
    if (const auto* glx = std::get_if<GLXBinding>(&binding))
        return glx->makeCurrent();
    return false;
}

void release(const ContextBinding& binding)
{
    if (const auto* egl = std::get_if<EGLBinding>(&binding))
        egl->release();
    else if (const auto* glx = std::get_if<GLXBinding>(&binding))
        glx->release();
}

/// Goes from what is current to something else. A thread may have a context of EGL or of GLX, and the one has to let go before the other takes hold.
bool switchBinding(const ContextBinding& from, const ContextBinding& to)
{
    if (from.index() != to.index())
        release(from);
    return isNothing(to) || makeCurrent(to);
}

} // namespace

ContextBinding currentBinding()
{
    if (const EGLBinding egl = EGLBinding::current(); egl.context)
        return egl;
    if (const GLXBinding glx = GLXBinding::current(); glx.context)
        return glx;
    return {};
}

CurrentBindingScope::CurrentBindingScope(const ContextBinding& binding) : m_binding(binding)
{
    // The usual case costs no more than this question.
    m_isCurrent = opengl::isCurrent(m_binding);
    if (m_isCurrent)
        return;
    m_former = currentBinding();
    m_isCurrent = switchBinding(m_former, m_binding);
    m_isSwitched = m_isCurrent;
    if (!m_isCurrent)
        switchBinding({}, m_former);
}

CurrentBindingScope::~CurrentBindingScope()
{
    if (m_isSwitched)
        switchBinding(m_binding, m_former);
}

} // namespace TOLVGraphing::opengl
