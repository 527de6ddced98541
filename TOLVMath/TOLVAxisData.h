#pragma once

#include "Export.h"

#include <cstddef>

namespace TOLVGraphing {

/// The samples of one coordinate of a series: contiguous single-precision numbers in data units.
class TOLV_EXPORT TOLVAxisData {
public:
    virtual ~TOLVAxisData() = default;

    /// The number of samples.
    [[nodiscard]] virtual std::size_t length() const = 0;
    /// `length()` floats that stay where they are for the life of this object; null when there are none.
    [[nodiscard]] virtual const float* components() const = 0;
    /// Writes the smallest sample and its first index, either of them unless its place is null. NaN samples are passed over; with no sample left nothing is written and the answer is false.
    virtual bool getMinimum(float* minimum, std::size_t* location) const = 0;
    /// Writes the largest sample and its first index, otherwise as `getMinimum`.
    virtual bool getMaximum(float* maximum, std::size_t* location) const = 0;
};

} // namespace TOLVGraphing
