#pragma once

#include "DrawingContext.h"
#include <TOLVMath/Export.h>

#include <string>
#include <vector>

namespace TOLVGraphing {

/// Writes down every call as one line of short text and draws nothing: tests compare drawings with it, tools print it.
///
/// Lines: "save", "restore", "transform [a b c d tx ty]", "clip PATH", "eoclip PATH", "fillColor (r, g, b, a)", "strokeColor none", "lineWidth 1",
/// "lineDash 0 [5, 2]", "lineCap round", "lineJoin bevel", "miterLimit 10", "fill PATH", "eofill PATH", "stroke PATH",
/// "text "Tj" HelveticaNeue 12 (0, 0, 0, 1) at (x, y)". Numbers have the shortest digits that give them back; those that are not finite read "nan", "inf" and "-inf". Texts stand as they are: a newline in one, or a quotation mark, is not marked.
class TOLV_EXPORT RecordingContext final : public DrawingContext {
public:
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

    /// The lines so far, in order.
    [[nodiscard]] const std::vector<std::string>& calls() const { return m_calls; }
    /// The lines so far, each ended by a newline.
    [[nodiscard]] std::string text() const;
    /// How many states are saved and not yet restored.
    [[nodiscard]] int depth() const { return m_depth; }
    /// True once a restore came without a save.
    [[nodiscard]] bool hasUnmatchedRestore() const { return m_unmatchedRestore; }
    /// Forgets the lines; the depth stays.
    void clearCalls() { m_calls.clear(); }

private:
    std::vector<std::string> m_calls;
    int m_depth = 0;
    bool m_unmatchedRestore = false;
};

} // namespace TOLVGraphing
