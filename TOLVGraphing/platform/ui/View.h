#pragma once

#include "../foundation/Observable.h"
#include "../foundation/PropertyValue.h"
#include "../geometry/AffineTransform.h"
#include "../geometry/Rect.h"
#include "../graphics/OutputKind.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

class DrawingContext;

/// What asks a view whether a command may be chosen now, for example an entry of a menu.
struct UserInterfaceItem {
    /// The command's name, for example "copy".
    std::string action;
};

/// A rectangle that draws itself and holds further views: what a host shows in a window, on a page or as a picture. It knows no window; a host calls `displayInContext` when it paints and listens to
/// `setRedisplayHandler` for when to.
///
/// A view's frame is in the coordinates of the view that holds it, its bounds in its own: the frame's size at an origin that is (0, 0) unless it is set. Coordinates are points; y grows upwards, in a flipped view downwards from
/// the upper edge. Views live in shared_ptrs (in any other, what takes or gives up subviews throws std::bad_weak_ptr); a view owns its subviews and is referred to weakly by them. Any frame will do: an empty one, or one that is not finite, shows
/// nothing. Used from one thread.
class TOLV_EXPORT View : public Observable, public std::enable_shared_from_this<View> {
public:
    /// A view without subviews that needs display; the frame is in the coordinates of the view that will hold it.
    explicit View(const Rect& frame);
    ~View() override;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    // Geometry.

    /// Where the view lies in the view that holds it. Setting another frame asks for redisplay.
    [[nodiscard]] const Rect& frame() const { return m_frame; }
    void setFrame(const Rect& frame);
    void setFrameSize(const Size& size) { setFrame({m_frame.origin, size}); }
    /// The view's rectangle in its own coordinates.
    [[nodiscard]] Rect bounds() const { return {m_boundsOrigin, m_frame.size}; }
    /// The view's own coordinates at the corner of its frame with the smallest ones: another origin shows another part of the contents. Asks for redisplay when it is another one.
    void setBoundsOrigin(Point origin);
    /// True when y grows downwards. False unless a subclass says so.
    [[nodiscard]] virtual bool isFlipped() const { return false; }

    // Hierarchy.

    /// Adds a view (shared) in front of the others, and takes it away from the view that held it before. A view that is held already comes to the front. Throws Exception "ViewCycle" for the view itself and for a
    /// view that holds it, and "NullView" for null.
    void addSubview(const std::shared_ptr<View>& view);
    /// Takes the view away from the one that holds it; does nothing when none does.
    void removeFromSuperview();
    /// Shared. From back to front.
    [[nodiscard]] const std::vector<std::shared_ptr<View>>& subviews() const { return m_subviews; }
    /// Weak. The view that holds this one; null for none.
    [[nodiscard]] std::shared_ptr<View> superview() const { return m_superview.lock(); }

    // Redisplay.

    /// True from a request for redisplay until the next display of this view.
    [[nodiscard]] bool needsDisplay() const { return m_needsDisplay; }
    /// Asks for redisplay of the whole view. Requests are collected: the handler of the outermost view is called for the first one after a display and not again until the next.
    void setNeedsDisplay();
    /// Copied. Called when this view, or one in it, asks for redisplay; of a view that another one holds it is not called. Empty for none. What it throws leaves the setter that asked.
    /// A new handler is told of the next request, whatever the former one was told; what was
    /// requested before, `needsDisplay` tells.
    void setRedisplayHandler(std::function<void()> handler);
    /// Draws the view and its subviews, each clipped to its bounds, into the context, whose origin is the lower-left corner of this view and whose y grows upwards. The context is the current one meanwhile
    /// and has its former state afterwards, also when something throws. Nothing is drawn of a frame without area.
    void displayInContext(DrawingContext& context);
    /// The same for a part in the view's own coordinates: only that part is asked of `drawRect` and painted. Subviews that the part touches draw themselves whole, cut off at its edges; the others are left out.
    void displayInContext(DrawingContext& context, const Rect& dirtyRect);
    /// Draws the view's own contents into the current context in its own coordinates; nothing unless a subclass does. The rectangle is the part that has to be painted, never empty and within the bounds when a display asks.
    virtual void drawRect(const Rect& dirtyRect);

    // Responding.

    /// Called by the host when the view becomes, or ceases to be, what the keyboard goes to. False refuses; the base accepts.
    virtual bool becomeFirstResponder() { return true; }
    virtual bool resignFirstResponder() { return true; }
    /// Whether the command may be chosen now. True unless a subclass knows better.
    [[nodiscard]] virtual bool validateUserInterfaceItem(const UserInterfaceItem&) const { return true; }

    // Values by name.

    /// Sets a property of the view by its name. Nothing goes to `setNilValueForKey`. Throws Exception "UndefinedKey" for a name that the class does not have and "WrongValue" for a value of another kind.
    void setValueForKey(const PropertyValue& value, std::string_view key);
    /// What becomes of nothing set for a property that is no object: the base throws Exception "NilValue".
    virtual void setNilValueForKey(std::string_view key);

    // Documents, through the document renderer of the process; empty without one, and for a rectangle without area or that is not finite. Requests for redisplay stay as they are. What renderer and drawing throw passes through.

    /// The part of the view that lies in the rectangle (own coordinates), drawn as a document of its size: the bytes of a PDF or EPS file.
    [[nodiscard]] std::vector<std::byte> dataWithPDFInsideRect(const Rect& rect);
    [[nodiscard]] std::vector<std::byte> dataWithEPSInsideRect(const Rect& rect);
    /// A document of any kind; images have two pixels a point.
    [[nodiscard]] std::vector<std::byte> dataInsideRect(const Rect& rect, OutputKind kind);

protected:
    /// Sets the property; false when the class has none of this name.
    virtual bool setPresentValueForKey(const PropertyValue& value, std::string_view key);

private:
    /// What is drawn for: only a display answers requests for redisplay.
    enum class Purpose : std::uint8_t { Display, Document };

    void requestRedisplay();
    void drawInContext(DrawingContext& context, const Rect& dirtyRect, Purpose purpose);
    void draw(DrawingContext& context, const Rect& dirtyRect, Purpose purpose);
    [[nodiscard]] AffineTransform transformFromFrame(const Rect& frame, bool superviewIsFlipped) const;

    Rect m_frame;
    Point m_boundsOrigin;
    std::vector<std::shared_ptr<View>> m_subviews;
    std::weak_ptr<View> m_superview;
    bool m_needsDisplay = true;
    bool m_hasRequestedRedisplay = false;
    std::function<void()> m_redisplayHandler;
};

} // namespace TOLVGraphing
