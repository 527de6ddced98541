#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// A colour as plain device red, green, blue and alpha components (double precision, not premultiplied). Components outside 0...1 are kept as
/// they are and clamped only when something is painted, so that colour arithmetic loses nothing.
class TOLV_EXPORT Color {
public:
    /// Opaque black.
    Color() = default;
    /// Any numbers will do.
    Color(double red, double green, double blue, double alpha = 1.0) : m_red(red), m_green(green), m_blue(blue), m_alpha(alpha) {}

    /// The same as the constructor.
    [[nodiscard]] static Color colorWithRed(double red, double green, double blue, double alpha) { return {red, green, blue, alpha}; }
    /// A grey whose three components are `white`, from 0 for black to 1.
    [[nodiscard]] static Color colorWithWhite(double white, double alpha = 1.0) { return {white, white, white, alpha}; }
    /// Opaque.
    [[nodiscard]] static Color blackColor() { return {0.0, 0.0, 0.0, 1.0}; }
    [[nodiscard]] static Color whiteColor() { return {1.0, 1.0, 1.0, 1.0}; }
    /// The middle grey, 0.5.
    [[nodiscard]] static Color grayColor() { return colorWithWhite(0.5); }
    /// Two thirds white.
    [[nodiscard]] static Color lightGrayColor() { return colorWithWhite(2.0 / 3.0); }
    /// One third white.
    [[nodiscard]] static Color darkGrayColor() { return colorWithWhite(1.0 / 3.0); }

    /// As it was given, not clamped.
    [[nodiscard]] double redComponent() const { return m_red; }
    [[nodiscard]] double greenComponent() const { return m_green; }
    [[nodiscard]] double blueComponent() const { return m_blue; }
    [[nodiscard]] double alphaComponent() const { return m_alpha; }

    /// The same colour with another alpha.
    [[nodiscard]] Color colorWithAlphaComponent(double alpha) const { return {m_red, m_green, m_blue, alpha}; }
    /// The colour as it is painted: every component limited to 0...1, NaN to 0.
    [[nodiscard]] Color clamped() const;

    /// Makes this the fill and the stroke colour of the current drawing context; does nothing without one.
    void set() const;
    /// Makes this the fill colour of the current drawing context; does nothing without one.
    void setFill() const;
    /// Makes this the stroke colour of the current drawing context; does nothing without one.
    void setStroke() const;

    friend bool operator==(const Color&, const Color&) = default;

private:
    double m_red = 0.0;
    double m_green = 0.0;
    double m_blue = 0.0;
    double m_alpha = 1.0;
};

/// "(red, green, blue, alpha)", digits as for a point.
[[nodiscard]] TOLV_EXPORT std::string toString(const Color& color);

} // namespace TOLVGraphing
