#pragma once

#include "ForwardingContext.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// The colour of a dark window unless a host has another one: a grey of 30/255.
[[nodiscard]] inline Color darkBackgroundColor()
{
    return Color::colorWithWhite(30.0 / 255.0);
}

/// The counterpart on a dark ground of a colour chosen for a white one. Lightness is inverted in OKLab: white becomes the background, black a grey of 0.95, and what is lighter than another colour of its hue and chroma becomes darker than it. The
/// hue stays, and the chroma as far as sRGB goes. Greys fade into the background; the more colourful a colour is, the less dark it becomes, so that from a chroma of 0.1 on every colour has a contrast of at least 3:1 to a background that is
/// dark itself (up to a grey of 0.2). The alpha stays as it is; that of the background is not looked at. Components are limited to 0...1 first, NaN counts as 0.
[[nodiscard]] TOLV_EXPORT Color colorOnDarkGround(const Color& color, const Color& background);

/// Hands a drawing made for white paper on to a context with a dark ground: every colour of fills, strokes and texts is replaced by its counterpart (`colorOnDarkGround`), absent ones by that of black. What fills the page with white fills it with the
/// background.
///
/// The target is not owned and has to be in its initial state, whose black this object replaces at once.
class TOLV_EXPORT DarkContext final : public ForwardingContext {
public:
    /// The target has to outlive this object. The background is copied; it is painted opaque, whatever its alpha.
    explicit DarkContext(DrawingContext& target, const Color& background = darkBackgroundColor());

    /// The colour that white becomes, with components limited to 0...1 and opaque. Filling the ground with it is the host's part.
    [[nodiscard]] const Color& background() const { return m_background; }

    void setFillColor(const std::optional<Color>& color) override;
    void setStrokeColor(const std::optional<Color>& color) override;
    void drawText(const AttributedString& text, Point origin) override;

private:
    [[nodiscard]] Color counterpart(const std::optional<Color>& color) const;

    Color m_background;
};

} // namespace TOLVGraphing
