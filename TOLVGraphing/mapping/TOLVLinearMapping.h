#pragma once

#include "TOLVMapping.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Maps values linearly: (value - minValue) * scale + minPoint, each operation rounded to single precision. Throws nothing.
class TOLV_EXPORT TOLVLinearMapping final : public TOLVMapping {
public:
    [[nodiscard]] float pointForValue(float value) const override { return (value - mMinValue) * mScaler + mMinPoint; }
    [[nodiscard]] float valueForPoint(float point) const override { return (point - mMinPoint) / mScaler + mMinValue; }
    [[nodiscard]] std::shared_ptr<TOLVMapping> copy() const override;

    /// Points per data unit; negative where one of the ranges runs backwards, 0 while the value range is empty, infinite or NaN.
    [[nodiscard]] float scaler() const { return mScaler; }

protected:
    void scaleUpdate() override;

private:
    float mScaler = 0.0F;
};

} // namespace TOLVGraphing
