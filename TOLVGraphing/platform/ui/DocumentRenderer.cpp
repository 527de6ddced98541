#include "DocumentRenderer.h"

#include <mutex>
#include <utility>

namespace TOLVGraphing {

namespace {

std::mutex& rendererMutex()
{
    static std::mutex mutex;
    return mutex;
}

std::shared_ptr<const DocumentRenderer>& installedRenderer()
{
    static std::shared_ptr<const DocumentRenderer> renderer;
    return renderer;
}

} // namespace

DocumentRenderer::~DocumentRenderer() = default;

std::shared_ptr<const DocumentRenderer> documentRenderer()
{
    const std::lock_guard lock(rendererMutex());
    return installedRenderer();
}

void setDocumentRenderer(std::shared_ptr<const DocumentRenderer> renderer)
{
    const std::lock_guard lock(rendererMutex());
    installedRenderer() = std::move(renderer);
}

} // namespace TOLVGraphing
