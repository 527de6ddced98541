#include "View.h"

#include "../foundation/Exception.h"
#include "../graphics/CurrentContext.h"
#include "../graphics/DrawingContext.h"
#include "../graphics/GraphicsStateSaver.h"
#include "DocumentRenderer.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

View::View(const Rect& frame) : m_frame(frame) {}

View::~View() = default;

void View::setFrame(const Rect& frame)
{
    if (m_frame == frame)
        return;
    m_frame = frame;
    setNeedsDisplay();
}

void View::setBoundsOrigin(Point origin)
{
    if (m_boundsOrigin == origin)
        return;
    m_boundsOrigin = origin;
    setNeedsDisplay();
}

// Hierarchy.

void View::addSubview(const std::shared_ptr<View>& view)
{
    if (!view)
        throw Exception("NullView", "A view holds views only");
    for (auto holder = shared_from_this(); holder; holder = holder->superview()) {
        if (holder == view)
            throw Exception("ViewCycle", "A view cannot hold itself or a view that holds it");
    }
    view->removeFromSuperview();
    m_subviews.push_back(view);
    view->m_superview = weak_from_this();
    setNeedsDisplay();
}

void View::removeFromSuperview()
{
    const auto holder = superview();
    if (!holder)
        return;
    // It may be the holder's reference that keeps this view.
    const auto kept = shared_from_this();
    m_superview.reset();
    std::erase(holder->m_subviews, kept);
    holder->setNeedsDisplay();
}

// Redisplay.

void View::setNeedsDisplay()
{
    m_needsDisplay = true;
    requestRedisplay();
}

void View::setRedisplayHandler(std::function<void()> handler)
{
    m_redisplayHandler = std::move(handler);
    m_hasRequestedRedisplay = false;
}

void View::requestRedisplay()
{
    if (const auto holder = superview()) {
        holder->requestRedisplay();
        return;
    }
    if (!m_redisplayHandler || std::exchange(m_hasRequestedRedisplay, true))
        return;
    // Copied, because a handler may replace itself.
    const auto handler = m_redisplayHandler;
    handler();
}

AffineTransform View::transformFromFrame(const Rect& frame, bool superviewIsFlipped) const
{
    AffineTransform transform;
    if (isFlipped() == superviewIsFlipped) {
        transform.translateXBy(frame.x(), frame.y());
    } else {
        transform.translateXBy(frame.x(), frame.maxY());
        transform.scaleXBy(1.0, -1.0);
    }
    transform.translateXBy(-m_boundsOrigin.x, -m_boundsOrigin.y);
    return transform;
}

void View::displayInContext(DrawingContext& context)
{
    displayInContext(context, bounds());
}

void View::displayInContext(DrawingContext& context, const Rect& dirtyRect)
{
    drawInContext(context, dirtyRect, Purpose::Display);
}

void View::drawInContext(DrawingContext& context, const Rect& dirtyRect, Purpose purpose)
{
    const CurrentContextScope scope(context);
    const GraphicsStateSaver saver(context);
    context.concatenateTransform(transformFromFrame({{}, m_frame.size}, false));
    draw(context, dirtyRect, purpose);
}

void View::draw(DrawingContext& context, const Rect& dirtyRect, Purpose purpose)
{
    if (purpose == Purpose::Display) {
        // A request that arrives while drawing is a new one.
        m_needsDisplay = false;
        m_hasRequestedRedisplay = false;
    }
    const Rect visible = intersectionRect(dirtyRect, bounds());
    if (visible.isEmpty())
        return;
    {
        const FlippedCoordinatesScope flipped(isFlipped());
        const GraphicsStateSaver saver(context);
        context.clipToPath(Path::pathWithRect(visible), FillRule::NonZero);
        drawRect(visible);
    }
    // Copied, because a view may be given subviews while it draws.
    const auto subviews = m_subviews;
    for (const auto& subview : subviews) {
        const Rect visiblePart = intersectionRect(visible, subview->frame());
        if (visiblePart.isEmpty())
            continue;
        const GraphicsStateSaver saver(context);
        context.clipToPath(Path::pathWithRect(visiblePart), FillRule::NonZero);
        context.concatenateTransform(subview->transformFromFrame(subview->frame(), isFlipped()));
        subview->draw(context, subview->bounds(), purpose);
    }
}

void View::drawRect(const Rect&) {}

// Values by name.

void View::setValueForKey(const PropertyValue& value, std::string_view key)
{
    if (std::holds_alternative<std::monostate>(value))
        setNilValueForKey(key);
    else if (!setPresentValueForKey(value, key))
        throw Exception("UndefinedKey", "The view has no property \"" + std::string(key) + "\"");
}

void View::setNilValueForKey(std::string_view key)
{
    throw Exception("NilValue", "The property \"" + std::string(key) + "\" cannot be nothing");
}

bool View::setPresentValueForKey(const PropertyValue&, std::string_view)
{
    return false;
}

// Documents.

std::vector<std::byte> View::dataWithPDFInsideRect(const Rect& rect)
{
    return dataInsideRect(rect, OutputKind::PDF);
}

std::vector<std::byte> View::dataWithEPSInsideRect(const Rect& rect)
{
    return dataInsideRect(rect, OutputKind::EPS);
}

std::vector<std::byte> View::dataInsideRect(const Rect& rect, OutputKind kind)
{
    const auto renderer = documentRenderer();
    if (!renderer || rect.isEmpty() || !rect.valid())
        return {};
    // The part's left and lower edges, measured from those of the view.
    const double left = rect.x() - bounds().x();
    const double bottom = isFlipped() ? bounds().maxY() - rect.maxY() : rect.y() - bounds().y();
    return renderer->render(kind, rect.size, [&](DrawingContext& context) {
        AffineTransform toOrigin;
        toOrigin.translateXBy(-left, -bottom);
        context.concatenateTransform(toOrigin);
        drawInContext(context, rect, Purpose::Document);
    });
}

} // namespace TOLVGraphing
