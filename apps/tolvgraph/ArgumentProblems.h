#pragma once

#include <string>
#include <vector>

namespace CLI {

class App;
class ParseError;

} // namespace CLI

namespace TOLVGraphing::app {

/// Why the parser refused the arguments, in the form of the other messages: "OPTION: found 'VALUE', expected ...". An option that does not exist comes with the one whose name is nearest, where one is near.
/// `command` is as the parser left it, `words` are what it was given; where they explain nothing it is the parser's own text.
[[nodiscard]] std::string explanationOf(const CLI::ParseError& problem, const CLI::App& command, const std::vector<std::string>& words);

/// The option whose long name, with its dashes, is nearest to what was written: what it starts like, or else with one letter in three, at most, left out, added, changed or swapped with the next one. Empty where none is.
[[nodiscard]] std::string nearestOption(const std::vector<std::string>& names, const std::string& written);

} // namespace TOLVGraphing::app
