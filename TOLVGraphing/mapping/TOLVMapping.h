#pragma once

#include <TOLVMath/Export.h>

#include <memory>

namespace TOLVGraphing {

/// Converts a data value of one axis to a position in view units (points) and back. Every number is single precision.
///
/// `minValue` maps to `minPoint` and `maxValue` to `maxPoint`, up to rounding; nothing is clamped, and a range or positions that run backwards map backwards. The four properties are 0 at first and may be set in any order.
/// Over an empty value range, and over one whose `maxValue` is infinite or NaN, every finite value maps to `minPoint`; with a `minValue` that is not finite every position is NaN. There, and where `minPoint` is `maxPoint`,
/// `valueForPoint` divides by zero: it answers an infinity or NaN, on a logarithmic scale also 0. Used from one thread at a time.
class TOLV_EXPORT TOLVMapping {
public:
    /// All four properties are 0.
    TOLVMapping() = default;
    virtual ~TOLVMapping();

    /// The ends of the value range, in data units, and the positions of the two, in points, as they were set.
    [[nodiscard]] float minValue() const { return mMinValue; }
    [[nodiscard]] float maxValue() const { return mMaxValue; }
    [[nodiscard]] float minPoint() const { return mMinPoint; }
    [[nodiscard]] float maxPoint() const { return mMaxPoint; }
    /// Sets an end of the value range, or its position; any number will do.
    virtual void setMinValue(float value);
    virtual void setMaxValue(float value);
    void setMinPoint(float point);
    void setMaxPoint(float point);

    /// The position (points) of a value (data units); NaN for NaN. Throws Exception "InterfaceMethod" on this class itself.
    [[nodiscard]] virtual float pointForValue(float value) const;
    /// The value (data units) at a position (points), which may lie beyond the range's. Throws Exception "InterfaceMethod" on this class itself.
    [[nodiscard]] virtual float valueForPoint(float point) const;

    /// A new, independent mapping of the same class with the same four range properties and a scale of zero: it maps every value to `minPoint` until one of its properties is set, on a logarithmic scale until both
    /// ends of the value range are. Setting all four again is right for any.
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
