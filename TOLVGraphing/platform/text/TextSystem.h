#pragma once

#include "../geometry/Point.h"
#include "AttributedString.h"
#include <TOLVMath/Export.h>

#include <memory>

namespace TOLVGraphing {

/// Measures text. A desktop installs one that knows its fonts; until then FixedTextSystem answers, so that the library works without any fonts.
/// Every answer is in points and unrounded, so that screen, file and paper lay out alike. Implementations are safe to ask from several threads, answer for any text and font size, and throw nothing.
class TOLV_EXPORT TextSystem {
public:
    virtual ~TextSystem();

    /// Width of the longest line and height of all lines of a text.
    [[nodiscard]] virtual Size size(const AttributedString& text) const = 0;
    /// Baseline to top of a font's face.
    [[nodiscard]] virtual double ascender(const Font& font) const = 0;
    /// The height of a text of one line in the font. It is that of "Tj" unless a text system knows it without looking at letters.
    [[nodiscard]] virtual double lineHeight(const Font& font) const;
};

/// A text system whose characters are all equally wide: 0.6 em a character (a code point), lines 1.2 em high, ascender 0.8 em; an em is the font's size as it is, also one that is negative or NaN.
class TOLV_EXPORT FixedTextSystem final : public TextSystem {
public:
    [[nodiscard]] Size size(const AttributedString& text) const override;
    [[nodiscard]] double ascender(const Font& font) const override;
};

/// The text system in force for the whole process, never null.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<const TextSystem> textSystem();
/// Installs a text system (shared) for the process; null brings the fixed one back. Safe to call from any thread.
TOLV_EXPORT void setTextSystem(std::shared_ptr<const TextSystem> system);

/// Installs a text system for the life of the scope, for the whole process.
class TOLV_EXPORT TextSystemScope {
public:
    /// The text system is shared; null stands for the fixed one. The end of the scope brings the former one back.
    explicit TextSystemScope(std::shared_ptr<const TextSystem> system);
    ~TextSystemScope();
    TextSystemScope(const TextSystemScope&) = delete;
    TextSystemScope& operator=(const TextSystemScope&) = delete;

private:
    std::shared_ptr<const TextSystem> m_former;
};

} // namespace TOLVGraphing
