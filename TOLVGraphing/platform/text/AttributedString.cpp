#include "AttributedString.h"

#include "../graphics/CurrentContext.h"
#include "../graphics/DrawingContext.h"
#include "TextSystem.h"

#include <utility>

namespace TOLVGraphing {

AttributedString::AttributedString(std::string string, TextAttributes attributes)
    : m_string(std::move(string))
    , m_attributes(std::move(attributes))
{
}

AttributedString::AttributedString(std::string string, const SharedTextAttributes& attributes)
    : m_string(std::move(string))
    , m_attributes(attributes ? *attributes : TextAttributes{})
{
}

Size AttributedString::size() const
{
    return textSystem()->size(*this);
}

void AttributedString::drawAtPoint(Point point) const
{
    if (DrawingContext* context = currentContext())
        context->drawText(*this, point);
}

void AttributedString::drawInRect(const Rect& rect) const
{
    if (!currentContext())
        return;
    drawAtPoint({rect.x(), rect.maxY() - size().height});
}

double Font::ascender() const
{
    return textSystem()->ascender(*this);
}

} // namespace TOLVGraphing
