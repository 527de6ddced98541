#pragma once

#include <TOLVMath/Export.h>

namespace TOLVGraphing::cairo {

/// Whole pixels of an image, rows counted downwards: from `left` to before `right` and from `top` to before `bottom`.
struct PixelRange {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] bool isEmpty() const { return right <= left || bottom <= top; }

    friend bool operator==(const PixelRange&, const PixelRange&) = default;
};

[[nodiscard]] TOLV_EXPORT PixelRange intersectionRange(const PixelRange& one, const PixelRange& other);

} // namespace TOLVGraphing::cairo
