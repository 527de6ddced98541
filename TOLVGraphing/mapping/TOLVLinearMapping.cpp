#include "TOLVLinearMapping.h"

namespace TOLVGraphing {

std::shared_ptr<TOLVMapping> TOLVLinearMapping::copy() const
{
    auto result = std::make_shared<TOLVLinearMapping>();
    result->copyRangeFrom(*this);
    return result;
}

void TOLVLinearMapping::scaleUpdate()
{
    const float difference = mMaxValue - mMinValue;
    // Written so that NaN, like zero, gives no scale.
    const bool usable = difference < 0.0F || difference > 0.0F;
    mScaler = usable ? (mMaxPoint - mMinPoint) / difference : 0.0F;
}

} // namespace TOLVGraphing
