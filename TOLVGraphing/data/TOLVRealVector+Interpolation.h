#pragma once

#include <TOLVMath/TOLVAxisData.h>
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// The sample (data units) at a fractional index (from 0), linearly interpolated between neighbours in single precision, which tells no whole indices apart from 2^24 on. From the last sample on up to (not including) the length the
/// last sample is the answer; nothing is extrapolated. NaN next to the index gives NaN. Throws AssertionFailure for an index that is not at least 0 (NaN included) or not below the length, as any is of an empty vector.
[[nodiscard]] TOLV_EXPORT float valueAtFractionalIndex(const TOLVAxisData& vector, float index);

/// The fractional index at which an ascending vector takes the value, by binary search and linear interpolation in single precision.
/// A value below the first sample gives 0, one above the last gives the last index; an empty vector gives -1 and NaN some index in the vector. Of samples that do not ascend, or are NaN, the answer means nothing. Throws nothing.
[[nodiscard]] TOLV_EXPORT float fractionalIndexOfValue(const TOLVAxisData& vector, float value);

} // namespace TOLVGraphing
