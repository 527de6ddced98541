#include "AttributedString.h"

#include "../graphics/CurrentContext.h"
#include "../graphics/DrawingContext.h"
#include "../graphics/GraphicsStateSaver.h"
#include "TextSystem.h"

#include <utility>

namespace TOLVGraphing {

AttributedString::AttributedString(std::string string, TextAttributes attributes)
    : m_string(std::move(string))
    , m_attributes(attributes == TextAttributes() ? nullptr : std::make_shared<const TextAttributes>(std::move(attributes)))
{
}

AttributedString::AttributedString(std::string string, SharedTextAttributes attributes) : m_string(std::move(string)), m_attributes(std::move(attributes)) {}

const TextAttributes& AttributedString::attributes() const
{
    static const TextAttributes plain;
    return m_attributes ? *m_attributes : plain;
}

void AttributedString::setForegroundColor(const std::optional<Color>& color)
{
    TextAttributes changed = attributes();
    changed.foregroundColor = color;
    m_attributes = std::make_shared<const TextAttributes>(std::move(changed));
}

Size AttributedString::size() const
{
    return textSystem()->size(*this);
}

void AttributedString::drawAtPoint(Point point) const
{
    DrawingContext* context = currentContext();
    if (!context)
        return;
    if (!coordinatesAreFlipped()) {
        context->drawText(*this, point);
        return;
    }
    // Back to upright letters: y grows upwards again from the lower edge of the line box.
    const GraphicsStateSaver saver(*context);
    AffineTransform upright;
    upright.translateXBy(point.x, point.y + size().height);
    upright.scaleXBy(1.0, -1.0);
    context->concatenateTransform(upright);
    context->drawText(*this, {});
}

void AttributedString::drawInRect(const Rect& rect) const
{
    if (!currentContext())
        return;
    drawAtPoint({rect.x(), coordinatesAreFlipped() ? rect.y() : rect.maxY() - size().height});
}

double Font::ascender() const
{
    return textSystem()->ascender(*this);
}

} // namespace TOLVGraphing
