#include "TOLVMapping.h"

#include "../platform/foundation/Exception.h"

namespace TOLVGraphing {

TOLVMapping::~TOLVMapping() = default;

void TOLVMapping::setMinValue(float value)
{
    mMinValue = value;
    scaleUpdate();
}

void TOLVMapping::setMaxValue(float value)
{
    mMaxValue = value;
    scaleUpdate();
}

void TOLVMapping::setMinPoint(float point)
{
    mMinPoint = point;
    scaleUpdate();
}

void TOLVMapping::setMaxPoint(float point)
{
    mMaxPoint = point;
    scaleUpdate();
}

float TOLVMapping::pointForValue(float) const
{
    throw Exception("InterfaceMethod", "Trying to call interface method directly");
}

float TOLVMapping::valueForPoint(float) const
{
    throw Exception("InterfaceMethod", "Trying to call interface method directly");
}

std::shared_ptr<TOLVMapping> TOLVMapping::copy() const
{
    auto result = std::make_shared<TOLVMapping>();
    result->copyRangeFrom(*this);
    return result;
}

void TOLVMapping::copyRangeFrom(const TOLVMapping& other)
{
    mMinValue = other.mMinValue;
    mMaxValue = other.mMaxValue;
    mMinPoint = other.mMinPoint;
    mMaxPoint = other.mMaxPoint;
}

} // namespace TOLVGraphing
