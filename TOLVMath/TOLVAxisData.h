#pragma once

#include "Export.h"

#include <cstddef>

namespace TOLVGraphing {

/// The samples of one coordinate of a series: contiguous single-precision numbers in data units, which may be anything, NaN and infinities included. Nothing here throws.
class TOLV_EXPORT TOLVAxisData {
public:
    virtual ~TOLVAxisData() = default;

    /// The number of samples.
    [[nodiscard]] virtual std::size_t length() const = 0;
    /// `length()` floats, not owned by the caller, that stay where they are for the life of this object; may be null when there are none.
    [[nodiscard]] virtual const float* components() const = 0;
    /// Writes the smallest sample and its first index (from 0), either of them unless its place is null. NaN samples are passed over, infinite ones count; with no sample left nothing is written and the answer is false.
    virtual bool getMinimum(float* minimum, std::size_t* location) const = 0;
    /// Writes the largest sample and its first index, otherwise as `getMinimum`.
    virtual bool getMaximum(float* maximum, std::size_t* location) const = 0;
};

} // namespace TOLVGraphing
