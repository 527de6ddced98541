#include "EpoxyOpenGLSystem.h"

#include "ContextBinding.h"
#include "EpoxyFunctions.h"

#include <epoxy/gl.h>

#include <memory>
#include <variant>

namespace TOLVGraphing {

namespace {

class EpoxyContext final : public OpenGLContext {
public:
    explicit EpoxyContext(const opengl::ContextBinding& binding) : m_binding(binding) {}

    bool perform(const std::function<void(OpenGLFunctions&)>& calls) override
    {
        const opengl::CurrentBindingScope scope(m_binding);
        if (!scope.isCurrent())
            return false;
        opengl::EpoxyFunctions functions;
        calls(functions);
        return true;
    }

private:
    opengl::ContextBinding m_binding;
};

} // namespace

std::shared_ptr<OpenGLContext> EpoxyOpenGLSystem::currentContext() const
{
    const opengl::ContextBinding binding = opengl::currentBinding();
    if (std::holds_alternative<std::monostate>(binding) || !epoxy_is_desktop_gl())
        return nullptr;
    return std::make_shared<EpoxyContext>(binding);
}

void installEpoxyOpenGLSystem()
{
    setOpenGLSystem(std::make_shared<EpoxyOpenGLSystem>());
}

} // namespace TOLVGraphing
