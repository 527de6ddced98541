#pragma once

#include "Options.h"

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

class Categories;

/// Sets how the axes of a graph write numbers and which of them they label, as the options say: `adaptive` where they do not, and dates where `xIsDate`. Axes and ranges are set before; an axis that
/// is replaced later needs this again. Categories, null where there are none, are written as their texts.
void setTickFormats(TOLVGraph& graph, const Options& options, bool xIsDate, const Categories* categories);

} // namespace TOLVGraphing::app
