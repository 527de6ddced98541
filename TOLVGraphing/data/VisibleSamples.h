#pragma once

#include "../platform/foundation/IndexSet.h"
#include "TOLVGraphData.h"
#include <TOLVMath/Export.h>

#include <optional>

namespace TOLVGraphing {

/// The samples of a series whose abscissae lie in [min, max], in data units: from the first one not below `min` to the last one not above `max`. Nothing when that end comes before
/// that start, which is so between two samples. The abscissae are taken as ascending; NaN is in no range.
///
/// Where no sample reaches `min` the range starts at the first one, and the first sample is never compared with `max`: a series that lies wholly to the left keeps its full range, and one
/// that lies wholly to the right has its first sample. A series without samples, or whose abscissae are null, has the range (0, 0). A `min` that is NaN counts as none, and a `max` that is NaN as one before all samples. Only the abscissae are
/// looked at, also where there are fewer ordinates, and from both ends one by one: the time grows with the samples outside.
[[nodiscard]] TOLV_EXPORT std::optional<IndexRange> visibleSampleRange(const TOLVGraphData& series, double min, double max);

} // namespace TOLVGraphing
