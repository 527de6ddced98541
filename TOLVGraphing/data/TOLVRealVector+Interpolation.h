#pragma once

#include <TOLVMath/TOLVAxisData.h>
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// The sample at a fractional index, linearly interpolated between neighbours in single precision. From the last sample on up to (not including) the length the
/// last sample is the answer; nothing is extrapolated. Throws AssertionFailure for an index that is not at least 0 (NaN included) or not below the length.
[[nodiscard]] TOLV_EXPORT float valueAtFractionalIndex(const TOLVAxisData& vector, float index);

/// The fractional index at which an ascending vector takes the value, by binary search and linear interpolation in single precision.
/// A value below the first sample gives 0, one above the last gives the last index; an empty vector gives -1.
[[nodiscard]] TOLV_EXPORT float fractionalIndexOfValue(const TOLVAxisData& vector, float value);

} // namespace TOLVGraphing
