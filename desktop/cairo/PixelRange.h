#pragma once

#include <TOLVMath/Export.h>

namespace TOLVGraphing::cairo {

/// Whole pixels of an image, rows counted downwards from 0 at the top, columns from 0 at the left: from `left` to before `right` and from `top` to before `bottom`. A value; empty by default.
struct PixelRange {
    /// The first column.
    int left = 0;
    /// The first row.
    int top = 0;
    /// The column behind the last one.
    int right = 0;
    /// The row below the last one.
    int bottom = 0;

    /// No pixel is in it; also where an end comes before its start.
    [[nodiscard]] bool isEmpty() const { return right <= left || bottom <= top; }

    friend bool operator==(const PixelRange&, const PixelRange&) = default;
};

/// The pixels that are in both, empty where there are none: `isEmpty()` tells, the ends may then come before the starts.
[[nodiscard]] TOLV_EXPORT PixelRange intersectionRange(const PixelRange& one, const PixelRange& other);

} // namespace TOLVGraphing::cairo
