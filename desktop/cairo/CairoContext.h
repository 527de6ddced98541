#pragma once

#include "PixelRange.h"
#include "TOLVGraphing/platform/graphics/DrawingContext.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

typedef struct _cairo cairo_t;
typedef struct _PangoLayoutLine PangoLayoutLine;

namespace TOLVGraphing::text {
struct TextLayout;
}

namespace TOLVGraphing::paint {
struct StrokeRun;
}

namespace TOLVGraphing::cairo {

enum class StampKind : std::uint8_t;

/// Lets points with y growing upwards reach a Cairo target whose y grows downwards: the origin goes to the lower-left corner, `deviceHeight` device units below the top,
/// and a point becomes `unitsPerPoint` device units.
void setUpwardCoordinates(cairo_t* target, double deviceHeight, double unitsPerPoint);

/// Draws into a Cairo target: images, PDF, PostScript, windows.
///
/// The transform in force at construction is the base: it maps points with y growing upwards to the device (setUpwardCoordinates makes such a one). The target is left as it was
/// found, whatever was saved and not restored, when the context goes.
///
/// Nothing that is drawn puts the target into Cairo's error state or wraps around in its fixed-point numbers:
/// - elements with non-finite points are left out (see paint::finiteElements), a transform that cannot be inverted (or only
///   with areas beyond 1e24) draws nothing until it is restored,
///   and no lines are drawn under one that stretches one direction a thousand million times as far as another;
/// - colours are limited to 0...1 when something is painted, and what is wholly transparent is not painted;
/// - dashes go through paint::usableDash; a line width that is not above zero draws nothing, one that is not finite likewise;
/// - a path that reaches farther than a million device units is cut to a window around the clip, the rest is exact;
/// - a dashed line out of sight is cut off as well, because Cairo would walk along all its dashes; one of more than a million dashes and gaps is painted without them on pixels, in a colour that is weaker by the part that the gaps take;
/// - a line with round or square ends that is a thousand times wider than its gaps is painted without them, because nothing of them would be seen and each end costs Cairo thousands of vertices.
///
/// On pixels upright boxes (backgrounds, frames, grid lines; those in translucent colours where they cover whole pixels) and small text are drawn without Cairo, with the same result to the byte, where the clip is known to end at whole pixels:
/// the clip that the context finds and every one that is set through it. A line with many corners that goes in one direction of x, as the curve of a graph does, is painted from its exact coverage (see PolylineStrokes.h) many times faster than by Cairo.
///
/// Text is always upright in the coordinates in force. On pixels its glyphs stand within an eighth of a pixel of their exact places (see GlyphMasks), large text exactly;
/// elsewhere it stays text with embedded fonts.
class CairoContext final : public DrawingContext {
public:
    /// Takes a reference to the target. On PostScript every translucent colour makes Cairo turn the page into a bitmap: draw through a paint::OpaqueContext there.
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
    /// True for images while the clip consists of whole pixels: small paths are then painted from remembered coverage (see PathStamps), all others by themselves.
    [[nodiscard]] bool drawsRepeatsQuickly() const override;
    void drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places) override;
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override;
    /// Known for images, of rectangles whose edges the transform puts on edges of pixels, while the clip consists of whole pixels.
    [[nodiscard]] std::optional<Rect> wholePixelsOfFill(const Rect& rect) const override;
    [[nodiscard]] Rect fillOfWholePixels(const Rect& pixels) const override;

    /// What went wrong in Cairo, in its words; empty while all is well.
    [[nodiscard]] std::string error() const;
    /// The Cairo target, owned by the context.
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
    bool drawLineFromMasks(PangoLayoutLine* line, const AffineTransform& lineToDevice, const Color& color);

    cairo_t* m_target;
    bool m_isVector = false;
    bool m_hasPlainPixels = false;
    State m_state;
    std::vector<State> m_saved;
};

} // namespace TOLVGraphing::cairo
