#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// The shortest decimal text that reads back as the same double, independent of any locale: "0.1", "1e+300", "-0", "nan", "inf".
/// It is for reports, logs and tests; people read what a NumberFormatter makes.
[[nodiscard]] TOLV_EXPORT std::string shortestText(double number);

/// The same for single precision: the shortest text that reads back as the same float.
[[nodiscard]] TOLV_EXPORT std::string shortestText(float number);

} // namespace TOLVGraphing
