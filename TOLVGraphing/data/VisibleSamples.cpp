#include "VisibleSamples.h"

namespace TOLVGraphing {

std::optional<IndexRange> visibleSampleRange(const TOLVGraphData& series, double min, double max)
{
    const TOLVGraphData::Samples& x = series.X();
    const std::size_t length = x ? x->length() : 0;
    if (length == 0)
        return IndexRange{0, 0};
    const float* c = x->components();
    std::size_t start = 0;
    while (start < length && !(static_cast<double>(c[start]) >= min))
        ++start;
    if (start == length)
        start = 0;
    // Index 0 is never compared: it is the end whenever no later sample is in range.
    std::size_t end = length - 1;
    while (end > 0 && !(static_cast<double>(c[end]) <= max))
        --end;
    if (end < start)
        return std::nullopt;
    return IndexRange{start, end - start + 1};
}

} // namespace TOLVGraphing
