#include "SeriesLooks.h"

#include <TOLVGraphing/data/SeriesColors.h>

#include <array>

namespace TOLVGraphing::app {

namespace {

constexpr std::array<LinePattern, 4> kPatternCycle{LinePattern::Solid, LinePattern::Dashed, LinePattern::DashDot, LinePattern::Dotted};

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
        pattern = kPatternCycle[position / kSeriesColorCount % kPatternCycle.size()];
    auto style = styleWithPattern(pattern);
    style->setColor(options.colors.empty() ? seriesColor(position) : options.colors[position % options.colors.size()]);
    if (!options.thicknesses.empty())
        style->setThickness(options.thicknesses[position % options.thicknesses.size()]);
    return style;
}

} // namespace TOLVGraphing::app
