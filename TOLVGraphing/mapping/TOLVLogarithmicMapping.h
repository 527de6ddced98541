#pragma once

#include "TOLVMapping.h"
#include <TOLVMath/Export.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing {

/// Maps the base-10 logarithm of the values linearly, in single precision. The smallest normal float, about 1.2e-38, is added before each logarithm: 0 maps as if it were that number, far below any
/// sensible range, and values below its negative map to NaN. `minValue` and `maxValue` are the values themselves, not logarithms. Callers keep the range positive: with a `minValue` below 0 every position is NaN. Throws nothing.
class TOLV_EXPORT TOLVLogarithmicMapping final : public TOLVMapping {
public:
    void setMinValue(float value) override;
    void setMaxValue(float value) override;

    [[nodiscard]] float pointForValue(float value) const override { return (logarithm(value) - mLogMin) * mScaler + mMinPoint; }
    [[nodiscard]] float valueForPoint(float point) const override { return std::pow(10.0F, (point - mMinPoint) / mScaler + mLogMin); }
    [[nodiscard]] std::shared_ptr<TOLVMapping> copy() const override;

    /// Points per decade; negative where one of the ranges runs backwards, 0 while the range of the logarithms is empty, infinite or NaN.
    [[nodiscard]] float scaler() const { return mScaler; }
    /// The base-10 logarithm that maps to `minPoint`; 0 until `minValue` is set, also in a copy.
    [[nodiscard]] float logMin() const { return mLogMin; }

protected:
    void scaleUpdate() override;

private:
    static float logarithm(float value) { return std::log10(value + std::numeric_limits<float>::min()); }

    float mLogMin = 0.0F;
    float mLogMax = 0.0F;
    float mScaler = 0.0F;
};

} // namespace TOLVGraphing
