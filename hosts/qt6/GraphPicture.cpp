#include "GraphPicture.h"

#include <TOLVGraphing/platform/graphics/DarkContext.h>
#include <TOLVGraphing/platform/graphics/PixelAlignedContext.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <desktop/output/PixelDrawing.h>

#include <QColor>

namespace TOLVGraphing {

namespace {

QColor groundOf(const TOLVGraphView& view, bool isDark)
{
    if (!view.drawsBackground())
        return Qt::transparent;
    const Color ground = isDark ? darkBackgroundColor() : Color::whiteColor();
    return QColor::fromRgbF(static_cast<float>(ground.redComponent()), static_cast<float>(ground.greenComponent()), static_cast<float>(ground.blueComponent()));
}

void draw(TOLVGraphView& view, const GraphPicture::Target& target, DrawingContext& pixels)
{
    PixelAlignedContext aligned(pixels, target.ratio);
    if (!target.isDark) {
        view.displayInContext(aligned);
        return;
    }
    DarkContext dark(aligned);
    view.displayInContext(dark);
}

} // namespace

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
    m_isValid = m_image.isNull();
    if (m_image.isNull())
        return false;
    m_image.fill(groundOf(view, target.isDark));
    const PixelMemory memory{m_image.bits(), m_image.width(), m_image.height(), static_cast<std::ptrdiff_t>(m_image.bytesPerLine())};
    drawOnPixels(memory, target.ratio, [&](DrawingContext& context) { draw(view, target, context); });
    // What could not be drawn to its end is no picture: it is tried again.
    m_isValid = true;
    return true;
}

} // namespace TOLVGraphing
