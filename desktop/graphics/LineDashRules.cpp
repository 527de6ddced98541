#include "LineDashRules.h"

#include <cmath>
#include <numeric>

namespace TOLVGraphing::paint {

namespace {

/// A drawing library keeps a hundred bytes and more for each.
constexpr double kMostDashes = 1e6;

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

bool hasTooManyDashes(const LineDash& dash, double length)
{
    return !dash.lengths.empty() && !(length * static_cast<double>(dash.lengths.size()) < kMostDashes * patternLength(dash));
}

} // namespace TOLVGraphing::paint
