#pragma once

#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <memory>

namespace TOLVGraphing {

class TOLVAxis;
class TOLVMapping;

/// The positions of many values along one axis: what TOLVAxis::pointForValue answers, float for float. The mapping of a linear or logarithmic axis or one of dates is set up once instead of for each value; any other axis is asked each time.
///
/// The axis is not owned, may be null, has to outlive this object, and stays as it is meanwhile (its mapping may be the axis's own: two of these for one axis and different rectangles disturb each other). Without an axis every position is 0.
class TOLV_EXPORT AxisPositions {
public:
    /// The rectangle is the data area, in points.
    AxisPositions(const TOLVAxis* axis, const Rect& dataRect);

    /// In points, for a value in data units; NaN and infinities as TOLVAxis has them.
    [[nodiscard]] float pointForValue(float value) const;

private:
    const TOLVAxis* m_axis;
    Rect m_dataRect;
    std::shared_ptr<const TOLVMapping> m_mapping;
};

} // namespace TOLVGraphing
