#include "OpenGLContext.h"

#include "../foundation/InstalledService.h"

#include <utility>

namespace TOLVGraphing {

namespace {

InstalledService<OpenGLSystem>& installedSystem()
{
    static InstalledService<OpenGLSystem> service;
    return service;
}

} // namespace

OpenGLFunctions::~OpenGLFunctions() = default;
OpenGLContext::~OpenGLContext() = default;
OpenGLSystem::~OpenGLSystem() = default;

std::shared_ptr<const OpenGLSystem> openGLSystem()
{
    return installedSystem().get();
}

void setOpenGLSystem(std::shared_ptr<const OpenGLSystem> system)
{
    installedSystem().set(std::move(system));
}

std::shared_ptr<OpenGLContext> currentOpenGLContext()
{
    const auto system = openGLSystem();
    return system ? system->currentContext() : nullptr;
}

} // namespace TOLVGraphing
