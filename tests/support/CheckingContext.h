#pragma once

#include <TOLVGraphing/platform/geometry/Rect.h>
#include <TOLVGraphing/platform/graphics/ForwardingContext.h>

#include <cstddef>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// Hands everything on and notes what must hold for every drawing: numbers are finite, saved states are restored, paints lie in a clip. Counts what passes.
class CheckingContext final : public ForwardingContext {
public:
    using ForwardingContext::ForwardingContext;

    void saveState() override;
    void restoreState() override;
    void concatenateTransform(const AffineTransform& transform) override;
    void clipToPath(const Path& path, FillRule rule) override;
    void setLineWidth(double width) override;
    void setLineDash(const LineDash& dash) override;
    void drawFilledPath(const Path& path, FillRule rule) override;
    void drawStrokedPath(const Path& path) override;
    void drawText(const AttributedString& text, Point origin) override;
    void drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places) override;
    void drawStrokedRepeats(const Path& path, std::span<const Point> places) override;

    /// Operations other than saving and restoring; a repeat counts once for each place.
    [[nodiscard]] std::size_t calls() const { return m_calls; }
    /// The points of all paths, and the places of repeats.
    [[nodiscard]] std::size_t points() const { return m_points; }
    /// Every save has its restore.
    [[nodiscard]] bool isBalanced() const { return m_clips.empty() && !m_hasUnmatchedRestore; }
    /// What was not finite first; empty while all is.
    [[nodiscard]] const std::string& notFinite() const { return m_notFinite; }
    /// The smallest rectangle around the clips that paints happened under, in the coordinates of the first transform; empty without a paint. Everything when one was painted without a clip.
    [[nodiscard]] const Rect& paintedClip() const { return m_paintedClip; }

private:
    struct Clip {
        AffineTransform transform;
        Rect rect;
    };

    void expectFinite(bool isFinite, const char* what);
    void countPath(const Path& path, const char* what);
    void notePaint();

    std::size_t m_calls = 0;
    std::size_t m_points = 0;
    bool m_hasUnmatchedRestore = false;
    std::string m_notFinite;
    Clip m_clip{{}, {-1e30, -1e30, 2e30, 2e30}};
    std::vector<Clip> m_clips;
    Rect m_paintedClip;
};

} // namespace TOLVGraphing::testing_support
