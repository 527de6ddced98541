#pragma once

#include "../platform/geometry/Rect.h"
#include "TOLVCurve.h"
#include <TOLVMath/Export.h>

#include <TOLVMath/TOLVRealVector.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace TOLVGraphing {

/// A series bound to the curve that draws it in a rectangle. Building maps the samples and keeps, for every pixel column (one point wide), the smallest and the
/// largest position in their order of occurrence, so that a curve costs pixels, not samples, to stroke.
///
/// The range minima and maxima are in data units and are computed from the samples when first asked for, unless they were set; FLT_MAX for a minimum and -FLT_MAX for
/// a maximum mean "not known". Replacing the vectors does not reset them. As reading them may look for them, one thread at a time uses a curve.
class TOLV_EXPORT TOLVGraphCurve {
public:
    /// The samples of one coordinate, in data units.
    using Vector = std::shared_ptr<const TOLVRealVector>;

    /// Throws Exception "LengthMismatch" when the vectors (copied; the copies share the storage) differ in length. Null vectors count as empty. The line style is shared and may be null.
    [[nodiscard]] static std::shared_ptr<TOLVGraphCurve> curveWithX(const Vector& x, const Vector& y, std::shared_ptr<TOLVLineStyle> lineStyle);
    TOLVGraphCurve(const Vector& x, const Vector& y, std::shared_ptr<TOLVLineStyle> lineStyle);

    // Properties.

    /// The ends of the range that is mapped to the rectangle, in data units; see the class for what they are at first. NaN samples play no part in it. Any number may be set; over a range that is empty or not finite positions are those of
    /// TOLVMapping.
    [[nodiscard]] float xMinimum() const;
    void setXMinimum(float value) { m_xMinimum = value; }
    [[nodiscard]] float xMaximum() const;
    void setXMaximum(float value) { m_xMaximum = value; }
    [[nodiscard]] float yMinimum() const;
    void setYMinimum(float value) { m_yMinimum = value; }
    [[nodiscard]] float yMaximum() const;
    void setYMaximum(float value) { m_yMaximum = value; }
    /// Map the coordinate logarithmically (see TOLVLogarithmicMapping for samples that are not positive). False by default.
    [[nodiscard]] bool xIsLog() const { return m_xIsLog; }
    void setXIsLog(bool isLog) { m_xIsLog = isLog; }
    [[nodiscard]] bool yIsLog() const { return m_yIsLog; }
    void setYIsLog(bool isLog) { m_yIsLog = isLog; }
    /// Kept for hosts; nothing looks at it. False by default.
    [[nodiscard]] bool isDisplayed() const { return m_displayed; }
    void setDisplayed(bool displayed) { m_displayed = displayed; }
    /// Shared. Null strokes with the context's own settings.
    [[nodiscard]] const std::shared_ptr<TOLVLineStyle>& lineStyle() const { return m_lineStyle; }
    void setLineStyle(std::shared_ptr<TOLVLineStyle> lineStyle) { m_lineStyle = std::move(lineStyle); }
    /// Shared. The curve that receives the built path; never null, setting null gives a new one.
    [[nodiscard]] const std::shared_ptr<TOLVCurve>& curve() const { return m_curve; }
    void setCurve(std::shared_ptr<TOLVCurve> curve) { m_curve = curve ? std::move(curve) : std::make_shared<TOLVCurve>(); }
    /// Copied (the copy shares the storage); never null, setting null gives an empty one. Setting vectors of different lengths throws nothing: the samples up to the shorter one count.
    [[nodiscard]] const Vector& x() const { return m_x; }
    void setX(const Vector& x);
    [[nodiscard]] const Vector& y() const { return m_y; }
    void setY(const Vector& y);
    /// Copied. Nothing by default.
    [[nodiscard]] const std::optional<std::string>& label() const { return m_label; }
    void setLabel(std::optional<std::string> label) { m_label = std::move(label); }
    /// The number of abscissae.
    [[nodiscard]] std::size_t pointCount() const { return m_x->length(); }

    // Building and drawing.

    /// Rebuilds the curve for the rectangle (points, y growing upwards). `closed` adds a point on the rectangle's lower edge at either end, so that the curve can
    /// be filled. The samples have to be sorted by x: the first one beyond the maximum ends the curve. The first sample in range is a vertex of its own, and the
    /// samples of the last column reached are not drawn. Throws Exception "BadGraphData" when the smallest y is not known (no samples, or nothing but NaN, and no minimum set).
    ///
    /// An ordinate without a position (NaN, or negative on a logarithmic scale) is passed over within a column; a column that begins with one stands at the coordinate 0 of the view, not at a gap. Vertices that are not finite, as
    /// of infinite samples or NaN abscissae, are left out, and the line goes on behind them. Any rectangle will do; over one that is not finite most vertices are left out.
    void buildPathWithRect(const Rect& rect, bool closed);
    /// Open.
    void buildPathWithRect(const Rect& rect) { buildPathWithRect(rect, false); }
    /// The same as buildPathWithRect.
    void buildForRect(const Rect& rect) { buildPathWithRect(rect); }
    /// Strokes the built curve with the line style; the rectangle is not looked at.
    void drawInRect(const Rect& rect);
    /// Fills the built curve with the colour, then strokes it; the rectangle is not looked at.
    void drawFilledInRect(const Rect& rect, const std::optional<Color>& withColor);
    /// Draws the built curve at the depth into the current OpenGL context, see TOLVCurve::stroke3DAtZ; the rectangle is not looked at.
    void draw3DInRect(const Rect& rect, float atZ);

private:
    static constexpr float kUnknownMinimum = std::numeric_limits<float>::max();
    static constexpr float kUnknownMaximum = -std::numeric_limits<float>::max();

    mutable float m_xMinimum = kUnknownMinimum;
    mutable float m_xMaximum = kUnknownMaximum;
    mutable float m_yMinimum = kUnknownMinimum;
    mutable float m_yMaximum = kUnknownMaximum;
    bool m_xIsLog = false;
    bool m_yIsLog = false;
    bool m_displayed = false;
    std::shared_ptr<TOLVLineStyle> m_lineStyle;
    std::shared_ptr<TOLVCurve> m_curve;
    Vector m_x;
    Vector m_y;
    std::optional<std::string> m_label;
};

} // namespace TOLVGraphing
