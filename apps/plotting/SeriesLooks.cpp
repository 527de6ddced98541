#include "SeriesLooks.h"

#include <array>

namespace TOLVGraphing::app {

namespace {

constexpr std::array<unsigned, 7> kColorCycle{0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00, 0x56B4E9, 0x000000};
constexpr std::array<LinePattern, 4> kPatternCycle{LinePattern::Solid, LinePattern::Dashed, LinePattern::DashDot, LinePattern::Dotted};

Color colorFromBits(unsigned bits)
{
    const auto component = [&](unsigned shift) { return static_cast<double>((bits >> shift) & 255U) / 255.0; };
    return {component(16), component(8), component(0)};
}

std::shared_ptr<TOLVLineStyle> styleWithPattern(LinePattern pattern)
{
    switch (pattern) {
    case LinePattern::Solid: break;
    case LinePattern::Dashed: return TOLVLineStyle::dashedLineStyle();
    case LinePattern::DashDot: return TOLVLineStyle::dashDotLineStyle();
    case LinePattern::Dotted: return TOLVLineStyle::dottedLineStyle();
    }
    return std::make_shared<TOLVLineStyle>();
}

} // namespace

std::shared_ptr<TOLVLineStyle> lineStyleForSeries(std::size_t position, const Options& options)
{
    LinePattern pattern = LinePattern::Solid;
    if (!options.patterns.empty())
        pattern = options.patterns[position % options.patterns.size()];
    else if (options.colors.empty())
        pattern = kPatternCycle[position / kColorCycle.size() % kPatternCycle.size()];
    const auto style = styleWithPattern(pattern);
    style->setColor(options.colors.empty() ? colorFromBits(kColorCycle[position % kColorCycle.size()]) : options.colors[position % options.colors.size()]);
    if (!options.thicknesses.empty())
        style->setThickness(options.thicknesses[position % options.thicknesses.size()]);
    return style;
}

} // namespace TOLVGraphing::app
