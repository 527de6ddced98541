#include "OpenGLContext.h"

#include <mutex>
#include <utility>

namespace TOLVGraphing {

namespace {

std::mutex& systemMutex()
{
    static std::mutex mutex;
    return mutex;
}

std::shared_ptr<const OpenGLSystem>& installedSystem()
{
    static std::shared_ptr<const OpenGLSystem> system;
    return system;
}

} // namespace

OpenGLFunctions::~OpenGLFunctions() = default;
OpenGLContext::~OpenGLContext() = default;
OpenGLSystem::~OpenGLSystem() = default;

std::shared_ptr<const OpenGLSystem> openGLSystem()
{
    const std::lock_guard lock(systemMutex());
    return installedSystem();
}

void setOpenGLSystem(std::shared_ptr<const OpenGLSystem> system)
{
    const std::lock_guard lock(systemMutex());
    installedSystem() = std::move(system);
}

std::shared_ptr<OpenGLContext> currentOpenGLContext()
{
    const auto system = openGLSystem();
    return system ? system->currentContext() : nullptr;
}

} // namespace TOLVGraphing
