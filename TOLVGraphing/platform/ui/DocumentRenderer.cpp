#include "DocumentRenderer.h"

#include "../foundation/InstalledService.h"

#include <utility>

namespace TOLVGraphing {

namespace {

InstalledService<DocumentRenderer>& installedRenderer()
{
    static InstalledService<DocumentRenderer> service;
    return service;
}

} // namespace

DocumentRenderer::~DocumentRenderer() = default;

std::shared_ptr<const DocumentRenderer> documentRenderer()
{
    return installedRenderer().get();
}

void setDocumentRenderer(std::shared_ptr<const DocumentRenderer> renderer)
{
    installedRenderer().set(std::move(renderer));
}

} // namespace TOLVGraphing
