#include "TOLVRealVector+Interpolation.h"

#include "../platform/foundation/Exception.h"

#include <cmath>
#include <cstdint>

namespace TOLVGraphing {

namespace {

/// Floats from here on are beyond every signed 64-bit index.
constexpr float kIndexLimit = 9223372036854775808.0F;

[[noreturn]] void failIndex()
{
    throw AssertionFailure("Invalid parameter not satisfying: %@", "(NSInteger)inIndex < self.length", "TOLVGraphing/TOLVRealVector+Interpolation", 55);
}

} // namespace

float valueAtFractionalIndex(const TOLVAxisData& vector, float index)
{
    const auto length = static_cast<std::int64_t>(vector.length());
    if (!(index >= 0.0F) || index >= kIndexLimit || static_cast<std::int64_t>(index) >= length)
        failIndex();
    const float* c = vector.components();
    const auto i = static_cast<std::int64_t>(std::floor(index));
    const std::int64_t j = i + 1;
    if (j >= length)
        return c[i];
    return c[i] + (index - static_cast<float>(i)) * (c[j] - c[i]);
}

float fractionalIndexOfValue(const TOLVAxisData& vector, float value)
{
    const float* c = vector.components();
    const auto length = static_cast<std::int64_t>(vector.length());
    std::int64_t low = 0;
    std::int64_t high = length - 1;
    std::int64_t m = 0;
    for (;;) {
        if (high < low)
            return -1.0F;
        m = low + (high - low) / 2;
        if (high == low)
            break;
        // While more than one index is left, m + 1 is still inside.
        if (m >= 1 && c[m] > value && c[m - 1] > value)
            high = m - 1;
        else if (c[m] < value && c[m + 1] < value)
            low = m + 1;
        else
            break;
    }
    if (value > c[m])
        return m + 1 < length ? static_cast<float>(m) + (value - c[m]) / (c[m + 1] - c[m]) : static_cast<float>(m);
    if (m >= 1 && c[m] > value)
        return static_cast<float>(m - 1) + (value - c[m - 1]) / (c[m] - c[m - 1]);
    return static_cast<float>(m);
}

} // namespace TOLVGraphing
