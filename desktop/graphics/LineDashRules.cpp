#include "LineDashRules.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace TOLVGraphing::paint {

namespace {

/// A drawing library keeps a hundred bytes and more for each.
constexpr double kMostDashes = 1e6;
/// Round ends leave notches at the edges of the line, a quarter of the gap's length divided by this deep: nothing to see, and far from any line that is meant to be dashed.
constexpr double kWidthOfClosedGap = 1000.0;

double patternLength(const LineDash& dash)
{
    return std::accumulate(dash.lengths.begin(), dash.lengths.end(), 0.0);
}

} // namespace

LineDash usableDash(const LineDash& dash)
{
    double total = 0.0;
    for (const double length : dash.lengths) {
        if (!(length >= 0.0))
            return {};
        total += length;
    }
    LineDash usable{dash.lengths, 0.0};
    if (dash.lengths.size() % 2 != 0) {
        usable.lengths.insert(usable.lengths.end(), dash.lengths.begin(), dash.lengths.end());
        total *= 2.0;
    }
    if (!(total > 0.0) || !std::isfinite(total))
        return {};
    if (std::isfinite(dash.phase)) {
        usable.phase = std::fmod(dash.phase, total);
        if (usable.phase < 0.0)
            usable.phase += total;
    }
    return usable;
}

double paintedPart(const LineDash& dash)
{
    double painted = 0.0;
    for (std::size_t i = 0; i < dash.lengths.size(); i += 2)
        painted += dash.lengths[i];
    return dash.lengths.empty() ? 1.0 : painted / patternLength(dash);
}

bool hasGapsClosedByEnds(const LineDash& dash, double lineWidth)
{
    double longestGap = 0.0;
    for (std::size_t i = 1; i < dash.lengths.size(); i += 2)
        longestGap = std::max(longestGap, dash.lengths[i]);
    return !dash.lengths.empty() && lineWidth >= kWidthOfClosedGap * longestGap;
}

bool hasTooManyDashes(const LineDash& dash, double length)
{
    return !dash.lengths.empty() && !(length * static_cast<double>(dash.lengths.size()) < kMostDashes * patternLength(dash));
}

} // namespace TOLVGraphing::paint
