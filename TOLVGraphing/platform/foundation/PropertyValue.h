#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace TOLVGraphing {

/// A value proposed for a property by name: nothing, a number or a text.
using PropertyValue = std::variant<std::monostate, std::int64_t, double, std::string>;

/// The value as a double when it is a number; nothing otherwise. Whole numbers beyond 2^53 are rounded.
[[nodiscard]] inline std::optional<double> numberValue(const PropertyValue& value)
{
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*whole);
    return std::nullopt;
}

} // namespace TOLVGraphing
