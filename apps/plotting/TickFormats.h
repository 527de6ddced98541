#pragma once

#include "Options.h"

#include <TOLVGraphing/platform/geometry/Rect.h>

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

class Categories;

/// Sets how the axes of a graph write numbers and which of them they label, as the options say: `adaptive` where they do not, and dates where those along x have a `dateOrigin`, see dateOriginOf(). Axes and ranges are set before; an axis that
/// is replaced later needs this again. Categories, null where there are none, are written as their texts.
void setTickFormats(TOLVGraph& graph, const Options& options, std::optional<double> dateOrigin, const Categories* categories);

/// Has the axes of a graph label minor values where the visible ranges of this moment have few major ones. Part of the above; ranges that change later need it again.
void chooseMinorLabels(TOLVGraph& graph, const Options& options);

/// Takes the minor labels away from evenly scaled axes on which those that have room, together with three major ones or more, would stand at uneven distances: 0, 3, 6, 10. The graph is laid out in the rectangle, in points.
void dropUnevenMinorLabels(TOLVGraph& graph, const Rect& inRect);

} // namespace TOLVGraphing::app
