#include "DesktopDocumentRenderer.h"

#include "GraphicsOutput.h"

namespace TOLVGraphing {

std::vector<std::byte> DesktopDocumentRenderer::render(OutputKind kind, const Size& size, const std::function<void(DrawingContext&)>& drawing) const
{
    OutputSettings settings;
    settings.size = size;
    const bool isImage = kind == OutputKind::PNG || kind == OutputKind::TIFF;
    if (!isImage)
        settings.background.reset();
    return renderToBytes(kind, settings, [&](DrawingContext& context, const Rect&) { drawing(context); });
}

void installDesktopDocumentRenderer()
{
    setDocumentRenderer(std::make_shared<DesktopDocumentRenderer>());
}

} // namespace TOLVGraphing
