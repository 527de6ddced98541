#include "GraphPicture.h"

#include <TOLVGraphing/platform/graphics/DrawingContext.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <desktop/output/PixelDrawing.h>

namespace TOLVGraphing {

bool GraphPicture::needsUpdate(const TOLVGraphView& view, const Target& target) const
{
    return !m_isValid || target != m_target || view.needsDisplay();
}

bool GraphPicture::update(TOLVGraphView& view, const Target& target)
{
    if (!needsUpdate(view, target))
        return false;
    if (m_image.size() != target.size)
        m_image = QImage(target.size, QImage::Format_ARGB32_Premultiplied);
    m_target = target;
    m_isValid = true;
    if (m_image.isNull())
        return false;
    m_image.setDevicePixelRatio(1.0);
    m_image.fill(view.drawsBackground() ? Qt::white : Qt::transparent);
    const PixelMemory memory{m_image.bits(), m_image.width(), m_image.height(), static_cast<std::ptrdiff_t>(m_image.bytesPerLine())};
    drawOnPixels(memory, target.ratio, [&](DrawingContext& context) { view.displayInContext(context); });
    return true;
}

} // namespace TOLVGraphing
