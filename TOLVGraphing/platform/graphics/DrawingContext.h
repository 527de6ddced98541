#pragma once

#include "../geometry/AffineTransform.h"
#include "../geometry/Rect.h"
#include "Color.h"
#include "Path.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace TOLVGraphing {

class AttributedString;

/// How the open ends of a line and of its dashes look.
enum class LineCap : std::uint8_t {
    Butt,   ///< cut off at the end
    Round,  ///< a half circle around the end
    Square, ///< half the line's width longer
};

/// How the segments of a line meet.
enum class LineJoin : std::uint8_t {
    Miter, ///< in a point, or as a bevel where that would be longer than the miter limit allows
    Round, ///< in an arc
    Bevel, ///< in a corner cut off
};

/// Something to draw into. Coordinates are points (1/72 inch) with y growing upwards; the unit reaches the device through the transform that the
/// context was made with. Shapes are painted over what is there (source over) with coverage at the edges.
///
/// The graphics state is: transform, clip, fill and stroke colour, line width (1), dash (none), cap (butt), join (miter), miter limit (10). It is saved and
/// restored as a whole; the current path is not part of it. A colour that is absent paints black, the state every context starts with.
///
/// The current path collects what `addPath` and `addRect` give it, in the coordinates in force when it is painted, and is empty again after a fill, stroke or
/// clip. Everything else draws at once. Non-finite points in a path are the caller's to avoid: backends skip elements that have them. Nothing here throws
/// but what a function given to it does.
///
/// A backend implements the pure operations; one context is used by one thread at a time.
class TOLV_EXPORT DrawingContext {
public:
    /// In the initial state, with an empty path.
    DrawingContext() = default;
    virtual ~DrawingContext();
    DrawingContext(const DrawingContext&) = delete;
    DrawingContext& operator=(const DrawingContext&) = delete;

    // State.

    /// Keeps the graphics state until the matching restore. Saves nest.
    virtual void saveState() = 0;
    /// Returns to the last saved state; with none saved nothing happens.
    virtual void restoreState() = 0;
    /// Applies the transform before the ones in force. With one that has no inverse or is not finite nothing is painted until the state is restored.
    virtual void concatenateTransform(const AffineTransform& transform) = 0;
    /// Intersects the clip with the path's inside; with an empty path nothing is painted until the state is restored.
    virtual void clipToPath(const Path& path, FillRule rule) = 0;
    /// What areas, and lines, are painted in from now on; nothing paints black. Components are limited to 0...1 as by Color::clamped.
    virtual void setFillColor(const std::optional<Color>& color) = 0;
    virtual void setStrokeColor(const std::optional<Color>& color) = 0;
    /// In the coordinates that are in force when a line is stroked. With a width that is not finite and above 0 strokes paint nothing.
    virtual void setLineWidth(double width) = 0;
    /// Lengths as for the width; an empty pattern gives solid lines, and so does one that is none (see LineDash).
    virtual void setLineDash(const LineDash& dash) = 0;
    /// How lines end and how their segments meet.
    virtual void setLineCap(LineCap cap) = 0;
    virtual void setLineJoin(LineJoin join) = 0;
    /// The largest ratio of a miter's length to the line's width; beyond it segments meet in a bevel. Less than 1 counts as 1, what is not finite as 10.
    virtual void setMiterLimit(double limit) = 0;

    // Painting.

    /// Fills the path's inside with the fill colour. Subpaths that are open are filled as if they were closed.
    virtual void drawFilledPath(const Path& path, FillRule rule) = 0;
    /// Strokes the path in the stroke colour with the context's own width and dash; those of the path are not consulted (Path::stroke applies them).
    virtual void drawStrokedPath(const Path& path) = 0;
    /// Draws the text with its own attributes; `origin` is the lower-left corner of its line box (of all lines). The clip and the transform hold, the fill colour does not.
    /// Coordinates that are flipped are the caller's to turn back: AttributedString::drawAtPoint does so.
    virtual void drawText(const AttributedString& text, Point origin) = 0;

    // Repeats of one shape.

    /// True when the two operations below take much less time than as many paths, which is not so in contexts that do not override them.
    [[nodiscard]] virtual bool drawsRepeatsQuickly() const;
    /// Fills the path once for each place, in order, moved by the place's coordinates: the same picture as that of as many paths.
    virtual void drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places);
    /// The same for strokes.
    virtual void drawStrokedRepeats(const Path& path, std::span<const Point> places);

    // Pixels.

    /// The pixels that a fill of the upright rectangle covers, where it is known that it covers each of them wholly: the edges of the fill and of the clip in force are edges of pixels. In whole numbers of pixels from any place that stays the same while
    /// transform and clip do. Nothing for a rectangle without area, where pixels would be covered in part, and where that is not known, as in every context that does not override this.
    [[nodiscard]] virtual std::optional<Rect> wholePixelsOfFill(const Rect& rect) const;
    /// The rectangle whose fill covers these pixels: the way back. Of use only where the other way has an answer.
    [[nodiscard]] virtual Rect fillOfWholePixels(const Rect& pixels) const;

    // Conveniences over the operations above.

    /// Saves the state, runs the drawing (not empty) with this context and restores the state, also when the drawing throws, which passes through. The context does not become the current one.
    void inIsolatedContext(const std::function<void(DrawingContext&)>& drawing);
    /// Adds to the current path.
    void addPath(const Path& path);
    void addRect(const Rect& rect);
    /// Clips to the current path, non-zero winding.
    void clip();
    /// Clips to the current path, even-odd rule.
    void EOClip();
    /// Strokes the current path.
    void strokePath();
    /// Fills the current path, non-zero winding.
    void fillPath();
    /// Fills the current path, even-odd rule.
    void EOFillPath();
    /// Fills the rectangle with the current fill colour. A negative height fills downwards.
    void fillRect(const Rect& rect);
    /// Makes the colour, if one is given, the fill colour; then fills the rectangle.
    void fill(const Rect& rect, const std::optional<Color>& withColor = std::nullopt);
    /// Makes the colour, if given, the fill colour; adds the path, if given, to the current path; then fills the current path.
    void fill(const Path* path = nullptr, const std::optional<Color>& withColor = std::nullopt);
    /// Makes the colour, if given, the stroke colour; adds the path, if given, to the current path; then strokes the current path.
    void stroke(const Path* path = nullptr, const std::optional<Color>& withColor = std::nullopt);

    /// What has been added and not yet painted.
    [[nodiscard]] const Path& currentPath() const { return m_currentPath; }

private:
    Path m_currentPath;
};

} // namespace TOLVGraphing
