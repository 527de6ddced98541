#pragma once

#include "../platform/graphics/Path.h"
#include "TOLVLineStyle.h"
#include "TOLVPointFunctions.h"
#include <TOLVMath/Export.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace TOLVGraphing {

/// A polyline that is collected point by point, in view units (points, y growing upwards), and then stroked or filled with a line style. Nothing is drawn without a current context, and of less than two points no line shows.
class TOLV_EXPORT TOLVCurve {
public:
    /// Empty, open and without a line style.
    TOLVCurve() { reset(); }

    /// Back to an empty, open curve; the line style stays.
    void reset();
    /// Appends the point: the first one starts the line, the others continue it. A point with a coordinate that is not finite is dropped, and the line goes on to
    /// the next one.
    void addPoint(Point point);
    /// Makes room for this many points. Throws what std::vector does for more than there can be.
    void reserve(std::size_t points) { m_path.reserve(points); }
    /// Marks the curve as complete. The path itself gets no closing line, and points may still be added.
    void close() { m_closed = true; }
    /// Closes the curve if it is open and strokes it into the current context with the line style; the context's state is as before afterwards.
    void stroke();
    /// Closes the curve if it is open and fills it into the current context, even-odd rule; no colour fills with black. The line style plays no part.
    void fillWithColor(const std::optional<Color>& color);
    /// Closes the curve if it is open and draws it as one line strip at the depth z into the current OpenGL context (see OpenGLSystem), in single precision; nothing is drawn without one. Colour and line width are the
    /// host's to set.
    void stroke3DAtZ(float z);

    /// The points so far: one move, then lines.
    [[nodiscard]] const Path& path() const { return m_path; }
    /// The points that the path goes through, in order.
    [[nodiscard]] std::vector<Point> allPoints() const;
    /// Kept for smoothing; nothing reads them. All zero.
    [[nodiscard]] const std::array<TOLVDrawPoint, 3>& DP() const { return m_drawPoints; }
    /// The number of points accepted since the last reset.
    [[nodiscard]] std::uint32_t pointIdx() const { return m_pointIdx; }
    /// Whether the curve is marked as complete: see `close`.
    [[nodiscard]] bool closed() const { return m_closed; }
    void setClosed(bool closed) { m_closed = closed; }
    /// Shared; null strokes with the context's own settings.
    [[nodiscard]] const std::shared_ptr<TOLVLineStyle>& lineStyle() const { return m_lineStyle; }
    void setLineStyle(std::shared_ptr<TOLVLineStyle> lineStyle) { m_lineStyle = std::move(lineStyle); }

private:
    Path m_path;
    std::array<TOLVDrawPoint, 3> m_drawPoints;
    std::uint32_t m_pointIdx = 0;
    bool m_closed = false;
    std::shared_ptr<TOLVLineStyle> m_lineStyle;
};

} // namespace TOLVGraphing
