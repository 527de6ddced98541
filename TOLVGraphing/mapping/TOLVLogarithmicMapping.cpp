#include "TOLVLogarithmicMapping.h"

namespace TOLVGraphing {

void TOLVLogarithmicMapping::setMinValue(float value)
{
    mLogMin = logarithm(value);
    TOLVMapping::setMinValue(value);
}

void TOLVLogarithmicMapping::setMaxValue(float value)
{
    mLogMax = logarithm(value);
    TOLVMapping::setMaxValue(value);
}

std::shared_ptr<TOLVMapping> TOLVLogarithmicMapping::copy() const
{
    auto result = std::make_shared<TOLVLogarithmicMapping>();
    result->copyRangeFrom(*this);
    return result;
}

void TOLVLogarithmicMapping::scaleUpdate()
{
    const float difference = mLogMax - mLogMin;
    const bool usable = difference < 0.0F || difference > 0.0F;
    mScaler = usable ? (mMaxPoint - mMinPoint) / difference : 0.0F;
}

} // namespace TOLVGraphing
