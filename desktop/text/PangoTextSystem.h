#pragma once

#include "TOLVGraphing/platform/text/TextSystem.h"
#include <TOLVMath/Export.h>

#include <functional>
#include <memory>

namespace TOLVGraphing {

/// Makes the desktop's fonts measure every text of the process from now on. Programs call it once at their start.
TOLV_EXPORT void installDesktopTextSystem();

} // namespace TOLVGraphing

namespace TOLVGraphing::text {

struct TextLayout;

/// Measures and lays out text with Pango and the fonts that FontResolver finds. Nothing is hinted and no advance is rounded, so one point of text is one point on a screen,
/// in a file and on paper, and every output has the same layout. Characters that a face lacks come from other fonts. Bytes that are not UTF-8 read U+FFFD.
///
/// The width of a text is the advance width of its longest line. The line box reaches from the baseline up by the ascender and down by the descender and the leading: the
/// leading is below. A text has as many lines as newlines and one more. A font size that is not a finite number above zero gives the size zero, nothing is drawn then.
/// A text is cut after 200,000 bytes.
///
/// Making a text system only begins to read the list of fonts, in the background; the first text that is measured or drawn waits for it.
///
/// Recent layouts are remembered, a bounded number of them. Safe to use from several threads, which then take turns.
class TOLV_EXPORT PangoTextSystem final : public TextSystem {
public:
    PangoTextSystem();
    ~PangoTextSystem() override;

    /// The one that every backend of the process draws with.
    [[nodiscard]] static std::shared_ptr<const PangoTextSystem> shared();

    [[nodiscard]] Size size(const AttributedString& text) const override;
    [[nodiscard]] double ascender(const Font& font) const override;
    /// Of the library's own faces it is known before any font is loaded.
    [[nodiscard]] double lineHeight(const Font& font) const override;

    /// Calls the function with the text's layout, for a backend to draw it. The layout is valid during the call only and no other text is laid out meanwhile: the function must
    /// not ask for another one.
    void withLayout(const AttributedString& text, const std::function<void(const TextLayout&)>& use) const;

private:
    struct Engine;

    std::unique_ptr<Engine> m_engine;
};

} // namespace TOLVGraphing::text
