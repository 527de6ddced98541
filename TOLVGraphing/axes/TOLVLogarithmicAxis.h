#pragma once

#include "TOLVAxis.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <vector>

namespace TOLVGraphing {

/// The values that divide the decades of [min, max], ascending: at depth 0 the powers of ten, at depth 1 also 2 to 9 times them, at depth 2 also every tenth in between, and so on.
/// In data units, ends included. Unless 0 < min <= max < infinity there are none. Depths beyond 4 list what depth 4 lists.
[[nodiscard]] TOLV_EXPORT std::vector<double> logRange(std::uint32_t depth, double min, double max);

/// An axis on a base-10 logarithmic scale. Major values stand on the powers of ten and minor ones on 2 to 9 times them; where the axis is long enough for lines at least
/// 4 points apart, major values take the minor ones' place and minor values every tenth in between.
///
/// Ranges that are not positive and finite give no ticks, and one from a negative end no positions (see TOLVLogarithmicMapping); nothing is clamped. An empty range has a tick where it is a value that divides a decade.
class TOLV_EXPORT TOLVLogarithmicAxis : public TOLVAxis {
public:
    using TOLVAxis::TOLVAxis;

    /// The base's copy with the depth.
    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override;
    /// The keys that every axis has; the depth is not archived.
    [[nodiscard]] static std::shared_ptr<TOLVLogarithmicAxis> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVLogarithmicAxis"; }
    [[nodiscard]] std::vector<std::string> archiveBaseClassNames() const override { return {"TOLVAxis"}; }

    /// The levels of subdivision in the full list of values: 0 before the first preparation, when there are no tick values at all, then 1 or 2.
    [[nodiscard]] std::uint32_t minorValuesDepth() const { return m_minorValuesDepth; }
    /// The next preparation chooses anew. Depth 3 and more list thousands of values for each decade.
    void setMinorValuesDepth(std::uint32_t depth) { m_minorValuesDepth = depth; }

    [[nodiscard]] float valueForPoint(double point, const Rect& inRect) const override;
    [[nodiscard]] float pointForValue(float value, const Rect& inRect) const override;
    void updateStepsInRect(const Rect& rect) override;
    /// A new mapping each time.
    [[nodiscard]] std::shared_ptr<TOLVMapping> mappingForRect(const Rect& rect) const override;
    void getMajorValues(Values* majorValues, Values* minorValues) const override;

protected:
    /// Positive numbers only: a range that outgrows single precision below would leave nothing to zoom back in from.
    [[nodiscard]] bool canEndRangeAt(float value) const override;
    /// Gives the other axis the same depth.
    void copyDepthInto(TOLVLogarithmicAxis& axis) const;

private:
    std::uint32_t m_minorValuesDepth = 0;
};

} // namespace TOLVGraphing
