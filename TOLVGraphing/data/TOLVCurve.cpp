#include "TOLVCurve.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/graphics/PathPoints.h"
#include "../platform/opengl/OpenGLConstants.h"
#include "../platform/opengl/OpenGLContext.h"

namespace TOLVGraphing {

void TOLVCurve::reset()
{
    m_path.removeAllPoints();
    for (TOLVDrawPoint& drawPoint : m_drawPoints)
        TOLVDrawPointInit(drawPoint);
    m_pointIdx = 0;
    m_closed = false;
}

void TOLVCurve::addPoint(Point point)
{
    if (!point.valid())
        return;
    if (m_pointIdx == 0)
        m_path.moveToPoint(point);
    else
        m_path.addLineToPoint(point);
    ++m_pointIdx;
}

void TOLVCurve::stroke()
{
    if (!m_closed)
        close();
    DrawingContext* context = currentContext();
    if (!context)
        return;
    const GraphicsStateSaver saver(*context);
    if (m_lineStyle)
        m_lineStyle->setInContext(*context);
    context->drawStrokedPath(m_path);
}

void TOLVCurve::fillWithColor(const std::optional<Color>& color)
{
    if (!m_closed)
        close();
    DrawingContext* context = currentContext();
    if (!context)
        return;
    const GraphicsStateSaver saver(*context);
    context->setFillColor(color);
    context->drawFilledPath(m_path, FillRule::EvenOdd);
}

std::vector<Point> TOLVCurve::allPoints() const
{
    return onPathPoints(m_path);
}

void TOLVCurve::stroke3DAtZ(float z)
{
    if (!m_closed)
        close();
    const auto context = currentOpenGLContext();
    if (!context)
        return;
    context->perform([&](OpenGLFunctions& gl) {
        gl.begin(kGLLineStrip);
        for (const Point& point : allPoints())
            gl.vertex3f(static_cast<float>(point.x), static_cast<float>(point.y), z);
        gl.end();
    });
}

} // namespace TOLVGraphing
