#include "LineDashRules.h"

#include <cmath>

namespace TOLVGraphing::paint {

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

} // namespace TOLVGraphing::paint
