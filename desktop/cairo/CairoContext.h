#pragma once

#include "PixelRange.h"
#include "TOLVGraphing/platform/graphics/DrawingContext.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// The same as in cairo.h, which this header does without.
typedef struct _cairo cairo_t;

namespace TOLVGraphing::text {
struct TextLayout;
struct TextLine;
} // namespace TOLVGraphing::text

namespace TOLVGraphing::paint {
struct StrokeRun;
}

/// Drawing into Cairo targets.
namespace TOLVGraphing::cairo {

/// The library's own.
enum class StampKind : std::uint8_t;

/// Lets points with y growing upwards reach a Cairo target (not null, not owned) whose y grows downwards: the origin goes to the lower-left corner, `deviceHeight` device units below the origin in force,
/// and a point becomes `unitsPerPoint` device units (finite, above zero). The target's transform is changed on top of the one that it has.
TOLV_EXPORT void setUpwardCoordinates(cairo_t* target, double deviceHeight, double unitsPerPoint);

/// Draws into a Cairo target: images, PDF, PostScript, windows. A host that paints with Cairo shows a graph view, in a window that is `height` device units high, with `scale` device units a point (1 where
/// they are logical pixels), by
///
///     cairo_save(target);
///     cairo::setUpwardCoordinates(target, height, scale);
///     {
///         cairo::CairoContext context(target);
///         view->displayInContext(context);
///     }
///     cairo_restore(target);
///
/// and what draws into the current context, such as a GraphSheet, under a CurrentContextScope of the context. A PixelAlignedContext between the two puts straight lines on whole pixels, a DarkContext turns the colours for a dark
/// window. Texts are always set by the desktop's text system; for them to be measured alike, the program calls installDesktopTextSystem at its start.
///
/// The transform in force at construction is the base: it maps points with y growing upwards to the device (setUpwardCoordinates makes such a one). Clip and antialiasing of the target hold as well; operator, line width,
/// dash, cap, join and miter limit start as those of every context, and a path that the target has begun is lost. When the context goes, the target is otherwise left as it was found, whatever was saved and not restored.
/// Between construction and end the target is used through the context only.
///
/// Nothing here throws but for want of memory: what goes wrong in Cairo, before or meanwhile, stays in `error()`, and what is drawn after it may be missing. Contexts of different targets may be used from several threads at a time.
///
/// Nothing that is drawn puts the target into Cairo's error state or wraps around in its fixed-point numbers:
/// - elements with non-finite points are left out (what follows goes on from the last finite point), a transform that cannot be inverted (or only
///   with areas beyond 1e24) draws nothing until it is restored,
///   and no lines are drawn under one that stretches one direction a thousand million times as far as another;
/// - colours are limited to 0...1 when something is painted, and what is wholly transparent is not painted;
/// - a dash with a negative or non-finite length, or without any above zero, is the solid line, a phase that is not finite is 0; a line width that is not above zero draws nothing, one that is not finite likewise; a miter limit below 1 is 1, one that is not finite 10;
/// - a path that reaches farther than a million device units is cut to a window around the clip, the rest is exact;
/// - a dashed line out of sight is cut off as well, because Cairo would walk along all its dashes; one of more than a million dashes and gaps is painted without them on pixels, in a colour that is weaker by the part that the gaps take;
/// - a line with round or square ends that is a thousand times wider than its gaps is painted without them, because nothing of them would be seen and each end costs Cairo thousands of vertices.
///
/// On pixels upright boxes (backgrounds, frames, grid lines; those in translucent colours where they cover whole pixels) and small text are drawn without Cairo, with the same result to the byte, where the clip is known to end at whole pixels:
/// the clip that the context finds and every one that is set through it. A line with many corners that goes in one direction of x, as the curve of a graph does, is painted from its exact coverage many times faster than by Cairo.
/// Pixels in this sense are those of an image surface without device scale and offset; every other surface gets the same picture from Cairo alone.
///
/// Text is always upright in the coordinates in force. On pixels its glyphs stand within an eighth of a pixel of their exact places, large text exactly;
/// elsewhere it stays text with embedded fonts. Text whose em is shorter than about 0.03 or longer than about 7,000 device units is left out.
class TOLV_EXPORT CairoContext final : public DrawingContext {
public:
    /// Takes a reference to the target, which is not null. On PostScript every translucent colour makes Cairo turn the page into a bitmap: draw through a paint::OpaqueContext there.
    explicit CairoContext(cairo_t* target);
    ~CairoContext() override;

    void saveState() override;
    void restoreState() override;
    void concatenateTransform(const AffineTransform& transform) override;
    void clipToPath(const Path& path, FillRule rule) override;
    void setFillColor(const std::optional<Color>& color) override;
    void setStrokeColor(const std::optional<Color>& color) override;
    void setLineWidth(double width) override;
    void setLineDash(const LineDash& dash) override;
    void setLineCap(LineCap cap) override;
    void setLineJoin(LineJoin join) override;
    void setMiterLimit(double limit) override;
    void drawFilledPath(const Path& path, FillRule rule) override;
    void drawStrokedPath(const Path& path) override;
    void drawText(const AttributedString& text, Point origin) override;
    /// True for images while the clip consists of whole pixels: small paths are then painted from remembered coverage, all others by themselves.
    [[nodiscard]] bool drawsRepeatsQuickly() const override;
    void drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places) override;
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override;
    /// The pixels that a fill of the rectangle covers wholly, rows counted downwards from the top: known for images, of rectangles whose edges the transform puts on edges of pixels, while the clip consists of whole pixels.
    [[nodiscard]] std::optional<Rect> wholePixelsOfFill(const Rect& rect) const override;
    [[nodiscard]] Rect fillOfWholePixels(const Rect& pixels) const override;

    /// What went wrong in Cairo, in its words; empty while all is well.
    [[nodiscard]] std::string error() const;
    /// The Cairo target; the context has a reference to it for as long as it lives.
    [[nodiscard]] cairo_t* target() const { return m_target; }

private:
    /// The part of the state that Cairo does not keep.
    struct State {
        Color fillColor;
        Color strokeColor;
        double lineWidth = 1.0;
        double miterLimit = 10.0;
        LineDash dash;
        AffineTransform transform;
        /// The clip, where it is a box of whole pixels of an image.
        std::optional<PixelRange> clip;
        /// The transform has an inverse.
        bool isUsable = true;
    };

    /// Selects the colour for painting; false when there is nothing to paint.
    bool selectColor(const Color& color);
    /// The clip's box in device units, widened on all sides; empty when nothing is visible.
    [[nodiscard]] Rect visibleWindow(double margin) const;
    /// False for text that would come out too large or too small for the font library.
    [[nodiscard]] bool hasDrawableEm(double fontSize) const;
    [[nodiscard]] double paintedLineWidth() const;
    /// How far a stroke may stick out from its path, in device units.
    [[nodiscard]] double strokeReach() const;
    /// The clip of an image that the context finds; nothing when it is no box of whole pixels.
    [[nodiscard]] std::optional<PixelRange> foundClip() const;
    /// The part of the clip in force that the path leaves.
    [[nodiscard]] std::optional<PixelRange> clipWithin(const Path& path) const;
    /// True when boxes of whole pixels need no Cairo.
    [[nodiscard]] bool canDrawBoxes() const;
    bool fillAsBox(const Path& path);
    /// Fills the area under a line of many points; false when Cairo has to. The path has to be finite.
    bool fillAsArea(const Path& path);
    /// The path has to reach no farther than Cairo's numbers.
    bool strokeAsBoxes(const Path& path);
    /// Paints the path at places on an image, from its stamps or with `drawPath`.
    void drawRepeats(const Path& path, std::span<const Point> places, StampKind kind, const Color& color, const std::function<void(const Path&)>& drawPath);
    /// Makes the path the target's own for a fill or a clip.
    void layFilledPath(const Path& path);
    void strokeInPieces(const Path& path, const Rect& window);
    /// Strokes a line whose dashes are too many and too fine to be seen.
    void strokeWithoutDash(const Path& path);
    /// Paints lines, in device units, from their own coverage; false when Cairo has to stroke them.
    bool strokeAsMask(std::span<const paint::StrokeRun> lines);
    void drawLines(const text::TextLayout& layout, Point origin, const Color& color);
    /// True when the line's glyphs are painted from masks.
    bool drawLineFromMasks(const text::TextLine& line, const AffineTransform& lineToDevice, const Color& color);

    cairo_t* m_target;
    bool m_isVector = false;
    bool m_hasPlainPixels = false;
    State m_state;
    std::vector<State> m_saved;
};

} // namespace TOLVGraphing::cairo
