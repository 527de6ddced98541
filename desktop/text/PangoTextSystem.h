#pragma once

#include "TOLVGraphing/platform/text/TextSystem.h"
#include <TOLVMath/Export.h>

#include <memory>

namespace TOLVGraphing {

/// Makes the desktop's fonts measure every text of the process from now on: without it a fixed text system answers (see TextSystem), and labels are laid out for letters that nobody draws. Programs call it once at their start, before anything is
/// laid out; installQtServices does. More calls change nothing. Every backend of the desktop draws with the same text system, text::PangoTextSystem::shared(). Any thread may call it.
TOLV_EXPORT void installDesktopTextSystem();

} // namespace TOLVGraphing

/// Fonts and texts of the desktop.
namespace TOLVGraphing::text {

/// Measures and lays out text with Pango. The library's own faces (HelveticaNeue, HelveticaNeue-Bold, HelveticaNeue-Light, Helvetica and further styles of both families; an empty name means Helvetica) are the real fonts where they are
/// installed, else Nimbus Sans, else Liberation Sans, else the sans-serif font that fontconfig offers, of which one line in the log tells, as it does where no font is installed at all: a box then stands for each character. Their extents are
/// always those of the named faces. Any other name is the face of that PostScript or full name, else the family of that name, else a family with a style ("Family-Bold"); what is not installed is left to fontconfig.
///
/// Sizes are points with y growing upwards. Nothing is hinted and no advance is rounded, so one point of text is one point on a screen,
/// in a file and on paper, and every output has the same layout. Characters that a face lacks come from other fonts. Bytes that are not UTF-8 read U+FFFD.
///
/// The width of a text is the advance width of its longest line. The line box reaches from the baseline up by the ascender and down by the descender and the leading: the
/// leading is below. A newline, a carriage return (both together once) and Unicode's separators of lines and paragraphs end a line; a text has one line more than such ends, an empty one too. A font size that is not a finite number above zero gives the size zero, nothing is drawn then.
/// A text is cut after 200,000 bytes.
///
/// Making a text system only begins to read the list of fonts, in the background; the first text that is measured or drawn waits for it.
///
/// Recent layouts are remembered, a bounded number of them. Safe to use from several threads, which then take turns.
class TOLV_EXPORT PangoTextSystem final : public TextSystem {
public:
    /// A text system of its own, with a memory of its own. Backends use shared() instead.
    PangoTextSystem();
    ~PangoTextSystem() override;

    /// The one that every backend of the process draws with, never null; made by the first call.
    [[nodiscard]] static std::shared_ptr<const PangoTextSystem> shared();

    [[nodiscard]] Size size(const AttributedString& text) const override;
    [[nodiscard]] double ascender(const Font& font) const override;
    /// The height of a text of one line in points: ascender, descender and leading. Of the library's own faces it is known before any font is loaded.
    [[nodiscard]] double lineHeight(const Font& font) const override;

private:
    /// The library's own.
    friend struct SharedLayouts;
    struct Engine;

    std::unique_ptr<Engine> m_engine;
};

} // namespace TOLVGraphing::text
