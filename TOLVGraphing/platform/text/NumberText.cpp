#include "NumberText.h"

#include <charconv>
#include <cmath>

namespace TOLVGraphing {

namespace {

template <typename Number>
std::string shortest(Number number)
{
    // The sign of a NaN differs between processors and means nothing.
    if (std::isnan(number))
        return "nan";
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {buffer, result.ptr};
}

} // namespace

std::string shortestText(double number)
{
    return shortest(number);
}

std::string shortestText(float number)
{
    return shortest(number);
}

} // namespace TOLVGraphing
