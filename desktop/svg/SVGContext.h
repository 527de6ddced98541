#pragma once

#include "TOLVGraphing/platform/graphics/DrawingContext.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

/// Drawing as SVG.
namespace TOLVGraphing::svg {

/// Writes a drawing as an SVG 1.1 document whose text stays text: it can be searched, copied and edited.
///
/// The page is `size` points, y growing upwards; one unit of the document is a point, its width and height are given in `pt`. Paths are written in page coordinates with six digits after the point, colours with 8 bits a
/// component. The same calls give the same bytes.
///
/// Text is set in a list of families that starts with the named one, at the place and length that the desktop's text system computes: where a reader has another font,
/// `textLength` makes it squeeze or widen the glyphs to that length. Each line is an element of its own, upright in the coordinates in force.
///
/// Clips become groups; the elements of one clip stay in one group across save and restore, and equal clips share a definition.
/// Nothing is written for elements that would paint nothing, for those with non-finite points (what follows goes on from the last finite point) or under a transform without inverse. Line widths, dashes and miter limits that cannot
/// be are what they are in a cairo::CairoContext. Paths that reach farther than a million points are cut to the surroundings of the page. Bytes that are no UTF-8, and characters that XML does not know, are replaced.
///
/// `renderToBytes` makes one for OutputKind::SVG; a host needs it only for a document of its own. Texts are set by the desktop's text system (see installDesktopTextSystem). One object is used from one thread at a time.
class TOLV_EXPORT SVGContext final : public DrawingContext {
public:
    /// An empty, clear page of this size in points, which has to be finite and above zero.
    explicit SVGContext(Size size);

    /// What the document is called; readers show it. Empty writes none.
    void setTitle(std::string title) { m_title = std::move(title); }
    /// A longer description, or who made the document. Empty writes none.
    void setDescription(std::string description) { m_description = std::move(description); }

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

    /// The complete document as drawn so far, in UTF-8, ended by a newline. The drawing may go on afterwards.
    [[nodiscard]] std::string document() const;

private:
    struct State {
        /// To page coordinates with y growing downwards.
        AffineTransform transform;
        Color fillColor;
        Color strokeColor;
        double lineWidth = 1.0;
        double miterLimit = 10.0;
        LineDash dash;
        LineCap cap = LineCap::Butt;
        LineJoin join = LineJoin::Miter;
        /// The clips in force, outermost first, by number.
        std::vector<std::size_t> clips;
        bool isUsable = true;
    };

    /// Opens and closes groups until exactly the clips in force are open.
    void enterClips();
    /// The number of the definition with this content, written now if it is new.
    std::size_t clipNumber(const std::string& content);
    /// The stroke's attributes for lengths that are multiplied by `scale`.
    [[nodiscard]] std::string strokeAttributes(double scale) const;
    void appendStrokedElement(const std::string& data, const std::string& attributes);
    void strokeInPieces(const Path& path);
    /// The page with its surroundings, widened by as far as a line sticks out from its path.
    [[nodiscard]] Rect window(double lineReach) const;
    /// The path data in page coordinates, cut to the window when it reaches too far.
    [[nodiscard]] std::string filledData(const Path& path) const;

    Size m_size;
    std::string m_title;
    std::string m_description;
    State m_state;
    std::vector<State> m_saved;
    std::vector<std::size_t> m_openClips;
    std::unordered_map<std::string, std::size_t> m_clipNumbers;
    std::size_t m_clipCount = 0;
    std::string m_body;
};

} // namespace TOLVGraphing::svg
