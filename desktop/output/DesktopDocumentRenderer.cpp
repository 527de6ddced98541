#include "DesktopDocumentRenderer.h"

#include "GraphicsOutput.h"

namespace TOLVGraphing {

std::vector<std::byte> DesktopDocumentRenderer::render(OutputKind kind, const Size& size, const std::function<void(DrawingContext&)>& drawing) const
{
    OutputSettings settings;
    settings.size = size;
    if (!isImage(kind))
        settings.background.reset();
    return renderToBytes(kind, settings, [&](DrawingContext& context, const Rect&) { drawing(context); });
}

void installDesktopDocumentRenderer()
{
    setDocumentRenderer(std::make_shared<DesktopDocumentRenderer>());
}

} // namespace TOLVGraphing
