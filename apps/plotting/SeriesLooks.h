#pragma once

#include "Options.h"

#include <TOLVGraphing/data/TOLVLineStyle.h>

#include <cstddef>
#include <memory>

namespace TOLVGraphing::app {

/// The line style of the series at a position, counted from 0: the options' colours, patterns and thicknesses in turn. Without colours a cycle of seven that readers with any colour vision can tell apart is used,
/// and each further round through it takes the next pattern.
[[nodiscard]] std::shared_ptr<TOLVLineStyle> lineStyleForSeries(std::size_t position, const Options& options);

} // namespace TOLVGraphing::app
