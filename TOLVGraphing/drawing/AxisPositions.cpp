#include "AxisPositions.h"

#include "../axes/TOLVDateAxis.h"
#include "../axes/TOLVLinearAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../mapping/TOLVMapping.h"

#include <typeinfo>

namespace TOLVGraphing {

namespace {

/// True for an axis whose positions are those of its mapping. A subclass may have positions of its own.
bool hasMappedPositions(const TOLVAxis& axis)
{
    return typeid(axis) == typeid(TOLVLinearAxis) || typeid(axis) == typeid(TOLVLogarithmicAxis) || typeid(axis) == typeid(TOLVDateAxis);
}

} // namespace

AxisPositions::AxisPositions(const TOLVAxis* axis, const Rect& dataRect) : m_axis(axis), m_dataRect(dataRect)
{
    if (axis && hasMappedPositions(*axis))
        m_mapping = axis->mappingForRect(dataRect);
}

float AxisPositions::pointForValue(float value) const
{
    if (m_mapping)
        return m_mapping->pointForValue(value);
    return m_axis ? m_axis->pointForValue(value, m_dataRect) : 0.0F;
}

} // namespace TOLVGraphing
