#include "TOLVGraphCurve.h"

#include "../platform/foundation/Exception.h"
#include "ColumnReduction.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

namespace {

TOLVGraphCurve::Vector copied(const TOLVGraphCurve::Vector& vector)
{
    return vector ? vector->copy() : TOLVRealVector::vector();
}

} // namespace

std::shared_ptr<TOLVGraphCurve> TOLVGraphCurve::curveWithX(const Vector& x, const Vector& y, std::shared_ptr<TOLVLineStyle> lineStyle)
{
    return std::make_shared<TOLVGraphCurve>(x, y, std::move(lineStyle));
}

TOLVGraphCurve::TOLVGraphCurve(const Vector& x, const Vector& y, std::shared_ptr<TOLVLineStyle> lineStyle)
    : m_lineStyle(std::move(lineStyle))
    , m_curve(std::make_shared<TOLVCurve>())
    , m_x(copied(x))
    , m_y(copied(y))
{
    if (m_x->length() != m_y->length()) {
        throw Exception("LengthMismatch", "Curve X and Y data length mismatch (" + std::to_string(m_x->length()) + " vs " + std::to_string(m_y->length()) + ")");
    }
}

void TOLVGraphCurve::setX(const Vector& x)
{
    m_x = copied(x);
}

void TOLVGraphCurve::setY(const Vector& y)
{
    m_y = copied(y);
}

float TOLVGraphCurve::xMinimum() const
{
    if (m_xMinimum == kUnknownMinimum)
        m_x->getMinimum(&m_xMinimum, nullptr);
    return m_xMinimum;
}

float TOLVGraphCurve::xMaximum() const
{
    if (m_xMaximum == kUnknownMaximum)
        m_x->getMaximum(&m_xMaximum, nullptr);
    return m_xMaximum;
}

float TOLVGraphCurve::yMinimum() const
{
    if (m_yMinimum == kUnknownMinimum)
        m_y->getMinimum(&m_yMinimum, nullptr);
    return m_yMinimum;
}

float TOLVGraphCurve::yMaximum() const
{
    if (m_yMaximum == kUnknownMaximum)
        m_y->getMaximum(&m_yMaximum, nullptr);
    return m_yMaximum;
}

void TOLVGraphCurve::buildPathWithRect(const Rect& rect, bool closed)
{
    ColumnReduction reduction;
    reduction.xMaximum = xMaximum();
    reduction.xMinimum = xMinimum();
    reduction.yMaximum = yMaximum();
    reduction.yMinimum = yMinimum();
    if (reduction.yMinimum == kUnknownMinimum)
        throw Exception("BadGraphData", "Could not obtain an overall minimum Y value");
    reduction.rect = rect;
    reduction.closed = closed;
    reduction.xIsLog = m_xIsLog;
    reduction.yIsLog = m_yIsLog;
    m_curve->reset();
    reduction.reduce(*m_x, *m_y, *m_curve);
}

void TOLVGraphCurve::drawInRect(const Rect&)
{
    m_curve->setLineStyle(m_lineStyle);
    m_curve->stroke();
}

void TOLVGraphCurve::drawFilledInRect(const Rect&, const std::optional<Color>& withColor)
{
    m_curve->setLineStyle(m_lineStyle);
    m_curve->fillWithColor(withColor);
    m_curve->stroke();
}

void TOLVGraphCurve::draw3DInRect(const Rect&, float atZ)
{
    m_curve->stroke3DAtZ(atZ);
}

} // namespace TOLVGraphing
