#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace TOLVGraphing::testing_support {

/// A file that is installed with the programs, below "share": "man/man1/tolvgraph.1". They are installed below a folder of the tests' own first.
[[nodiscard]] std::string sharedFile(const std::string& name);

/// The program as it was built.
[[nodiscard]] std::string pathOfProgram(const std::string& name);

/// "-o,--output" and the name of its value, "OUT", or nothing for an option without one.
using OptionTable = std::map<std::string, std::string>;
/// The options that the program's --help lists.
[[nodiscard]] OptionTable helpOptions(const std::string& program);
/// Each name by itself: "-o" and "--output".
[[nodiscard]] std::set<std::string> namesOf(const OptionTable& options);
/// The words that an option of the command line takes, as its own message about another word has them.
[[nodiscard]] std::set<std::string> wordsOfOption(const std::string& option);

} // namespace TOLVGraphing::testing_support
