#include "SeriesColors.h"

#include <array>

namespace TOLVGraphing {

namespace {

constexpr std::array<unsigned, kSeriesColorCount> kColors{0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00, 0x56B4E9, 0x000000};

} // namespace

Color seriesColor(std::size_t position)
{
    const unsigned bits = kColors[position % kColors.size()];
    const auto component = [&](unsigned shift) { return static_cast<double>((bits >> shift) & 255U) / 255.0; };
    return {component(16), component(8), component(0)};
}

} // namespace TOLVGraphing
