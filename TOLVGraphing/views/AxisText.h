#pragma once

#include <string>

namespace TOLVGraphing {

class TOLVAxis;

/// A value as the axis's tick label formatter writes it; empty without a formatter.
[[nodiscard]] std::string textOfValue(const TOLVAxis& axis, double value);

} // namespace TOLVGraphing
