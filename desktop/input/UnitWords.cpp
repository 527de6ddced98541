#include <desktop/input/UnitWords.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace TOLVGraphing::input {

namespace {

using std::string_view;

/// In small letters, singular; a plural s is removed before the comparison.
constexpr auto kUnitNames
    = std::to_array<string_view>({"second", "sec", "minute", "min", "hour", "day", "month", "year", "volt", "millivolt", "ampere", "amp", "milliampere", "ohm", "watt", "hertz",
        "kilohertz", "megahertz", "decibel", "degree", "deg", "radian", "rad", "celsiu", "kelvin", "fahrenheit", "pascal", "bar", "mbar", "psi", "meter", "metre", "millimeter",
        "gram", "kilogram", "newton", "joule", "tesla", "farad", "henry", "coulomb", "percent", "ppm", "ppb", "rpm", "millisecond", "microsecond", "nanosecond", "lux"});

constexpr auto kUnitSigns = std::to_array<string_view>({"s", "h", "d", "V", "A", "W", "Hz", "dB", "dBV", "dBm", "dBu", "dBFS", "dBSPL", "dBA", "K", "C", "F", "H", "T", "N", "J",
    "Pa", "m", "g", "L", "l", "\u00B0", "\u00B0C", "\u00B0F", "degC", "degF", "\u03A9", "\u2126", "Ohm", "VA", "Vpp", "Vrms", "eV", "mol", "cd", "lx", "lm", "Wh", "Ah", "%",
    "\u2030", "-", "1", "px", "pt", "Bq", "Sv", "Gy", "S", "Wb", "in", "ft", "kt", "inch", "a.u.", "au", "LSB", "lsb", "div", "ms", "us"});

constexpr auto kPrefixes = std::to_array<string_view>({"", "m", "u", "\u00B5", "\u03BC", "n", "p", "f", "k", "M", "G", "T", "c", "d", "h"});

bool isUnitName(string_view word)
{
    std::string lower(word);
    for (char& character : lower)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    if (lower.size() > 1 && lower.back() == 's')
        lower.pop_back();
    return std::find(kUnitNames.begin(), kUnitNames.end(), lower) != kUnitNames.end();
}

bool isPrefixedSign(string_view word)
{
    return std::any_of(kPrefixes.begin(), kPrefixes.end(),
        [word](string_view prefix) { return word.starts_with(prefix) && std::find(kUnitSigns.begin(), kUnitSigns.end(), word.substr(prefix.size())) != kUnitSigns.end(); });
}

/// One factor of a product, with its power: `s^2`, `m2`, `s-1`.
bool isFactor(string_view word)
{
    if (isPrefixedSign(word) || isUnitName(word))
        return true;
    std::size_t length = word.size();
    while (length > 0 && std::string_view("0123456789-^").find(word[length - 1]) != string_view::npos)
        --length;
    return length > 0 && length < word.size() && (isPrefixedSign(word.substr(0, length)) || isUnitName(word.substr(0, length)));
}

bool hasBrackets(string_view word)
{
    return word.size() >= 2 && ((word.front() == '[' && word.back() == ']') || (word.front() == '(' && word.back() == ')'));
}

} // namespace

bool isUnitWord(string_view word)
{
    if (hasBrackets(word))
        return true;
    if (word.empty() || word.size() > 24)
        return false;
    if (isFactor(word))
        return true;
    while (!word.empty()) {
        std::size_t length = std::min(word.find_first_of("/* "), word.size());
        if (!isFactor(word.substr(0, length)))
            return false;
        if (length + 1 == word.size())
            return false;
        word.remove_prefix(std::min(length + 1, word.size()));
    }
    return true;
}

std::string withoutBrackets(string_view word)
{
    return std::string(hasBrackets(word) ? word.substr(1, word.size() - 2) : word);
}

} // namespace TOLVGraphing::input
