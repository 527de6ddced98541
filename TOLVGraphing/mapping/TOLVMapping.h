#pragma once

#include <TOLVMath/Export.h>

#include <memory>

namespace TOLVGraphing {

/// Converts a data value of one axis to a position in view units (points) and back. Every number is single precision.
///
/// `minValue` maps to `minPoint` and `maxValue` to `maxPoint`; nothing is clamped. The four properties are 0 at first and may be set in any order. While the value
/// range is empty or NaN every finite value maps to `minPoint`, and `valueForPoint` divides by zero: it answers an infinity or NaN.
class TOLV_EXPORT TOLVMapping {
public:
    /// All four properties are 0.
    TOLVMapping() = default;
    virtual ~TOLVMapping();

    /// The ends of the value range, in data units, and the positions of the two, in points.
    [[nodiscard]] float minValue() const { return mMinValue; }
    [[nodiscard]] float maxValue() const { return mMaxValue; }
    [[nodiscard]] float minPoint() const { return mMinPoint; }
    [[nodiscard]] float maxPoint() const { return mMaxPoint; }
    /// Sets an end of the value range, or its position; any number will do.
    virtual void setMinValue(float value);
    virtual void setMaxValue(float value);
    void setMinPoint(float point);
    void setMaxPoint(float point);

    /// The value's position; NaN for NaN. Throws Exception "InterfaceMethod" on this class itself.
    [[nodiscard]] virtual float pointForValue(float value) const;
    /// The position's value. Throws Exception "InterfaceMethod" on this class itself.
    [[nodiscard]] virtual float valueForPoint(float point) const;

    /// A new mapping of the same class with the same four range properties and a scale of zero: it maps every value to `minPoint` until one of its
    /// properties is set.
    [[nodiscard]] virtual std::shared_ptr<TOLVMapping> copy() const;

protected:
    /// Called after each of the four properties has been set: recomputes what is derived from them.
    virtual void scaleUpdate() {}
    /// Copies the four range fields and nothing else.
    void copyRangeFrom(const TOLVMapping& other);

    /// The four properties, for subclasses to compute with.
    float mMinValue = 0.0F;
    float mMaxValue = 0.0F;
    float mMinPoint = 0.0F;
    float mMaxPoint = 0.0F;
};

} // namespace TOLVGraphing
