#pragma once

#include <TOLVGraphing/views/TOLVPrintView.h>

#include <memory>

namespace TOLVGraphing::testing_support {

/// A view of two waves of 400 samples, "one" in blue (#0060bf) and "two" in red (#bf4000), over "Time (s)" and "Level", with one marker. Its fonts are those in force when it is made.
[[nodiscard]] std::shared_ptr<TOLVGraphView> exampleView(const Rect& frame);
/// A page with that graph and a legend of its series.
[[nodiscard]] std::shared_ptr<TOLVPrintView> examplePage(const PrintInfo& printInfo);

} // namespace TOLVGraphing::testing_support
